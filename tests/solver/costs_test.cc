// costs_test.cc - weak constraints: best models and their costs.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"weights", "a v b. :~ a. [2:1] :~ b. [3:1]",
     "Best model: {a}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"default_weight_and_level", "a. :~ a. ", "Best model: {a}\nCost ([Weight:Level]): <[1:1]>\n"},
    {"weight_without_level", "a. :~ a. [7:]", "Best model: {a}\nCost ([Weight:Level]): <[7:1]>\n"},
    {"level_without_weight", "a. :~ a. [:4]", "Best model: {a}\nCost ([Weight:Level]): <[1:4]>\n"},
    {"nothing_violated", "a. :~ b. [7:2]", "Best model: {a}\nCost ([Weight:Level]): <[0:2]>\n"},
    {"every_optimal_answer_set", "a v b v c. :~ c. [1:1]",
     "Best model: {a}\nBest model: {b}\nCost ([Weight:Level]): <[0:1]>\nCost ([Weight:Level]): "
     "<[0:1]>\n"},
    {"costs_once_for_each_instance", "p(a,1). p(b,1). p(b,2). :~ p(X,Y). [Y:1]",
     "Best model: {p(a,1), p(b,1), p(b,2)}\nCost ([Weight:Level]): <[4:1]>\n"},
    {"anonymous_variables_make_instances", "p(a,1). p(a,2). :~ p(X,_). [1:1]",
     "Best model: {p(a,1), p(a,2)}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"equal_weak_constraints_both_cost", "a. :~ a. [1:1] :~ a. [1:1]",
     "Best model: {a}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"local_variables_make_no_instances", "p(1). p(2). :~ 1 <= #count{X:p(X)}. [1:1]",
     "Best model: {p(1), p(2)}\nCost ([Weight:Level]): <[1:1]>\n"},
    {"higher_levels_first", "a v b. :~ a. [1:2] :~ b. [9:1]",
     "\"[9:1]\"\nBest model: {b}\nCost ([Weight:Level]): <[0:2]>\n"},
    {"levels_without_instances_are_shown", "a. :~ b. [1:3] :~ a. [5:2] :~ b. [1:1]",
     "\"[0:1]\"\n\"[5:2]\"\nBest model: {a}\nCost ([Weight:Level]): <[0:3]>\n"},
    {"variable_levels", "p(a,1,2). p(b,2,3). p(c,4,3). :~ p(X,W,L). [W:L]",
     "\"[1:2]\"\nBest model: {p(a,1,2), p(b,2,3), p(c,4,3)}\nCost ([Weight:Level]): <[6:3]>\n"},
    {"variable_level_with_no_instance", "a. :~ p(L). [2:L]",
     "Best model: {a}\nCost ([Weight:Level]): <[0:1]>\n"},
    {"costs_beyond_32_bits", "p(1). p(2). p(3). :~ p(X). [2147483647:1]",
     "Best model: {p(1), p(2), p(3)}\nCost ([Weight:Level]): <[6442450941:1]>\n"},
    {"no_answer_set", "a. :- a. :~ a.", ""},
};
INSTANTIATE_TEST_SUITE_P(Costs, Programs, testing::ValuesIn(kCases), case_name);

TEST(Costs, FollowTheirModelLineByLine) {
  const Outcome outcome = run("a. :~ a. [1:2] :~ a. [3:1]");
  EXPECT_EQ(outcome.out, "Best model: {a}\nCost ([Weight:Level]): <[1:2]>\n\"[3:1]\"\n");
}

TEST(Costs, ALimitCountsOptimalAnswerSets) {
  const Outcome outcome = run("a v b v c. :~ c. [1:1]", "-n=1");
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 2);
  EXPECT_EQ(outcome.status, 0);
}

constexpr ErrorCase kErrors[] = {
    {"unknown_weight", "a.\n:~ a. [W:1]",
     "p:2: unsafe rule: no positive literal of the body binds the variable W"},
    {"unsafe_body", ":~ not p(X).",
     "p:1: unsafe rule: no positive literal of the body binds the variable X"},
    {"weight_too_great", ":~ a. [2147483648:1]",
     "p:1: number 2147483648 is greater than 2147483647"},
};
INSTANTIATE_TEST_SUITE_P(CostErrors, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

}    // namespace
}    // namespace dl_test
