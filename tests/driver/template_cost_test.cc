// template_cost_test.cc - large programs with templates; the tests' time limit is what they guard.

#include <algorithm>

#include "templates_fixture.h"

namespace zarel {
namespace {

constexpr std::string_view kDefinition =
    "#template t{f(1)}(1) { g(X) :- f(X), f(Y), Y > X. t(X) :- f(X), not g(X). }\n";

void expect_lines(const RewrittenProgram& result, int clauses, int legend) {
  EXPECT_EQ(std::count(result.clauses.begin(), result.clauses.end(), '\n'), clauses);
  EXPECT_EQ(std::count(result.legend.begin(), result.legend.end(), '\n'), legend);
  EXPECT_EQ(result.clauses.find("t["), std::string::npos);
}

TEST_F(RewriteTest, ExpandsManyDistinctInvocationsInAManyClauseProgram) {
  const std::string program = joined(
      {kDefinition, numbered(90'000, "fact(N).\n"), numbered(10'000, "r(X) :- t{qN(*)}(X).\n")});
  expect_lines(rewritten({program}, kLinked), 90'000 + 10'000 * 4, 10'000 * 2 + 2);
}

TEST_F(RewriteTest, ReplacesManyInvocationsOfOneSignature) {
  const std::string uses = numbered(100'000, "r(X) :- t{q(*)}(X), t{q(*)}(N).\n");
  for (const RewriteOptions& options : {kPlain, kLinked})
    expect_lines(rewritten({joined({kDefinition, uses})}, options), 100'000 + 3, 2 * 100'000 + 3);
}

TEST_F(RewriteTest, ReplacesManyInvocationsInOneAggregate) {
  const std::string uses = numbered(50'000, ", t{q(*)}(N)");
  expect_lines(rewritten({joined({kDefinition, "r :- 1 < #count{X: t{q(*)}(X)", uses, "}."})}), 4,
               50'000 + 4);
}

}    // namespace
}    // namespace zarel
