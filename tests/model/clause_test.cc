// Conjunctions, clauses and their copies, and the lists of the program.

#include "model/clause.h"

#include "model/function_term_table.h"
#include "model/namespaces.h"
#include "model/program.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using ClauseTest = ModelTest;

TEST_F(ClauseTest, NegatedLiteralsStandBehindTheOthers) {
  const ATOMT a = atom("a"), b = atom("b"), c = atom("c");
  Body made = body(no(a), yes(b), no(c), yes(c));
  EXPECT_EQ(list_of(made), "b, c, not a, not c");
  EXPECT_EQ(text_of(made[1]) + text_of(made[2]), "cnot a");
  made.add(no(a));
  made.add(yes(b));
  const Body copy = made;
  made.clear();
  EXPECT_TRUE(made.is_empty() && made.first_negative() == 0);
  EXPECT_EQ(list_of(copy), "b, c, b, not a, not c, not a");
  EXPECT_EQ(copy.first_negative(), 3U);
  EXPECT_EQ(copy.size(), 6U);
  TCONJUNCTION<ATOMT> plain;
  plain.add(a);
  EXPECT_EQ(plain.first_negative(), 1U);
}

// The time limit of the tests catches an insertion in the middle.
TEST_F(ClauseTest, AMillionLiteralsOfAlternatingSignAreAddedInOrder) {
  constexpr std::int32_t kHalf = 500'000;
  Body made;
  for (std::int32_t i = 0; i < 2 * kHalf; ++i) made.add({atom("p", num(i)), i % 2 == 0});
  const Constraint constraint(made);
  std::int32_t i = 0;
  for (const Literal& literal : constraint.body()) {    // the odd ones, then the even ones
    const std::int32_t expected = i < kHalf ? 2 * i + 1 : 2 * (i - kHalf);
    ASSERT_TRUE(literal.atom.terms()[0] == num(expected) && literal.is_negated == (i >= kHalf));
    ++i;
  }
}

TEST_F(ClauseTest, ARuleHoldsCopiesOfItsParts) {
  Head head;
  head.add(atom("a"));
  Body of = body(yes(atom("b")));
  Rule made;
  made.init(&head, &of);
  head.clear();
  of.clear();
  EXPECT_EQ(list_of(made.head()) + list_of(made.body()), "ab");
  made.init(nullptr, nullptr);
  EXPECT_TRUE(made.head().empty() && made.body().empty());
}

// Changes the first literal, b, of a copied and of an assigned clause.
template <class Kind>
void change_copies_of(const CLAUSET& original, CLAUSET::Kind kind) {
  const std::string before = text_of(original);
  CLAUSET copy = original;
  CLAUSET assigned(TERMT::integer(1), {});
  assigned = original;
  std::get<Kind>(copy.payload()).body()[0].atom = atom("changed");
  std::get<Kind>(assigned.payload()).body()[0].is_negated = true;
  EXPECT_EQ(text_of(original), before);
  EXPECT_NE(text_of(copy).find("changed"), std::string::npos);
  EXPECT_EQ(text_of(copy).find("not"), std::string::npos);
  copy = std::move(assigned);
  EXPECT_NE(text_of(copy).find("not b"), std::string::npos);
  EXPECT_EQ(copy.location().line, 2U);
  EXPECT_EQ(copy.kind(), kind);
}

TEST_F(ClauseTest, CopiesAreIndependentAndKindsHaveTheirCodes) {
  change_copies_of<Rule>(clause("\na :- b."), CLAUSET::Kind{0});
  EXPECT_EQ(clause("#maxint = 1.").kind(), CLAUSET::Kind{1});
  change_copies_of<Constraint>(clause("\n:- b."), CLAUSET::Kind{2});
  change_copies_of<WeakConstraint>(clause("\n:~ b. [2:1]"), CLAUSET::Kind{3});
}

TEST_F(ClauseTest, ResettingForgetsEverything) {
  clause("#namespace(n,\"u\") -p(X,n:a). q? #include lib");
  GLOBALS().add(names().intern("q"));
  nclause() = 1;
  FTermTable().enter(0, {names().intern("f"), {}});
  set_arity_check(true);
  reset_tables();
  EXPECT_TRUE(CLAUSES().empty() && QUERIES().empty() && Includes().empty());
  EXPECT_TRUE(GLOBALS().names().empty() && Atom_Globals().names().empty());
  EXPECT_TRUE(NegativeAtoms().empty() && vectorName().is_empty() && !prefix_was_used());
  EXPECT_EQ(nclause(), 0);
  EXPECT_EQ(FTermTable().count(), 0U);
  EXPECT_FALSE(OptionArityCheck());
  EXPECT_EQ(Variables().size(), 0U);
  EXPECT_FALSE(TERMT::Constants().find("a"));
  EXPECT_EQ(newTERMT("Y"), TERMT::variable(0));
  EXPECT_EQ(atom("q").predicate(), kBuiltinCount);
}

}    // namespace
}    // namespace zarel
