// template_checks_test.cc - every fault of invocations and definitions, with its message and where it goes.

#include "templates_fixture.h"

namespace zarel {
namespace {

// A program, the last line of its messages, and what stands on standard output before it.
struct Fault {
  std::string_view name, program, message, output = "";
  bool is_only_linked = false;
  friend void PrintTo(const Fault& test, std::ostream* out) { *out << test.name; }
};
class FaultyTemplate : public RewriteTest, public testing::WithParamInterface<Fault> {};

TEST_P(FaultyTemplate, EndsTheRun) {
  for (const RewriteOptions& options : {kPlain, kLinked}) {
    const RewrittenProgram result = rewritten({GetParam().program}, options);
    if (GetParam().is_only_linked && !options.run.links_templates) {
      EXPECT_EQ(result.status, 0);
      continue;
    }
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, joined({GetParam().message, "\n"}));
    EXPECT_EQ(result.output, GetParam().output);
    EXPECT_EQ(result.clauses, "");
  }
}

constexpr std::string_view kFormalInHead =
    "'f' is a formal predicate and it cannot be in the head of rule in a template definition.";
constexpr std::string_view kFormalWithoutTerms =
    "'f' is a formal predicate with arity 1 now is defined with arity 0.";

constexpr Fault kFaults[] = {
    {"names_are_compared_exactly", "#template T{f(1)}(1) { T(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'t' not defined."},
    {"output_arity_before_the_rules", T_OF_F "f(X). } a :- t{p(*)}().",
     "t, defined with arity of output 1, now seen with arity 0."},
    {"negated_formal_in_a_head", T_OF_F "t(X) v -f(X) :- f(X)." USE, kFormalInHead},
    {"formal_and_global_in_a_head", "#template t{f(1)}(1) GLOBAL f { t(X) :- f(X). f(a)." USE,
     kFormalInHead},
    {"global_in_a_head", "#template t{f(1)}(1) GLOBAL h, g { t(X) :- f(X). g(a)." USE,
     "'g' is a global predicate and it  cannot be in the head of rule in a template definition."},
    {"negated_formal_with_another_arity", T_OF_F "t(X) :- f(X). :- -f." USE, kFormalWithoutTerms},
    {"formals_of_one_name",
     "#template t{e(1), f(1), f(1), f(2)}(1) { t(X) :- f(X). } r(X) :- t{p(*), p(*), p(*), "
     "p(*)}(X).",
     "'f' is a formal predicate with arity 2 now is defined with arity 1."},
    {"formal_with_another_arity_in_an_aggregate", T_OF_F "t(X) :- X = #count{Y:f(Y,Y)}." USE,
     "'f' is a formal predicate with arity 1 now is defined with arity 2."},
    {"faults_go_formal_by_formal",
     "#template t{f(1),g(1)}(1) { t(X) :- g. t(X) :- f. } a(X) :- t{p(*),q(*)}(X).",
     kFormalWithoutTerms},
    {"faults_of_a_formal_go_clause_by_clause", T_OF_F "t(X) :- f. f(X)." USE, kFormalWithoutTerms},
    {"rules_before_the_number_of_actuals", T_OF_F "t(X) :- f. } a(X) :- t{p(*),q}(X).",
     kFormalWithoutTerms},
    {"too_many_actuals", COPY "a(X) :- t{p(*),q}(X).",
     "'t', defined with 1 formal predicates , now seen with 2actual predicates."},
    {"arity_counts_asterisks_alone",
     "#template t{f(0),p(3)}(1) { t(X) :- p(X,X,X). } a(X) :- t{r,q(*,$,X)}(X).",
     "Invocation 't' malformed", "j:1\nk:p(3)\n"},
    {"arities_before_the_result", "#template t{p(1)}(1) { h. } a(X) :- t{q}(X).",
     "Invocation 't' malformed", "j:0\nk:p(1)\n"},
    {"result_of_another_arity", T_OF_F "t(X) :- f(X). t(X,X) :- f(X)." USE,
     "In definition template 't' atom 't' don't have the same output arity of template."},
    {"neither_bodies_nor_negated_heads_are_results",
     T_OF_F "h(X) :- f(X). :- t(X). -t(X) :- f(X)." USE,
     "'t' lacks an head atom having the same name of template."},
    {"no_clauses", T_OF_F USE, "'t' lacks an head atom having the same name of template."},
    {"the_first_faulty_invocation", COPY "a(X) :- t{p(*)}(X), t{q(*)}(X,X), u{p}(X).",
     "t, defined with arity of output 1, now seen with arity 2."},
    {"two_numbers_of_actuals", COPY "a(X) :- t{p(*)}(X), t{p(*),q}(X).",
     "t, first used with arity 1, now seen with arity 2."},
    {"a_second_definition", COPY "#template t{g(1)}(2) { } this is not read",
     "Template t already defined."},
    {"nested_output_arity",
     COPY "#template u{f(1)}(1) { u(X) :- t{f(*)}(X,X). } a(X) :- u{p(*)}(X).",
     "t, defined with arity of output 1, now seen with arity 2."},
    {"nested_number_of_actuals",
     T_OF_F "t(X) :- u{f(*)}(X). } #template u{f(1),g(1)}(1) { u(X) :- f(X)." USE,
     "'u', defined with 2 formal predicates , now seen with 1actual predicates."},
    {"nested_arity_of_an_actual",
     COPY "#template u{f(1)}(1) { u(X) :- t{h(*,*)}(X). } a(X) :- u{p(*)}(X).",
     "Invocation 't' malformed", "j:2\nk:f(1)\n"},
    {"formal_with_another_arity_as_an_actual",
     T_OF_F "t(X) :- 1 < #count{Y: u{-f(*,*)}(Y)}. t(X) :- f(X). } #template u{f(2)}(1) { u(X) :- "
            "f(X,X)." USE,
     "'f' is a formal predicate with arity 1 now is defined with arity 2.", "", true},
    {"formal_with_another_arity_in_a_nested_definition",
     T_OF_F "t(X) :- u{f(*)}(X). } #template u{g(1)}(1) { u(X) :- w{g(*,$)}(X). } #template "
            "w{g(1)}(1) { w(X) :- g(X)." USE,
     "'g' is a formal predicate with arity 1 now is defined with arity 2.", "", true},
    {"nested_definition_without_a_result",
     T_OF_F "t(X) :- not 1 < #count{Y: u{f(*)}(Y)}, f(X). } #template u{f(1)}(1) { h(X) :- "
            "f(X)." USE,
     "'u' lacks an head atom having the same name of template.", "", true},
    {"nested_without_definition", T_OF_F "t(X) :- u{f(*)}(X)." USE,
     "The template #u is not defined. Please define it."},
};
INSTANTIATE_TEST_SUITE_P(Cases, FaultyTemplate, testing::ValuesIn(kFaults), case_name);

TEST_F(RewriteTest, KeepsTheLegendSoFarWhenANestedTemplateIsNotDefined) {
  EXPECT_EQ(rewritten({T_OF_F "t(X) :- u{f(*)}(X)." USE}).legend,
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n"
            "% p_1(Var0) : p(*) at line \n"
            "% t_0(X) : t[p(*)] (X) at line \n");
}

// t0 to t<length>, each invoking the one before it.
std::string chain_of_templates(int length) {
  return joined({"#template t0{f(1)}(1) { t0(X) :- f(X). }\n",
                 numbered(length, "#template tM{f(1)}(1) { tM(X) :- tN{f(*)}(X). }\n"),
                 numbered(1, "a(X) :- tN{p(*)}(X).\n", length)});
}

TEST_F(RewriteTest, EndsExpansionsWithoutEndBeforeTheyFillTheDisk) {
  const std::string deep = chain_of_templates(1001);
  const std::pair<std::string_view, const RewriteOptions*> cases[] = {
      {T_OF_F "h(X) :- f(X). t(X) :- t{h(*)}(X)." USE, &kLinked},
      {T_OF_F "t(X) :- f(X), t{f(*)}(X). } a(X) :- t{p(*,$)}(X).", &kPlain},
      {T_OF_F "t(X) :- f(X), t{f(Y,*)}(X). } a(X) :- t{p(Y,*)}(X).",
       &kPlain},    // grows on each level
      {deep, &kPlain},
      {deep, &kLinked},
  };
  for (const auto& [program, options] : cases) {
    const RewrittenProgram result = rewritten({program}, *options);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "Template expansion does not terminate.\n");
    EXPECT_LT(result.legend.size(), 50'000'000);
  }
}

TEST_F(RewriteTest, NestsAThousandLevels) {
  EXPECT_EQ(rewritten({chain_of_templates(1000)}, kPlain).status, 0);
  EXPECT_EQ(rewritten({chain_of_templates(1000)}, kLinked).status, 0);
}

}    // namespace
}    // namespace zarel
