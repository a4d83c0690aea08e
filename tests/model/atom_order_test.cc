// The three-way comparison of atoms.

#include "model/atom_order.h"

#include <algorithm>
#include <limits>

#include "model_fixture.h"

namespace zarel {
namespace {

// Two atoms, and the sign of their comparison. Predicates and names are numbered as they come, so
// "p" stands before "q".
struct Pair {
  std::string_view name;
  std::pair<ATOMT, ATOMT> (*make)();
  int sign;
  bool is_mirrored = true;    // false where differing atoms always give 1
  friend void PrintTo(const Pair& test, std::ostream* out) { *out << test.name; }
};
class AtomOrder : public ModelTable<Pair> {};
TEST_P(AtomOrder, HasTheExpectedSign) {
  const auto sign = [](int difference) { return (difference > 0) - (difference < 0); };
  newTERMT("X");
  newTERMT("Y");
  atom("p");
  atom("q");
  const auto [a, b] = GetParam().make();
  EXPECT_EQ(sign(a != b), GetParam().sign);
  EXPECT_EQ(sign(b != a), GetParam().is_mirrored ? -GetParam().sign : GetParam().sign);
  EXPECT_EQ(a != a, 0);
}

std::pair<ATOMT, ATOMT> over(const Terms& a, const Terms& b) {
  return {atom("p", a), atom("p", b)};
}
const auto holding = [](const char* name) { return body(yes(atom(name))); };
std::pair<ATOMT, ATOMT> counts(const Body& a, const Body& b) {
  return {count_of("X", a, strict(num(1))), count_of("X", b, strict(num(1)))};
}
std::pair<ATOMT, ATOMT> guarded(const Guard& a, const Guard& b) {
  return {count_of("X", holding("p"), a), count_of("X", holding("p"), b)};
}
std::pair<ATOMT, ATOMT> invoked(const INVOCATIONATOM& a, const INVOCATIONATOM& b) {
  return {ATOMT(a), ATOMT(b)};
}

const Pair kPairs[] = {
    {"predicates", [] { return std::pair(atom("p", num(9)), atom("q")); }, -1},
    {"equal", [] { return over(list(newTERMT("X"), num(1)), list(newTERMT("X"), num(1))); }, 0},
    {"fewer_arguments", [] { return over(list(num(9)), list(num(1), num(1))); }, -1},
    {"none_and_one", [] { return over(list(), list(num(1))); }, -1},
    {"variable_numbers", [] { return over(list(newTERMT("X")), list(newTERMT("Y"))); }, -1},
    {"negative_integers", [] { return over(list(num(-3)), list(num(2))); }, -1},
    {"kinds_before_values", [] { return over(list(newTERMT("Y")), list(num(-5))); }, -1},
    {"later_terms", [] { return over(list(num(1), num(3)), list(num(1), num(2))); }, 1},
    {"absent_values_unlooked_at",
     [] {
       return over(list(TERMT{TermKind::kAbsent, 1}), list(TERMT{TermKind::kAbsent, 2}));
     },
     0},
    {"asterisk_values",
     [] {
       return over(list(TERMT{TermKind::kAsterisk, 0}), list(TERMT{TermKind::kAsterisk, 2}));
     },
     -1},
    {"dollar_values",
     [] {
       return over(list(TERMT::dollar()), list(TERMT{TermKind::kDollar, 3}));
     },
     -1},
    {"function_terms", [] { return over(list(function_term("X")), list(function_term("Y"))); }, -1},
    {"builtins_without_terms",
     [] { return std::pair(newBuiltin(BUILTIN::kLess, {}), newBuiltin(BUILTIN::kPlus, {})); }, -1},
    {"far_integers",
     [] { return over(list(num(std::numeric_limits<std::int32_t>::min())), list(num(1))); }, -1},

    {"lower_guard_terms", [] { return guarded(strict(num(1)), strict(num(2))); }, -1},
    {"lower_guard_kinds", [] { return guarded(strict(newTERMT("Y")), strict(num(0))); }, -1},
    {"inclusive_guards", [] { return guarded(strict(num(1)), inclusive(num(1))); }, -1},
    {"upper_guards",
     [] {
       return std::pair(count_of("X", holding("p"), {}, strict(num(2))),
                        count_of("X", holding("p"), {}, strict(num(1))));
     },
     1},
    {"written_absent_guard", [] { return guarded({}, strict(TERMT::absent())); }, -1},
    {"written_absent_upper_guard",
     [] {
       return std::pair(count_of("X", holding("p"), {}),
                        count_of("X", holding("p"), {}, strict(TERMT::absent())));
     },
     -1},
    {"equality",
     [] {
       return std::pair(count_of("X", holding("p"), strict(num(1))),
                        count_of("X", holding("p"), strict(num(1)), {}, Equality::kYes));
     },
     -1},
    {"aggregate_terms",
     [] {
       return std::pair(count_of("X", holding("p"), strict(num(1))),
                        count_of("Y", holding("p"), strict(num(1))));
     },
     -1},
    {"functions",
     [] {
       const ATOMT sum = aggregate(AggregateFunction::kSum, {}, holding("p"), {});
       return std::pair(sum, aggregate(AggregateFunction::kMin, {}, holding("p"), {}));
     },
     -1},
    {"body_predicates", [] { return counts(holding("p"), holding("q")); }, -1},
    {"body_order_unlooked_at",
     [] {
       return counts(body(yes(atom("p")), no(atom("p")), yes(atom("q")), no(atom("q"))),
                     body(no(atom("q")), yes(atom("q")), no(atom("p")), yes(atom("p"))));
     },
     0},
    {"body_negation", [] { return counts(holding("p"), body(no(atom("p")))); }, -1},
    {"body_length", [] { return counts(holding("p"), body(yes(atom("p")), yes(atom("p")))); }, -1},

    {"invocations_alike",
     [] {
       return invoked(invocation("t", list(num(1)), atom("p")),
                      invocation("t", list(num(1)), atom("p")));
     },
     0},
    {"invocation_actuals",
     [] { return invoked(invocation("t", list(), atom("p")), invocation("t", list(), atom("q"))); },
     1, false},
    {"invocation_terms",
     [] { return invoked(invocation("t", list(num(1))), invocation("t", list(num(2)))); }, 1,
     false},
    {"invocation_term_counts",
     [] { return invoked(invocation("t", list()), invocation("t", list(num(2)))); }, 1, false},
};
INSTANTIATE_TEST_SUITE_P(Cases, AtomOrder, testing::ValuesIn(kPairs), case_name);

TEST_F(ModelTest, ComparisonGivesTheDifferenceItself) {
  const ATOMT p = atom("p", num(3));
  EXPECT_EQ(p != atom("p", num(5)), -2);
  EXPECT_EQ(p != atom("p", num(3), num(1), num(1)), -2);
  EXPECT_EQ(p != atom("p", TERMT::anonymous()), -3);
  EXPECT_EQ(p != newBuiltin(BUILTIN::kEqual, {}), 10);
}

// A predicate may stand in atoms of two kinds, as "&f" and "f" do.
TEST_F(ModelTest, AtomsOfDifferentKindsDiffer) {
  const ATOMT plain = atom("f");
  const ATOMT external = ATOMT::external("f", list(num(1)), {});
  EXPECT_NE(plain != external, 0);
  EXPECT_NE(external != plain, 0);
}

// The sort of the two bodies needs an order: differences of far integers must not turn around.
TEST_F(ModelTest, BodiesOverTheWholeRangeOfIntegersAreOrdered) {
  constexpr std::uint32_t kLiterals = 20'000;
  Body forth, back;
  for (std::uint32_t i = 0; i < kLiterals; ++i) {
    const auto scattered = [](std::uint32_t n) {
      return static_cast<std::int32_t>(n * 2654435769U);
    };
    forth.add(yes(atom("p", num(scattered(i)))));
    back.add(yes(atom("p", num(scattered(kLiterals - 1 - i)))));
  }
  const ATOMT a = count_of("X", forth, strict(num(1)));
  EXPECT_EQ(a != count_of("X", back, strict(num(1))), 0);
}

}    // namespace
}    // namespace zarel
