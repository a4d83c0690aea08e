// The text of what no input file says; the golden cases hold the rest.

#include "model/printer.h"

#include "model_fixture.h"

namespace zarel {
namespace {

using Printing = ModelTest;

TEST_F(Printing, OfTermsKeepsSeparatorsAroundAbsentOnes) {
  const TERMT star = TERMT::asterisk(), dollar = TERMT::dollar(), least = num(-2147483647 - 1);
  EXPECT_EQ(text_of(atom("p", star, TERMT::absent(), dollar, TERMT::anonymous(), least)),
            "p(*,,$,_,-2147483648)");
  EXPECT_EQ(text_of(newBuiltin(BUILTIN::kEqual, {})), "==");
  EXPECT_EQ(list_of(list(function_term("F"), newTERMT("\"a b\""))), "F, \"a b\"");
}

TEST_F(Printing, OfAggregatesLeavesOutGuardsThatAreNoValues) {
  EXPECT_EQ(text_of(count({}, {}, false)), "#count{X:p}");
  EXPECT_EQ(text_of(count(num(2), newTERMT("Y"), true)), "2 = #count{X:p} = Y");
  EXPECT_EQ(text_of(count(newTERMT("a"), function_term("F"), false)), " < #count{X:p} < ");
}

TEST_F(Printing, OfInvocationsAndExternalsShowsBothLists) {
  const Terms terms = list(newTERMT("X"), num(1));
  const ATOMT pattern = atom("p", TERMT::asterisk(), TERMT::dollar());
  EXPECT_EQ(text_of(ATOMT(invocation("t", terms, pattern, atom("q")))), "t[p(*,$), q] (X,1)");
  EXPECT_EQ(text_of(ATOMT(invocation("u", {}))), "u[] ()");
  EXPECT_EQ(text_of(ATOMT::external("f", terms, list(num(2), num(3)))), "&f[X,1](2,3)");
  EXPECT_EQ(text_of(ATOMT::external("f", {}, {})), "&f[]()");
}

TEST_F(Printing, OfClausesTakesTheWeightAsUnsigned) {
  const Body of = body(no(atom("q")), yes(atom("p")));
  const CLAUSET weak(WeakConstraint(of, {num(-1000), num(-1)}), {});
  Rule rule;
  rule.init(nullptr, &of);
  EXPECT_EQ(list_of(std::vector{weak, CLAUSET(rule, {})}),
            ":~ p, not q. [4294966:-1],  :- p, not q.");
  EXPECT_EQ(list_of(std::vector<FORMALPRED>{{"p", 1}, {"q", 0}}), "p(1), q(0)");
}

TEST_F(Printing, EndsTheRunSilentlyAtAnUnnamedVariable) {
  const ATOMT unnamed = atom("p", TERMT::variable(3));
  std::ostringstream out;
  EXPECT_EQ(end_of([&] { out << unnamed; }), 1);
  EXPECT_EQ(out.str() + errors_.str(), "");
}

}    // namespace
}    // namespace zarel
