// function_terms_test.cc - function terms one by one: their names, their builtin atoms, their text,
// and the order in which a rule is rewritten.

#include "functions/function_terms.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "model/printer.h"
#include "model/tables.h"

namespace zarel {
namespace {

class FunctionTerms : public testing::Test {
 protected:
  FunctionTerms() { reset_tables(); }
  ~FunctionTerms() override { reset_tables(); }

  static TERMT function(std::string_view functor, const std::vector<TERMT>& arguments) {
    return newFTERM(names().intern(functor), arguments);
  }
  static ATOMT atom(std::string_view name, const std::vector<TERMT>& terms) {
    return {name, terms, PREDICATE_NAMETS::TYPE::kUnknown};
  }
  template <class T>
  static std::string text(const T& whole) {
    std::string out;
    append_text(out, whole);
    return out;
  }
  static std::string text(const Body& body) {
    std::string out;
    append_list(out, body, ", ");
    return out;
  }
};

TEST_F(FunctionTerms, AreNamedByFunctorAndCount) {
  EXPECT_FALSE(hasFunctionTerm());
  const TERMT f = function("f", {newTERMT("X")});
  const TERMT g = function("g", {f});
  EXPECT_TRUE(hasFunctionTerm());
  EXPECT_EQ(f.kind, TermKind::kFunctionTerm);
  EXPECT_EQ(text(f), "F_f_0");
  EXPECT_EQ(text(g), "F_g_1");
  EXPECT_EQ(newTERMT("F_g_1").value, g.value);    // the variable of that name
  Body body;
  rewriteFunctions(nullptr, body);
  EXPECT_FALSE(hasFunctionTerm());
  EXPECT_EQ(text(function("g", {})), "F_g_0");
}

TEST_F(FunctionTerms, BecomeABuiltinAtomThatKeepsInnerOnes) {
  const TERMT inner = function("g", {newTERMT("Y")});
  const ATOMT built = buildFunctionAtom(function("f", {newTERMT("X"), TERMT::integer(3), inner}));
  EXPECT_EQ(text(built), "#function_builtin(F_f_1,f,X,3,F_g_0)");
  EXPECT_EQ(ATOMT::Predicates().type(built.predicate()), PREDICATE_NAMETS::TYPE::kBuiltin);
  EXPECT_EQ(built.terms()[0].kind, TermKind::kVariable);
  EXPECT_EQ(built.terms()[1], newTERMT("f"));
  EXPECT_EQ(built.terms()[4], inner);
}

TEST_F(FunctionTerms, OfAHeadLeaveInnerOnesToTheBody) {
  const TERMT inner = function("g", {newTERMT("X")});
  Head head;
  head.add(atom("p", {function("f", {inner})}));
  head.add(atom("q", {newTERMT("a"), function("h", {})}));
  Body body;
  body.add({atom("s", {}), true});
  rewriteFunctionsInHead(head, body);
  EXPECT_EQ(text(head.atoms()[0]) + " " + text(head.atoms()[1]), "p(F_f_1) q(a,F_h_2)");
  EXPECT_EQ(head.atoms()[0].terms()[0].kind, TermKind::kVariable);
  EXPECT_EQ(text(body), "#function_builtin(F_f_1,f,F_g_0), #function_builtin(F_h_2,h), not s");
  EXPECT_EQ(body[0].atom.terms()[2], inner);
  EXPECT_TRUE(hasFunctionTerm());    // only the whole rule's rewriting ends it
  rewriteFunctionsInBody(body);
  EXPECT_EQ(text(body),
            "#function_builtin(F_f_1,f,F_g_0), #function_builtin(F_h_2,h), "
            "#function_builtin(F_g_0,g,X), not s");
  EXPECT_EQ(body[0].atom.terms()[2].kind, TermKind::kVariable);
}

TEST_F(FunctionTerms, HaveAWrittenForm) {
  const TERMT x = newTERMT("X");
  EXPECT_EQ(fromFunctionToString(function("f", {x, newTERMT("a"), newTERMT("\"s t\"")})),
            "f(X,a,\"s t\")");
  EXPECT_EQ(fromFunctionToString(function("f", {TERMT::integer(-12), function("g", {x}), x})),
            "f(-12,g(X),X)");
  EXPECT_EQ(fromFunctionToString(function("f", {function("g", {}), function("h", {x})})),
            "f(g(),h(X))");
}

TEST_F(FunctionTerms, HaveAWrittenFormOfAnyLength) {
  const std::string name(1000, 'n');
  const TERMT constant = newTERMT(name);
  EXPECT_EQ(fromFunctionToString(function("f", {constant, constant, constant})),
            "f(" + name + "," + name + "," + name + ")");
  TERMT deep = newTERMT("X");
  std::string expected;
  for (int i = 0; i < 100'000; ++i) deep = function("f", {deep});
  for (int i = 0; i < 100'000; ++i) expected += "f(";
  EXPECT_EQ(fromFunctionToString(deep), expected + "X" + std::string(100'000, ')'));
}

}    // namespace
}    // namespace zarel
