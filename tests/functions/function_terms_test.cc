// function_terms_test.cc - function terms one by one.

#include "functions/function_terms.h"

#include "model/model_fixture.h"

namespace zarel {
namespace {

using FunctionTerms = ModelTest;

TERMT function(std::string_view functor, const Terms& arguments) {
  return newFTERM(names().intern(functor), arguments);
}

TEST_F(FunctionTerms, AreVariablesOfTheirOwnUntilTheRuleIsRewritten) {
  EXPECT_FALSE(hasFunctionTerm());
  const TERMT f = function("f", {newTERMT("X")});
  const TERMT g = function("g", {f});
  EXPECT_TRUE(hasFunctionTerm());
  EXPECT_EQ(text_of(f) + text_of(g), "F_f_0F_g_1");
  EXPECT_EQ(newTERMT("F_g_1").value(), g.value());    // the variable of that name
  Head head;
  Body body;
  head.add(atom("p", g));
  rewriteFunctionsInHead(head, body);
  EXPECT_EQ(head.atoms()[0].terms()[0], TERMT::variable(g.index()));
  EXPECT_EQ(body[0].atom.terms()[2], f);    // inner ones are for the body to rewrite
  EXPECT_TRUE(hasFunctionTerm());           // only the whole rule's rewriting ends it
  rewriteFunctions(nullptr, body);
  EXPECT_EQ(text_of(body[0]) + text_of(body[1]),
            "#function_builtin(F_g_1,g,F_f_0)#function_builtin(F_f_0,f,X)");
  EXPECT_FALSE(hasFunctionTerm());
  EXPECT_EQ(text_of(function("g", {})), "F_g_0");
}

TEST_F(FunctionTerms, BecomeABuiltinAtomThatKeepsInnerOnes) {
  const TERMT inner = function("g", {newTERMT("Y")});
  const ATOMT built = buildFunctionAtom(function("f", {newTERMT("X"), TERMT::integer(-3), inner}));
  EXPECT_EQ(text_of(built), "#function_builtin(F_f_1,f,X,-3,F_g_0)");
  EXPECT_EQ(ATOMT::Predicates().type(built.predicate()), Type::kBuiltin);
  EXPECT_EQ(built.terms()[0].kind, TermKind::kVariable);
  EXPECT_EQ(built.terms()[1], newTERMT("f"));
  EXPECT_EQ(built.terms()[4], inner);
  EXPECT_EQ(fromFunctionToString(function("h", {built.terms()[3], function("g", {}), inner})),
            "h(-3,g(),g(Y))");
}

}    // namespace
}    // namespace zarel
