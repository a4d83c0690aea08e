// Safety of rules, and the small checks of atoms.

#include "model/safety.h"

#include "model_fixture.h"

namespace zarel {
namespace {

const auto x = [] { return newTERMT("X"); };
const auto y = [] { return newTERMT("Y"); };
const auto n = [] { return newTERMT("N"); };
const auto p = [] { return atom("p", x()); };
const auto q = [](const TERMT& term) { return atom("q", term); };
const auto over = [](BUILTIN code, const Terms& terms) { return newBuiltin(code, terms); };
const auto equal = [](const TERMT& a, const TERMT& b) { return over(BUILTIN::kEqual, list(a, b)); };
const auto less = [](const TERMT& a, const TERMT& b) { return over(BUILTIN::kLess, list(a, b)); };
const auto number_of_q = [](const TERMT& guard, Equality equality = Equality::kNo) {
  return count_of("Z", body(yes(q(newTERMT("Z")))), strict(guard), {}, equality);
};
Rule counting(const Literal& inner) {
  return rule(heads(), yes(count_of("X", body(yes(q(x())), inner), strict(num(1)))), yes(q(y())));
}

struct Safety {
  std::string_view name;
  Rule (*make)();
  bool is_safe;
  friend void PrintTo(const Safety& test, std::ostream* out) { *out << test.name; }
};
class RuleSafety : public ModelTable<Safety> {};
TEST_P(RuleSafety, IsAsExpected) {
  EXPECT_EQ(GetParam().make().isSafe(), GetParam().is_safe);
}

const Safety kRules[] = {
    {"bound_head", [] { return rule(heads(p()), yes(q(x()))); }, true},
    {"negation_binds_nothing", [] { return rule(heads(p()), no(q(x()))); }, false},
    {"fact_with_variable", [] { return rule(heads(p())); }, false},
    {"fact", [] { return rule(heads(atom("p", newTERMT("a")))); }, true},
    {"anonymous_in_a_fact", [] { return rule(heads(atom("p", TERMT::anonymous()))); }, true},
    {"function_term_in_a_fact", [] { return rule(heads(atom("p", function_term("F")))); }, true},
    {"nothing_at_all", [] { return rule(heads()); }, true},
    {"unbound_second_disjunct", [] { return rule(heads(p(), q(y())), yes(q(x()))); }, false},
    {"unbound_negated_literal", [] { return rule(heads(p()), yes(q(x())), no(q(y()))); }, false},
    {"bound_negated_literal", [] { return rule(heads(), yes(q(x())), no(q(x()))); }, true},

    {"equal_to_an_integer", [] { return rule(heads(p()), yes(equal(x(), num(3)))); }, true},
    {"a_constant_equal_to_it", [] { return rule(heads(p()), yes(equal(newTERMT("a"), x()))); },
     true},
    {"negated_equality_binds_too", [] { return rule(heads(p()), no(equal(x(), num(3)))); }, true},
    {"equal_to_a_bound_variable",
     [] { return rule(heads(p()), yes(equal(x(), y())), yes(q(y()))); }, false},
    {"equal_to_a_function_term",
     [] { return rule(heads(p()), yes(equal(x(), function_term("F")))); }, false},
    {"unequal_binds_nothing",
     [] { return rule(heads(p()), yes(over(BUILTIN::kNotEqual, list(x(), num(3))))); }, false},
    {"comparisons_bind_nothing",
     [] { return rule(heads(), yes(over(BUILTIN::kGreaterOrEqual, list(x(), num(3))))); }, false},
    {"comparison_of_bound_ones", [] { return rule(heads(), yes(q(x())), yes(less(x(), num(3)))); },
     true},
    {"right_of_a_comparison", [] { return rule(heads(), yes(q(x())), yes(less(x(), y()))); },
     false},
    {"int_binds", [] { return rule(heads(p()), yes(over(BUILTIN::kInt, list(x())))); }, true},
    {"succ_binds", [] { return rule(heads(p()), yes(over(BUILTIN::kSucc, list(x(), y())))); },
     true},
    {"sum_binds_its_result",
     [] {
       return rule(heads(p()), yes(q(y())), yes(over(BUILTIN::kPlus, list(y(), num(1), x()))));
     },
     true},
    {"sum_binds_what_it_adds",
     [] { return rule(heads(p()), yes(over(BUILTIN::kPlus, list(x(), num(1), y())))); }, true},
    {"negated_product_binds_nothing",
     [] { return rule(heads(p()), no(over(BUILTIN::kTimes, list(x(), num(1), num(1))))); }, false},

    {"aggregate_equality_binds",
     [] { return rule(heads(atom("p", n())), yes(number_of_q(n(), Equality::kYes))); }, true},
    {"negated_aggregate_equality",
     [] { return rule(heads(), no(number_of_q(n(), Equality::kYes))); }, false},
    {"equality_binds_by_the_lower_guard_only",
     [] {
       const ATOMT count = count_of("X", body(yes(p())), {}, strict(n()), Equality::kYes);
       return rule(heads(atom("p", n())), yes(count));
     },
     false},
    {"unbound_lower_guard", [] { return rule(heads(), yes(number_of_q(n()))); }, false},
    {"bound_lower_guard", [] { return rule(heads(), yes(number_of_q(n())), yes(q(n()))); }, true},
    {"unbound_upper_guard",
     [] { return rule(heads(), yes(count_of("X", body(yes(p())), {}, strict(n())))); }, false},
    {"local_variables_of_an_aggregate",
     [] {
       const Body inside = body(yes(atom("q", x(), y())));
       return rule(heads(atom("r")), yes(count_of("X", inside, strict(num(1)))));
     },
     true},
    {"aggregates_bind_no_head",
     [] { return rule(heads(p()), yes(count_of("X", body(yes(p())), strict(num(1))))); }, false},
    {"negated_inside_bound_inside", [] { return counting(no(q(x()))); }, true},
    {"negated_inside_bound_outside", [] { return counting(no(q(y()))); }, true},
    {"negated_inside_unbound", [] { return counting(no(q(n()))); }, false},
    {"comparison_inside_unbound", [] { return counting(yes(less(x(), n()))); }, false},
    {"equality_inside_binds_inside", [] { return counting(yes(equal(n(), num(1)))); }, true},
    {"invocations_bind_their_terms",
     [] { return rule(heads(p()), yes(ATOMT(invocation("t", list(x()))))); }, true},
    {"invocations_do_not_bind_by_actuals",
     [] { return rule(heads(p()), yes(ATOMT(invocation("t", list(), q(x()))))); }, false},
    {"externals_bind_their_second_list",
     [] { return rule(heads(p()), yes(ATOMT::external("f", {}, list(x())))); }, true},
    {"externals_do_not_bind_by_brackets",
     [] { return rule(heads(p()), yes(ATOMT::external("f", list(x()), {}))); }, false},
};
INSTANTIATE_TEST_SUITE_P(Cases, RuleSafety, testing::ValuesIn(kRules), case_name);

using SafetyTest = ModelTest;

TEST_F(SafetyTest, BodiesAreAskedTheSameWay) {
  EXPECT_TRUE(Body().isSafe());
  EXPECT_FALSE(body(no(q(x()))).isSafe());
  EXPECT_TRUE(body(no(q(x())), yes(q(x()))).isSafe());
  EXPECT_TRUE(body(no(q(x())), no(equal(x(), num(1)))).isSafe());
  EXPECT_FALSE(body(yes(number_of_q(n()))).isSafe());
  EXPECT_FALSE(Saves(Body(), x()));
  EXPECT_TRUE(Saves(body(yes(q(y())), no(equal(num(1), x()))), x()));
  EXPECT_FALSE(Saves(body(yes(q(y())), no(q(x())), yes(less(x(), num(1)))), x()));
  EXPECT_TRUE(Saves(body(yes(number_of_q(n(), Equality::kYes))), n()));
  EXPECT_FALSE(Saves(body(yes(number_of_q(n()))), n()));
}

// Taking Saves for each of these variables would outlast the time limit.
TEST_F(SafetyTest, LongRulesAreCheckedInLinearTime) {
  constexpr std::uint32_t kVariables = 300'000;
  Body of;
  for (std::uint32_t i = 0; i < kVariables; ++i) of.add(yes(q(TERMT::variable(i))));
  for (std::uint32_t i = kVariables; i-- > 0;) of.add(no(q(TERMT::variable(i))));
  EXPECT_TRUE(rule_over(heads(p()), of).isSafe());
  of.add(no(q(TERMT::variable(kVariables))));
  EXPECT_FALSE(rule_over(heads(p()), of).isSafe());
}

TEST_F(SafetyTest, AGlobalPredicateOfAnotherArityEndsTheRun) {
  atom("g", num(1));
  const ATOMT same = atom("#3g", num(2));
  const ATOMT other = atom("12g", num(1), num(2));
  const ATOMT unknown = atom("#3h", num(1));
  const ATOMT negated = newNegativeATOMT("g", {});
  EXPECT_EQ(end_of([&] { control_of_arity(same); }), std::nullopt);
  EXPECT_EQ(end_of([&] { control_of_arity(unknown); }), std::nullopt);
  EXPECT_EQ(end_of([&] { control_of_arity(negated); }), std::nullopt);
  EXPECT_EQ(errors_.str(), "");
  EXPECT_EQ(end_of([&] { control_of_arity(other); }), 1);
  EXPECT_EQ(errors_.str(),
            "g is a global predicate first used with arity 1, now seen with arity 2.\n");
}

TEST_F(SafetyTest, MarkersAreToldFromOrdinaryTerms) {
  const TERMT star = TERMT::asterisk();
  EXPECT_EQ(nAsterisk(atom("p", star, newTERMT("a"), star)), 2);
  EXPECT_EQ(nAsterisk(newBuiltin(BUILTIN::kLess, list(star, star))), 2);
  EXPECT_EQ(nAsterisk(ATOMT(invocation("t", list(star)))), 1);
  EXPECT_FALSE(existVarGroup(atom("p", star, TERMT::anonymous(), TERMT::dollar())));
  EXPECT_FALSE(existVarGroup(atom("p")));
  for (const TERMT& term : list(x(), newTERMT("a"), num(1), function_term("F"))) {
    EXPECT_TRUE(existVarGroup(atom("p", star, term)));
  }
}

}    // namespace
}    // namespace zarel
