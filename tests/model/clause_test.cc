// Conjunctions, clauses and their copies, and the lists of the program.

#include "model/clause.h"

#include "model/function_term_table.h"
#include "model/namespaces.h"
#include "model/printer.h"
#include "model/program.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using ClauseTest = ModelTest;

template <class T>
std::string text_of(const T& value) {
  std::string text;
  append_text(text, value);
  return text;
}
template <class List>
std::string list_of(const List& list) {
  std::string text;
  append_list(text, list, ", ");
  return text;
}
CLAUSET clause(CLAUSET::Payload payload) {
  return {std::move(payload), {3, 4, 0}};
}

TEST_F(ClauseTest, NegatedLiteralsStandBehindTheOthers) {
  const ATOMT a = atom("a"), b = atom("b"), c = atom("c"), d = atom("d");
  Body made = body(no(a), yes(b), no(c), yes(d));
  EXPECT_EQ(list_of(made), "b, d, not a, not c");
  EXPECT_EQ(made.first_negative(), 2U);
  EXPECT_EQ(text_of(made[1]) + text_of(made[2]), "dnot a");
  made.add(no(a));
  made.add(yes(b));
  EXPECT_EQ(list_of(made), "b, d, b, not a, not c, not a");
  EXPECT_EQ(made.first_negative(), 3U);
  const Body copy = made;
  made.clear();
  EXPECT_TRUE(made.is_empty());
  EXPECT_EQ(copy.first_negative(), 3U);
  EXPECT_EQ(copy.size(), 6U);
}

TEST_F(ClauseTest, WithoutNegatedLiteralsTheFirstNegativeIsTheSize) {
  EXPECT_EQ(Body().first_negative(), 0U);
  EXPECT_EQ(body(yes(atom("a"))).first_negative(), 1U);
  EXPECT_EQ(body(no(atom("a"))).first_negative(), 0U);
  TCONJUNCTION<ATOMT> plain;
  plain.add(atom("a"));
  EXPECT_EQ(plain.first_negative(), 1U);
}

// The time limit of the tests catches an insertion in the middle.
TEST_F(ClauseTest, AMillionLiteralsOfAlternatingSignAreAddedInOrder) {
  constexpr std::int32_t kLiterals = 1'000'000;
  Body made;
  for (std::int32_t i = 0; i < kLiterals; ++i) made.add({atom("p", num(i)), i % 2 == 0});
  ASSERT_EQ(made.first_negative(), kLiterals / 2U);
  const Constraint constraint(made);
  std::int32_t expected = 1;    // the odd ones, then the even ones
  for (const Literal& literal : constraint.body()) {
    ASSERT_EQ(literal.atom.terms()[0], num(expected));
    ASSERT_EQ(literal.is_negated, expected % 2 == 0);
    expected = expected == kLiterals - 1 ? 0 : expected + 2;
  }
}

TEST_F(ClauseTest, ARuleHoldsCopiesOfItsParts) {
  Head head;
  head.add(atom("a"));
  head.add(atom("a"));
  Body of = body(yes(atom("b")));
  Rule made;
  made.init(&head, &of);
  head.clear();
  of.clear();
  EXPECT_EQ(list_of(made.head()), "a, a");
  EXPECT_EQ(list_of(made.body()), "b");
  made.init(nullptr, nullptr);
  EXPECT_TRUE(made.head().empty());
  EXPECT_TRUE(made.body().empty());
}

// Changes the first literal, b, of a copied and of an assigned clause.
template <class Kind>
void change_copies_of(const Kind& payload) {
  const CLAUSET original = clause(payload);
  const std::string before = text_of(original);
  CLAUSET copy = original;
  CLAUSET assigned = clause(TERMT::integer(1));
  assigned = original;
  std::get<Kind>(copy.payload()).body()[0] = no(atom("changed"));
  std::get<Kind>(assigned.payload()).body()[0].is_negated = true;
  EXPECT_EQ(text_of(original), before);
  EXPECT_NE(text_of(copy), before);
  EXPECT_NE(text_of(assigned), before);
  EXPECT_NE(text_of(assigned), text_of(copy));
  copy = std::move(assigned);
  EXPECT_NE(text_of(copy).find("not b"), std::string::npos);
  EXPECT_EQ(copy.location().line, 3U);
  EXPECT_EQ(copy.kind(), original.kind());
}

TEST_F(ClauseTest, CopiesOfClausesAreIndependent) {
  const Body of = body(yes(atom("b")));
  change_copies_of(rule_over(heads(atom("a")), of));
  change_copies_of(Constraint(of));
  change_copies_of(WeakConstraint(of, {num(2000), num(1)}));
}

TEST_F(ClauseTest, KindsHaveTheirCodes) {
  const Body of = body(yes(atom("b")));
  const WeakConstraint weak(of, {num(2000), TERMT::absent()});
  EXPECT_EQ(clause(Rule()).kind(), CLAUSET::Kind{0});
  EXPECT_EQ(clause(num(1)).kind(), CLAUSET::Kind{1});
  EXPECT_EQ(clause(Constraint(of)).kind(), CLAUSET::Kind{2});
  EXPECT_EQ(clause(weak).kind(), CLAUSET::Kind{3});
  EXPECT_EQ(weak.weight(), num(2000));
}

TEST_F(ClauseTest, NamesAreRecordedOnceInFirstSeenOrder) {
  addedAtom("q");
  addedAtom("p");
  addedAtom("q");
  ASSERT_EQ(Atom_Globals().names().size(), 2U);
  EXPECT_EQ(names().spelling(Atom_Globals().names()[0]), "q");
  EXPECT_TRUE(Atom_Globals().contains(names().intern("p")));
  EXPECT_FALSE(Atom_Globals().contains(names().intern("r")));
}

TEST_F(ClauseTest, ResettingForgetsEverything) {
  CLAUSES().push_back(
      clause(rule(heads(newNegativeATOMT("p", list(newTERMT("X"), newTERMT("a")))))));
  QUERIES().push_back(body(yes(atom("q"))));
  Includes().emplace_back("line");
  GLOBALS().add(names().intern("q"));
  addedAtom("q");
  nclause() = 1;
  vectorName().declare("n", "\"u\"");
  FTermTable().enter(0, {names().intern("f"), {}});
  set_arity_check(true);
  reset_tables();
  EXPECT_TRUE(CLAUSES().empty() && QUERIES().empty() && Includes().empty());
  EXPECT_TRUE(GLOBALS().names().empty() && Atom_Globals().names().empty());
  EXPECT_TRUE(NegativeAtoms().empty() && vectorName().is_empty());
  EXPECT_EQ(nclause(), 0);
  EXPECT_EQ(FTermTable().count(), 0U);
  EXPECT_FALSE(OptionArityCheck());
  EXPECT_EQ(Variables().size() + TERMT::Constants().size(), 0U);
  EXPECT_EQ(newTERMT("Y"), TERMT::variable(0));
  EXPECT_EQ(atom("q").predicate(), kBuiltinCount);
}

}    // namespace
}    // namespace zarel
