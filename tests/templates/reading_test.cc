// reading_test.cc - the syntax of template definitions and invocations.

#include "templates_fixture.h"

namespace zarel {
namespace {

class TemplateSyntax : public TemplatesTable<Ending> {};
class NoTemplateSyntax : public TemplatesTable<Ending> {};

constexpr std::string_view kDefinition = "#template t{f(1)}(1) { t(X) :- f(X). }\n";

TEST_P(TemplateSyntax, IsAccepted) {
  const RewrittenProgram result = rewritten({kDefinition, GetParam().program});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, GetParam().messages);
}

constexpr Ending kAccepted[] = {
    {"not_in_front", "a(b) :- not t{q(*)}(b).", ""},
    {"every_parameter", "a(X) :- t{q(*,$,X,b,1)}(X).", ""},
    {"a_word_that_is_an_operator_elsewhere", "a(X) :- t{v(*)}(X).", ""},
    {"a_negated_name", "#template u{f(0)}(1) { u(X) :- f, h(X). } a(X) :- u{-q}(X).", ""},
    {"a_negated_name_with_parameters", "a(X) :- t{-q(*)}(X).", ""},
    {"anonymous_and_constant_outputs",
     "#template u{f(1)}(4) { u(X,X,X,X) :- f(X). } a(X) :- u{q(*)}(_,b,1,X).", ""},
    {"no_outputs", "#template u{f(1)}(0) { u :- f(X). } a :- u{q(*)}().", ""},
    {"in_an_aggregate", "a(X) :- X = #count{Y: t{q(*)}(Y), not t{r(*)}(Y)}.", ""},
    {"in_constraints", ":- t{q(*)}(X). :~ t{q(*)}(X). [X:]", ""},
    {"an_empty_body", "#template u{f(1)}(1) { }", ""},
    {"every_clause_kind",
     "#template u{f(1)}(1) GLOBAL g, h { u(b). u(X) v k :- f(X). k(1..3). :- k. :~ k. [1:2] }", ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, TemplateSyntax, testing::ValuesIn(kAccepted), case_name);

TEST_P(NoTemplateSyntax, IsReportedAndEndsTheRun) {
  const RewrittenProgram result = rewritten({kDefinition, GetParam().program});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages, std::string(GetParam().messages) + "Aborting due to parser errors.\n");
}

constexpr Ending kRefused[] = {
    {"a_formal_without_arity", "#template u{p}(1) {\n}", "2: line 1: syntax error.\n"},
    {"no_formals", "#template u{}(1) { }", "2: line 1: syntax error.\n"},
    {"no_output_arity", "#template u{p(1)} { }", "2: line 1: syntax error.\n"},
    {"an_empty_list_of_globals", "#template u{p(1)}(1) GLOBAL { }", "2: line 1: syntax error.\n"},
    {"an_invocation_in_a_head", "t{q}(X) :- b.", "2: line 1: syntax error.\n"},
    {"no_actuals", "a :- t{}(X).", "2: line 1: syntax error.\n"},
    {"no_output_list", "a :- t{p(*)}.", "2: line 1: syntax error.\n"},
    {"an_empty_parameter_list", "a :- t{p()}(X).", "2: line 1: syntax error.\n"},
    {"an_anonymous_parameter", "a :- t{p(_)}(X).", "2: line 1: syntax error.\n"},
    {"a_function_term_as_parameter", "a :- t{p(f(X))}(X).", "2: line 1: syntax error.\n"},
    {"a_function_term_as_output", "a :- t{p(*)}(f(X)).", "2: line 1: syntax error.\n"},
    {"an_asterisk_as_output", "a :- t{p(*)}(*).", "2: line 1: syntax error.\n"},
    {"a_negated_invocation", "a :- -t{p(*)}(X).", "2: line 1: syntax error.\n"},
    {"a_query", "t{p(*)}(X), q(X)?\nb.", "2: line 1: syntax error.\n"},
    {"a_query_with_an_aggregate", "1 = #count{X:t{p(*)}(X)}?\nb.", "2: line 1: syntax error.\n"},
    {"a_definition_in_a_body", "#template u{p(1)}(1) {\n #template w{p(1)}(1) { }",
     "2: line 2: syntax error.\n"},
    {"a_query_in_a_body", "#template u{p(1)}(1) {\n p(X)?", "2: line 2: syntax error.\n"},
    {"a_frame_space_in_a_body", "#template u{p(1)}(1) {\n u(X)@n :- p(X).",
     "2: line 2: syntax error.\n"},
    {"a_frame_space_behind_a_name", "#template u{p(1)}(1) {\n u :- p@n.",
     "2: line 2: syntax error.\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, NoTemplateSyntax, testing::ValuesIn(kRefused), case_name);

TEST_F(TemplatesTest, ReadsOnBehindAnErrorInABody) {
  const RewrittenProgram result =
      rewritten({"#template t{f(1)}(1) {\n t(X) :- f(X).\n t(X) :- f(X)).\n t(X) :- f(X).\n}\n"
                 "b(c)@n.\nb(a:c).\n"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "1: line 3: syntax error.\n"
            "1: line 5: syntax error.\n"
            "1: line 7: An URI with id 'a' does not exist.\n"
            "Aborting due to parser errors.\n");
}

TEST_F(TemplatesTest, LeavesABodyThatTheFileDoesNotClose) {
  const RewrittenProgram result = rewritten({"#template t{f(1)}(1) { t(X) :- f(X).", "b@n."});
  EXPECT_EQ(result.messages, "1: line 1: syntax error.\nAborting due to parser errors.\n");
}

TEST_F(TemplatesTest, TakesDefinitionsAndInvocationsInEitherOrder) {
  const std::string_view uses = "a(X) :- t{p(*)}(X).";
  const RewrittenProgram before = rewritten({kDefinition, uses});
  const RewrittenProgram behind = rewritten({uses, kDefinition});
  EXPECT_EQ(before.clauses,
            "a_2(a,default,X) :- t_0(X).\np_1(Var0) :- a_1(Var0,p).\nt_0(X) :- p_1(X).\n");
  EXPECT_EQ(behind.clauses, before.clauses);
  EXPECT_EQ(behind.legend, before.legend);
}

}    // namespace
}    // namespace zarel
