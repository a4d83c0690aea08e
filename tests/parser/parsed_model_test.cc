// parsed_model_test.cc - what a text becomes in the tables of a run, where that is told best by a text.

#include <gtest/gtest.h>
#include <sstream>

#include "model/atom_order.h"
#include "model/function_term_table.h"
#include "model/names.h"
#include "model/namespaces.h"
#include "model/printer.h"
#include "model/program.h"
#include "parser/parse.h"
#include "parser/program_builder.h"
#include "support/fresh_run.h"

namespace zarel {
namespace {

class ParsedModel : public testing::Test {
 protected:
  // Into a run of its own. The atoms are not encoded: p(X) is p(default,X).
  void read(std::string_view program) {
    run_.begin({.OptionHigherOrder = false});
    std::ostringstream ignored;
    ProgramBuilder builder;
    parse_text(program, current_run().files.add(""), builder, ignored);
    EXPECT_EQ(current_run().findings.parser_errors, 0);
  }

  // Expects this sign of the first literal of each constraint compared with its second one, and the
  // opposite the other way round.
  void expect_signs(int sign, std::string_view program) {
    read(program);
    const auto sign_of = [](int difference) { return (difference > 0) - (difference < 0); };
    for (const CLAUSET& of : CLAUSES()) {
      const auto literals = std::get<Constraint>(of.payload()).body();
      const ATOMT &a = literals[0].atom, &b = literals[1].atom;
      EXPECT_EQ(sign_of(compare(a, b)), sign) << of;
      EXPECT_EQ(sign_of(compare(b, a)), -sign) << of;
      EXPECT_TRUE(equal(a, a)) << of;
    }
  }

  FreshRun run_;
};

// Predicates and names are numbered as they come.
TEST_F(ParsedModel, GoesByPredicateLengthAndTermsAndThroughAggregatesToTheEnd) {
  expect_signs(-1, R"(
    :- p(9), q.               :- p(9), p(1,1).        :- p, p(1).         :- X < 3, X > 2.
    :- p(X,Y), p(Y,X).        :- p(X,Y), p(X,0).      :- p(1,2), p(1,3).
    :- 1 < #count{X:p}, 2 < #count{X:p}.              :- X < #count{X:p}, 0 < #count{X:p}.
    :- 1 < #count{X:p}, 1 <= #count{X:p}.             :- #count{X:p} < 1, #count{X:p} < 2.
    :- 1 < #count{X:p}, 1 < #count{Y:p}.              :- 1 < #count{X:p}, 1 < #sum{X:p}.
    :- 1 < #count{X:p}, 1 < #count{X:q}.              :- 1 < #count{X:p}, 1 < #count{X:not p}.
    :- 1 < #count{X:p}, 1 < #count{X:p, p}.)");
  expect_signs(0, R"(
    :- p(X,1), p(X,1).
    :- 1 < #count{X:p, not p, q, not q}, 1 < #count{X:not q, q, not p, p}.)");
}

TEST_F(ParsedModel, KeepsBoundsQueryAndFrameSpacesFromFileToFile) {
  run_.begin();
  std::ostringstream ignored;
  ProgramBuilder builder;
  const auto read_file = [&](std::string_view text) {
    parse_text(text, current_run().files.add(""), builder, ignored);
  };
  const IntegerBounds& bounds = builder.terms().bounds();
  const FrameSpaces& spaces = builder.frame_spaces();
  EXPECT_EQ(builder.statements().LocalQuery(), nullptr);
  EXPECT_EQ(bounds.MaxInteger(), -1);
  EXPECT_EQ(bounds.MaxIntegerSeen(), -1);
  read_file("@s. p(7)@t. q?");
  EXPECT_EQ(names().spelling(spaces.currentDefaultNs()), "s");
  read_file("#maxint = 9.");
  EXPECT_EQ(bounds.MaxInteger(), 9);
  EXPECT_EQ(bounds.MaxIntegerSeen(), 7);
  ASSERT_NE(builder.statements().LocalQuery(), nullptr);
  EXPECT_EQ(builder.statements().LocalQuery()->size(), 1U);
  EXPECT_EQ(names().spelling(spaces.currentDefaultNs()), "default");
  EXPECT_EQ(names().spelling(spaces.defaultFrameSpace()), "default");
  EXPECT_EQ(spaces.fspace().names().size(), 2U);
}

TEST_F(ParsedModel, LeavesNothingToTheNextRun) {
  read("#namespace(n,\"u\") -p(X,n:a). q? #include lib");
  GLOBALS().add(names().intern("q"));
  nclause() = 1;
  FTermTable().enter(0, {names().intern("f"), {}});
  current_run().options.OptionArityCheck = true;
  run_.begin();
  EXPECT_TRUE(CLAUSES().empty() && QUERIES().empty() && Includes().empty());
  EXPECT_TRUE(GLOBALS().names().empty() && Atom_Globals().names().empty());
  EXPECT_TRUE(NegativeAtoms().empty() && vectorName().is_empty() && !prefix_was_used());
  EXPECT_EQ(nclause(), 0);
  EXPECT_EQ(FTermTable().count(), 0U);
  EXPECT_FALSE(OptionArityCheck());
  EXPECT_EQ(Variables().size(), 0U);
  EXPECT_FALSE(TERMT::Constants().find("a"));
  EXPECT_EQ(newTERMT("Y"), TERMT::variable(0));
  EXPECT_EQ(ATOMT("q", {}, PREDICATE_NAMETS::TYPE::kUnknown).predicate(), kBuiltinCount);
}

}    // namespace
}    // namespace zarel
