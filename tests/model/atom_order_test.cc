// The three-way comparison of atoms; that of atoms which files write is in tests/parser.

#include "model/atom_order.h"

#include <limits>

#include "model/established.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using AtomOrder = ModelTest;

// Expects this sign of a compared with b, and the opposite the other way round.
void expect_sign(int sign, const ATOMT& a, const ATOMT& b) {
  const auto sign_of = [](int difference) { return (difference > 0) - (difference < 0); };
  EXPECT_EQ(sign_of(compare(a, b)), sign) << text_of(a) << " and " << text_of(b);
  EXPECT_EQ(sign_of(compare(b, a)), -sign) << text_of(a) << " and " << text_of(b);
  EXPECT_TRUE(equal(a, a));
}

// Aggregates without guards, predicates of two kinds as "&f" and "f", terms that stand alone.
TEST_F(AtomOrder, GoesFurtherWhereNoFileDoes) {
  const ATOMT plain = count({}, {}, false);
  expect_sign(-1, plain, count({}, {}, true));
  expect_sign(-1, plain, count(TERMT::absent(), {}, false));
  expect_sign(-1, plain, count({}, TERMT::absent(), false));
  const auto external = [](int a, int b) {
    return ATOMT::external("f", Terms{num(a)}, Terms{num(b)});
  };
  expect_sign(-1, atom("f"), external(1, 1));
  expect_sign(-1, external(1, 2), external(2, 1));
  expect_sign(-1, external(1, 1), external(1, 2));
  const auto differing = [](TermKind kind, int sign) {
    expect_sign(sign, atom("p", TERMT{kind, 1}), atom("p", TERMT{kind, 2}));
  };
  differing(TermKind::kAbsent, 0);
  differing(TermKind::kAsterisk, -1);
  differing(TermKind::kDollar, -1);
  differing(TermKind::kFunctionTerm, -1);
}

TEST_F(AtomOrder, GivesTheDifferenceItself) {
  const ATOMT p = atom("p", num(3));
  EXPECT_EQ(compare(p, atom("p", num(5))), -2);
  EXPECT_EQ(compare(p, atom("p", num(3), num(1), num(1))), -2);
  EXPECT_EQ(compare(p, atom("p", TERMT::anonymous())), -3);
  EXPECT_EQ(p != newBuiltin(BUILTIN::kEqual, {}), 10);    // the established name
  const TERMT least = num(std::numeric_limits<std::int32_t>::min());
  expect_sign(-1, atom("p", least), p);    // does not turn around between far integers
}

TEST_F(AtomOrder, OnlySaysThatInvocationsDiffer) {
  const ATOMT of(invocation("t", Terms{num(1)}, atom("p")));
  EXPECT_TRUE(equal(of, ATOMT(invocation("t", Terms{num(1)}, atom("p")))));
  for (const INVOCATIONATOM& other :
       {invocation("t", Terms{num(1)}, atom("q")), invocation("t", Terms{num(2)}, atom("p")),
        invocation("t", Terms{}, atom("p"))}) {
    EXPECT_EQ(compare(of, ATOMT(other)) + compare(ATOMT(other), of), 2);
  }
}

}    // namespace
}    // namespace zarel
