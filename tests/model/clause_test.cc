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
  const CLAUSET original = clause("@s.\na :- b.");
  CLAUSET copy = original;
  CLAUSET assigned(TERMT::integer(1), {});
  assigned = original;
  std::get<Rule>(copy.payload()).body()[0].atom = atom("changed");
  std::get<Rule>(assigned.payload()).body()[0].is_negated = true;
  EXPECT_EQ(list_of(std::vector{original, copy, assigned}),
            "a(s) :- b(s)., a(s) :- changed., a(s) :- not b(s).");
  copy = std::move(assigned);
  EXPECT_EQ(text_of(copy), "a(s) :- not b(s).");
  EXPECT_EQ(copy.source().location.line, 2U);
}

TEST_F(ClauseTest, KindsHaveTheirCodes) {
  std::uint32_t code = 0;
  for (const std::string_view text : {"a :- b.", "#maxint = 1.", ":- b.", ":~ b. [2:1]"})
    EXPECT_EQ(clause(text).kind(), CLAUSET::Kind{code++}) << text;
}

TEST_F(ClauseTest, OfANewRunAreNoneOfTheOneBefore) {
  clause("#namespace(n,\"u\") -p(X,n:a). q? #include lib");
  GLOBALS().add(names().intern("q"));
  nclause() = 1;
  FTermTable().enter(0, {names().intern("f"), {}});
  current_run().options.checks_arity = true;
  begin({});
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
