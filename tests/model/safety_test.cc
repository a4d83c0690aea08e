// Safety of what no input file says (the tests of whole runs hold the rest); small checks of atoms.

#include "model/safety.h"

#include "model/established.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using Safety = ModelTest;

// Literals that the grammar does not write: X in the head, the literal alone in the body.
TEST_F(Safety, HangsOnTheKindOfTheLiteral) {
  const TERMT x = newTERMT("X"), one = num(1);
  const auto is_safe = [&](const Literal& literal) {
    const Body of = body(literal);
    const Rule rule = rule_of(atom("p", x), of);
    EXPECT_EQ(rule.isSafe(), Saves(of, x));    // one variable, one literal: the same question
    return rule.isSafe();
  };
  EXPECT_TRUE(is_safe(no(newBuiltin(BUILTIN::kEqual, Terms{one, x}))));
  EXPECT_TRUE(is_safe(no(newBuiltin(BUILTIN::kEqual, Terms{x, newTERMT("a")}))));
  EXPECT_FALSE(is_safe(yes(newBuiltin(BUILTIN::kEqual, Terms{x, function_term("F")}))));
  EXPECT_FALSE(is_safe(no(newBuiltin(BUILTIN::kTimes, Terms{x, one, one}))));
  EXPECT_TRUE(is_safe(yes(count(x, {}, true))));
  EXPECT_FALSE(is_safe(yes(count({}, x, true))));
  EXPECT_TRUE(is_safe(yes(ATOMT(invocation("t", Terms{x})))));
  EXPECT_FALSE(is_safe(yes(ATOMT(invocation("u", Terms{}, atom("q", x))))));
  EXPECT_TRUE(is_safe(yes(ATOMT::external("f", {}, Terms{x}))));
  EXPECT_FALSE(is_safe(yes(ATOMT::external("f", Terms{x}, {}))));
}

TEST_F(Safety, OfBodiesLooksAtBothTheirHalves) {
  const TERMT x = newTERMT("X");
  const Literal negated = no(atom("q", x));
  EXPECT_FALSE(body(negated).isSafe());
  EXPECT_TRUE(body(negated, no(newBuiltin(BUILTIN::kEqual, Terms{x, num(1)}))).isSafe());
  EXPECT_FALSE(body(yes(count(x, {}, false))).isSafe());
  const auto builtin = [&](BUILTIN code) { return yes(newBuiltin(code, Terms{x, num(1)})); };
  const Body inside = body(builtin(BUILTIN::kLess), builtin(BUILTIN::kEqual));
  EXPECT_TRUE(body(yes(count({}, {}, false, inside))).isSafe());
}

// Taking Saves for each of these variables would outlast the time limit.
TEST_F(Safety, OfLongRulesTakesLinearTime) {
  constexpr std::uint32_t kVariables = 300'000;
  Body of;
  for (std::uint32_t i = 0; i < kVariables; ++i) of.add(yes(atom("q", TERMT::variable(i))));
  for (std::uint32_t i = kVariables; i-- > 0;) of.add(no(atom("q", TERMT::variable(i))));
  EXPECT_TRUE(of.isSafe());
  of.add(no(atom("q", TERMT::variable(kVariables))));
  EXPECT_FALSE(of.isSafe());
}

TEST_F(Safety, EndsTheRunAtAGlobalPredicateOfAnotherArity) {
  for (const Terms& terms : {Terms{num(1)}, Terms{}}) ATOMT("g", terms, Type::kUnknown);
  const ATOMT other = atom("12g", num(1), num(2));
  for (const ATOMT& good : {atom("#3g", num(2)), atom("#3h", num(1)), newNegativeATOMT("g", {})})
    EXPECT_EQ(end_of([&] { control_of_arity(good); }), std::nullopt);
  EXPECT_EQ(end_of([&] { control_of_arity(other); }), 1);
  EXPECT_EQ(errors_.str(),
            "g is a global predicate first used with arity 1, now seen with arity 2.\n");
}

TEST_F(Safety, TellsMarkersFromOrdinaryTerms) {
  const TERMT star = TERMT::asterisk();
  EXPECT_EQ(nAsterisk(newBuiltin(BUILTIN::kLess, Terms{star, newTERMT("a"), star})), 2);
  EXPECT_EQ(nAsterisk(ATOMT(invocation("t", Terms{star}))), 1);
  EXPECT_FALSE(existVarGroup(atom("p", star, TERMT::anonymous(), TERMT::dollar())));
  for (const TERMT& term : Terms{newTERMT("X"), newTERMT("a"), num(1), function_term("F")})
    EXPECT_TRUE(existVarGroup(atom("p", star, term)));
}

}    // namespace
}    // namespace zarel
