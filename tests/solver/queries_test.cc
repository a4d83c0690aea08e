// queries_test.cc - queries, brave and cautious.
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"ground_true", "a. a?", "true\n"},
    {"ground_false", "a v b. a?", "false\n"},
    {"ground_brave", "a v b. a?", "true\n", "-brave"},
    {"variables_are_cautious_by_default", "p(1). p(2) v p(3). p(X)?", "1\n"},
    {"variables_brave", "p(1). p(2) v p(3). p(X)?", "1\n2\n3\n", "-FB"},
    {"explicitly_cautious", "p(1). p(2) v p(3). p(X)?", "1\n", "-FC"},
    {"several_variables", "p(a,1). p(b,2). p(X,Y), not p(Y,X)?", "a, 1\nb, 2\n"},
    {"anonymous_variables_give_no_value", "p(a,1). p(a,2). p(X,_)?", "a\n"},
    {"no_answers", "p(a). p(X), X == b?", ""},
    {"optimal_answer_sets_only", "p(1) v p(2). :~ p(1). [1:1] p(X)?", "2\n"},
    {"optimal_answer_sets_only_brave", "p(1) v p(2) v p(3). :~ p(1). [1:1] p(X)?", "2\n3\n",
     "-brave"},
    {"negated_query", "a. not b, a?", "true\n"},
    {"strings_and_terms", "p(\"a, b\",f(x,\"(\")). p(X,Y)?", "\"a, b\", f(x,\"(\")\n"},
};
INSTANTIATE_TEST_SUITE_P(Queries, Programs, testing::ValuesIn(kCases), case_name);

TEST(Queries, PrintIntegersByValueAndBeforeNames) {
  const Outcome outcome = run("p(10). p(9). p(b). p(a). p(100). p(X)?");
  EXPECT_EQ(outcome.out, "9\n10\n100\na\nb\n");
}

TEST(Queries, OverNoAnswerSetAreFalseWithANote) {
  const Outcome outcome = run("a.\n:- a.\na?\n");
  EXPECT_EQ(outcome.out, "false\n");
  EXPECT_EQ(outcome.err, "p:3: note: the program has no answer set\n");
  EXPECT_EQ(outcome.status, 0);
}

constexpr ErrorCase kErrors[] = {
    {"second_query", "a. a?\nb?", "p:2: a second query; the first is in p, line 1"},
    {"unsafe_query", "a.\nnot p(X)?",
     "p:2: unsafe rule: no positive literal of the body binds the variable X"},
};
INSTANTIATE_TEST_SUITE_P(QueryErrors, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

}    // namespace
}    // namespace dl_test
