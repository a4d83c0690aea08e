// Conjunctions, clauses and their copies.

#include "model/clause.h"

#include "model_fixture.h"

namespace zarel {
namespace {

using ClauseTest = ModelTest;

TEST_F(ClauseTest, NegatedLiteralsStandBehindTheOthers) {
  Body made = body(no(atom("a")), yes(atom("b")), no(atom("c")), yes(atom("c")));
  EXPECT_EQ(text_of(made[1]) + text_of(made[2]), "cnot a");
  EXPECT_EQ(made.first_negative() + made.size(), 2U + 4U);
  made.clear();
  EXPECT_TRUE(made.is_empty() && made.first_negative() == 0);
  TCONJUNCTION<ATOMT> plain;
  plain.add(atom("a"));
  EXPECT_EQ(plain.first_negative(), 1U);
}

TEST_F(ClauseTest, CopiesAreIndependent) {
  Head head;
  head.add(atom("a"));
  const Body of = body(yes(atom("b")));
  Rule rule;
  rule.init(&head, &of);
  const CLAUSET original(rule, {{2, 1, 0}});
  CLAUSET copy = original;
  CLAUSET assigned(TERMT::integer(1), {});
  assigned = original;
  std::get<Rule>(copy.payload()).body()[0].atom = atom("changed");
  std::get<Rule>(assigned.payload()).body()[0].is_negated = true;
  EXPECT_EQ(list_of(std::vector{original, copy, assigned}), "a :- b., a :- changed., a :- not b.");
  copy = std::move(assigned);
  EXPECT_EQ(text_of(copy), "a :- not b.");
  EXPECT_EQ(copy.source().location.line, 2U);
}

TEST_F(ClauseTest, KindsHaveTheirCodes) {
  std::uint32_t code = 0;
  for (const CLAUSET::Payload& payload : std::initializer_list<CLAUSET::Payload>{
           Rule(), num(1), Constraint(body()), WeakConstraint(body(), {num(2), num(1)})})
    EXPECT_EQ(CLAUSET(payload, {}).kind(), CLAUSET::Kind{code++});
}

}    // namespace
}    // namespace zarel
