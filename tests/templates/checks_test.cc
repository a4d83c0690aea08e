// checks_test.cc - every fault of invocations and definitions, with its message and where it goes.

#include <sstream>

#include "templates_fixture.h"

namespace zarel {
namespace {

class FaultyTemplate : public TemplatesTable<Ending> {};
class SoundTemplate : public TemplatesTable<Ending> {};

TEST_P(FaultyTemplate, EndsTheRun) {
  for (const Templates templates : {Templates::kPlain, Templates::kLinked}) {
    const RewrittenProgram result = rewritten({GetParam().program}, templates);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, GetParam().messages);
    EXPECT_EQ(result.output, GetParam().output);
    EXPECT_EQ(result.clauses, "");
  }
}

constexpr Ending kFaults[] = {
    {"no_definition_at_all", "a(X) :- t{p(*)}(X).", "'t' not defined.\n"},
    {"no_definition_of_that_name",
     "#template u{f(1)}(1) { u(X) :- f(X). } a(X) :- u{p(*)}(X), t{p(*)}(X).",
     "'t' not defined.\n"},
    {"names_are_compared_exactly", "#template T{f(1)}(1) { T(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'t' not defined.\n"},
    {"output_arity", "#template t{f(1)}(1) { t(X) :- f(X). } a(X) :- t{p(*)}(X,Y).",
     "t, defined with arity of output 1, now seen with arity 2.\n"},
    {"output_arity_before_the_rules", "#template t{f(1)}(1) { f(X). } a :- t{p(*)}().",
     "t, defined with arity of output 1, now seen with arity 0.\n"},
    {"formal_in_a_head", "#template t{f(1)}(1) { t(X) v f(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate and it cannot be in the head of rule in a template "
     "definition.\n"},
    {"negated_formal_in_a_head",
     "#template t{f(1)}(1) { t(X) v -f(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate and it cannot be in the head of rule in a template "
     "definition.\n"},
    {"formal_and_global_in_a_head",
     "#template t{f(1)}(1) GLOBAL f { t(X) :- f(X). f(a). } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate and it cannot be in the head of rule in a template "
     "definition.\n"},
    {"global_in_a_head",
     "#template t{f(1)}(1) GLOBAL h, g { t(X) :- f(X). g(a). } a(X) :- t{p(*)}(X).",
     "'g' is a global predicate and it  cannot be in the head of rule in a template "
     "definition.\n"},
    {"formal_with_another_arity",
     "#template t{f(1)}(1) { t(X) :- f(X), not f(X,Y). } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 2.\n"},
    {"negated_formal_with_another_arity",
     "#template t{f(1)}(1) { t(X) :- f(X). :- -f. } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 0.\n"},
    {"formal_with_another_arity_in_an_aggregate",
     "#template t{f(1)}(1) { t(X) :- X = #count{Y:f(Y,Y)}. } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 2.\n"},
    {"faults_go_formal_by_formal",
     "#template t{f(1),g(1)}(1) { t(X) :- g. t(X) :- f. } a(X) :- t{p(*),q(*)}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 0.\n"},
    {"faults_of_a_formal_go_clause_by_clause",
     "#template t{f(1)}(1) { t(X) :- f. f(X). } a(X) :- t{p(*)}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 0.\n"},
    {"rules_before_the_number_of_actuals",
     "#template t{f(1)}(1) { t(X) :- f. } a(X) :- t{p(*),q}(X).",
     "'f' is a formal predicate with arity 1 now is defined with arity 0.\n"},
    {"too_many_actuals", "#template t{f(1)}(1) { t(X) :- f(X). } a(X) :- t{p(*),q}(X).",
     "'t', defined with 1 formal predicates , now seen with 2actual predicates.\n"},
    {"too_few_actuals", "#template t{f(1),g(2)}(1) { t(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'t', defined with 2 formal predicates , now seen with 1actual predicates.\n"},
    {"arity_of_an_actual", "#template t{p(1)}(1) { t(X) :- p(X). } a(X) :- t{q(*,*)}(X).",
     "Invocation 't' malformed\n", "j:2\nk:p(1)\n"},
    {"arity_counts_asterisks_alone",
     "#template t{f(0),p(3)}(1) { t(X) :- p(X,X,X). } a(X) :- t{r,q(*,$,X)}(X).",
     "Invocation 't' malformed\n", "j:1\nk:p(3)\n"},
    {"arities_before_the_result", "#template t{p(1)}(1) { h. } a(X) :- t{q}(X).",
     "Invocation 't' malformed\n", "j:0\nk:p(1)\n"},
    {"result_of_another_arity",
     "#template t{f(1)}(1) { t(X) :- f(X). t(X,X) :- f(X). } a(X) :- t{p(*)}(X).",
     "In definition template 't' atom 't' don't have the same output arity of template.\n"},
    {"no_result", "#template t{f(1)}(1) { h(X) :- f(X). :- t(X). } a(X) :- t{p(*)}(X).",
     "'t' lacks an head atom having the same name of template.\n"},
    {"no_clauses", "#template t{f(1)}(1) { } a(X) :- t{p(*)}(X).",
     "'t' lacks an head atom having the same name of template.\n"},
    {"a_negated_result_is_none", "#template t{f(1)}(1) { -t(X) :- f(X). } a(X) :- t{p(*)}(X).",
     "'t' lacks an head atom having the same name of template.\n"},
    {"the_first_faulty_invocation",
     "#template t{f(1)}(1) { t(X) :- f(X). } a(X) :- t{p(*)}(X), t{q(*)}(X,X), u{p}(X).",
     "t, defined with arity of output 1, now seen with arity 2.\n"},
    {"two_numbers_of_actuals",
     "#template t{f(1)}(1) { t(X) :- f(X). } a(X) :- t{p(*)}(X), t{p(*),q}(X).",
     "t, first used with arity 1, now seen with arity 2.\n"},
    {"a_second_definition",
     "#template t{f(1)}(1) { t(X) :- f(X). } #template t{g(1)}(2) { } this is not read",
     "Template t already defined.\n"},
    {"nested_output_arity",
     "#template t{f(1)}(1) { t(X) :- u{f(*)}(X,X). } #template u{f(1)}(1) { u(X) :- f(X). }"
     "a(X) :- t{p(*)}(X).",
     "u, defined with arity of output 1, now seen with arity 2.\n"},
    {"nested_number_of_actuals",
     "#template t{f(1)}(1) { t(X) :- u{f(*)}(X). } #template u{f(1),g(1)}(1) { u(X) :- f(X). }"
     "a(X) :- t{p(*)}(X).",
     "'u', defined with 2 formal predicates , now seen with 1actual predicates.\n"},
    {"nested_arity_of_an_actual",
     "#template t{f(1)}(1) { t(X) :- u{h(*,*)}(X). } #template u{f(1)}(1) { u(X) :- f(X). }"
     "a(X) :- t{p(*)}(X).",
     "Invocation 'u' malformed\n", "j:2\nk:f(1)\n"},
    {"nested_without_definition",
     "#template t{f(1)}(1) { t(X) :- u{f(*)}(X). } a(X) :- t{p(*)}(X).",
     "The template #u is not defined. Please define it.\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, FaultyTemplate, testing::ValuesIn(kFaults), case_name);

TEST_P(SoundTemplate, IsAccepted) {
  const RewrittenProgram result = rewritten({GetParam().program});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, GetParam().messages);
  EXPECT_EQ(result.output, GetParam().output);
}

constexpr Ending kSound[] = {
    {"what_nothing_invokes_is_not_checked", "#template t{f(1)}(1) { f(X,X). } a.", ""},
    {"dollar_and_ordinary_terms_are_no_arity",
     "#template t{p(1)}(1) { t(X) :- p(X). } a(X) :- t{q(*,$,b,X,1)}(X).", ""},
    {"names_that_differ_in_case_are_two",
     "#template t{p(1)}(1) { t(X) :- p(X). } #template tT{p(1)}(1) { tT(X) :- p(X). }"
     "a(X) :- t{p(*)}(X), tT{p(*)}(X).",
     ""},
    {"only_the_first_result_of_a_head_counts",
     "#template t{p(1)}(1) { t(X) v t(X,X) :- p(X). } a(X) :- t{p(*)}(X).", ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, SoundTemplate, testing::ValuesIn(kSound), case_name);

TEST_F(TemplatesTest, KeepsTheLegendSoFarWhenANestedTemplateIsNotDefined) {
  const RewrittenProgram result =
      rewritten({"#template t{f(1)}(1) { t(X) :- u{f(*)}(X). } a(X) :- t{p(*)}(X)."});
  EXPECT_EQ(result.legend,
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n"
            "% p_1(Var0) : p(*) at line \n"
            "% t_0(X) : t[p(*)] (X) at line \n");
}

TEST_F(TemplatesTest, EndsAnExpansionWithoutEnd) {
  const std::string_view program =
      "#template t{f(1)}(1) { h(X) :- f(X). t(X) :- t{h(*)}(X). } a(X) :- t{p(*)}(X).";
  const RewrittenProgram result = rewritten({program}, Templates::kLinked);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "Template expansion does not terminate.\n");
}

TEST_F(TemplatesTest, EndsAPlainExpansionWithoutEnd) {
  const std::string_view program =
      "#template t{f(1)}(1) { t(X) :- f(X), t{f(*)}(X). } a(X) :- t{p(*,$)}(X).";
  const RewrittenProgram result = rewritten({program});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, "Template expansion does not terminate.\n");
}

TEST_F(TemplatesTest, EndsAGrowingExpansionBeforeItFillsTheDisk) {
  const std::string_view program =
      "#template t{f(1)}(1) { t(X) :- f(X), t{f(Y,*)}(X). } a(X) :- t{p(Y,*)}(X).";
  const RewrittenProgram result = rewritten({program});
  EXPECT_EQ(result.messages, "Template expansion does not terminate.\n");
  EXPECT_LT(result.legend.size(), 50'000'000);
}

// t0 to t<length>, each invoking the one before it.
std::string chain_of_templates(int length) {
  std::ostringstream program;
  program << "#template t0{f(1)}(1) { t0(X) :- f(X). }\n";
  for (int i = 1; i <= length; ++i) {
    program << "#template t" << i << "{f(1)}(1) { t" << i << "(X) :- t" << i - 1
            << "{f(*)}(X). }\n";
  }
  program << "a(X) :- t" << length << "{p(*)}(X).\n";
  return std::move(program).str();
}

TEST_F(TemplatesTest, NestsAThousandLevelsAndNoMore) {
  for (const Templates templates : {Templates::kPlain, Templates::kLinked}) {
    EXPECT_EQ(rewritten({chain_of_templates(1000)}, templates).status, 0);
    const RewrittenProgram deeper = rewritten({chain_of_templates(1001)}, templates);
    EXPECT_EQ(deeper.status, 1);
    EXPECT_EQ(deeper.messages, "Template expansion does not terminate.\n");
  }
}

}    // namespace
}    // namespace zarel
