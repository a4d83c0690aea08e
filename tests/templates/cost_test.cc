// cost_test.cc - large programs with templates; the tests' time limit is what they guard.

#include <algorithm>

#include "templates_fixture.h"

namespace zarel {
namespace {

constexpr std::string_view kDefinition =
    "#template t{f(1)}(1) { g(X) :- f(X), f(Y), Y > X. t(X) :- f(X), not g(X). }\n";

std::string numbered(std::string_view before, int number, std::string_view behind) {
  return std::string(before).append(std::to_string(number)).append(behind);
}

auto line_count(const std::string& text) {
  return std::count(text.begin(), text.end(), '\n');
}

TEST_F(TemplatesTest, ExpandsManyDistinctInvocationsInAManyClauseProgram) {
  constexpr int kInvocations = 10000;
  constexpr int kFacts = 90000;
  std::string program(kDefinition);
  for (int i = 0; i < kFacts; ++i) program += numbered("fact(", i, ").\n");
  for (int i = 0; i < kInvocations; ++i) program += numbered("r(X) :- t{q", i, "(*)}(X).\n");
  const RewrittenProgram result = rewritten({program}, Templates::kLinked);
  EXPECT_EQ(line_count(result.clauses), kFacts + kInvocations * 4);
  EXPECT_EQ(line_count(result.legend), kInvocations * 2 + 2);
  EXPECT_EQ(result.clauses.find("t["), std::string::npos);
}

TEST_F(TemplatesTest, ReplacesManyInvocationsOfOneSignature) {
  constexpr int kInvocations = 100000;
  for (const Templates templates : {Templates::kPlain, Templates::kLinked}) {
    std::string program(kDefinition);
    for (int i = 0; i < kInvocations; ++i) {
      program += numbered("r(X) :- t{q(*)}(X), t{q(*)}(", i, ").\n");
    }
    const RewrittenProgram result = rewritten({program}, templates);
    EXPECT_EQ(line_count(result.clauses), kInvocations + 3);
    EXPECT_EQ(line_count(result.legend), 2 * kInvocations + 3);
    EXPECT_EQ(result.clauses.find("t["), std::string::npos);
  }
}

TEST_F(TemplatesTest, ReplacesManyInvocationsInOneAggregate) {
  constexpr int kInvocations = 50000;
  std::string program(kDefinition);
  program += "r :- 1 < #count{X: t{q(*)}(X)";
  for (int i = 0; i < kInvocations; ++i) program += numbered(", t{q(*)}(", i, ")");
  const RewrittenProgram result = rewritten({program + "}."});
  EXPECT_EQ(line_count(result.clauses), 4);
  EXPECT_EQ(result.clauses.find("t["), std::string::npos);
}

}    // namespace
}    // namespace zarel
