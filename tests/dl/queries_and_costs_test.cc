// queries_and_costs_test.cc - brave and cautious queries; weak constraints, best models, costs.
#include <algorithm>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kQueries[] = {
    {"ground_true", "a. a?", "true\n"},
    {"ground_false", "a v b. a?", "false\n"},
    {"ground_brave", "a v b. a?", "true\n", "-brave"},
    {"variables_are_cautious_by_default", "p(1). p(2) v p(3). p(X)?", "1\n"},
    {"variables_brave", "p(1). p(2) v p(3). p(X)?", "1\n2\n3\n", "-FB"},
    {"explicitly_cautious", "p(1). p(2) v p(3). p(X)?", "1\n", "-FC"},
    {"several_variables", "p(a,1). p(b,2). p(X,Y), not p(Y,X)?", "a, 1\nb, 2\n"},
    {"three_variables", "p(c,1,b). p(a,2,b). p(a,2,a). p(a,10,c). p(X,Y,Z)?",
     "a, 2, a\na, 2, b\na, 10, c\nc, 1, b\n"},
    {"anonymous_variables_give_no_value", "p(a,1). p(a,2). p(X,_)?", "a\n"},
    {"no_answers", "p(a). p(X), X == b?", ""},
    {"optimal_answer_sets_only", "p(1) v p(2). :~ p(1). [1:1] p(X)?", "2\n"},
    {"optimal_answer_sets_only_brave", "p(1) v p(2) v p(3). :~ p(1). [1:1] p(X)?", "2\n3\n",
     "-brave"},
    {"not_in_front", "a. not b, a?", "true\n"},
    {"strings_and_terms", "p(\"a, b\",f(x,\"(\")). p(X,Y)?", "\"a, b\", f(x,\"(\")\n"},
    {"rows_in_the_order_of_the_language",
     "p(g(1,2)). p(f(10)). p(f(9)). p(f(\"a\")). p(\"a b\"). p(\"a\"). p(a). p(2). p(10). "
     "p(f(1,2)). "
     "p(f(g(1))). p(e). p(f(\"),(\\\")). p(F(1)). p(X)?",
     "2\n10\na\ne\n\"a\"\n\"a b\"\nF(1)\nf(9)\nf(10)\nf(\"),(\\\")\nf(\"a\")\nf(g(1))\nf(1,2)\n"
     "g(1,2)\n"},
    {"anonymous_operands_give_no_value", "p(3). p(X), X = _ + 1?", "3\n"},
};
INSTANTIATE_TEST_SUITE_P(Queries, OrderedPrograms, testing::ValuesIn(kQueries), case_name);

TEST(Queries, OverNoAnswerSetAreFalseWithANote) {
  EXPECT_EQ(run("a.\n:- a.\na?\n"),
            (Outcome{"false\n", "p:3: note: the program has no answer set\n", 0}));
}

constexpr Case kCosts[] = {
    {"weights", "a v b. :~ a. [2:1] :~ b. [3:1]",
     "Best model: {a}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"default_weight_and_level", "a. :~ a. ", "Best model: {a}\nCost ([Weight:Level]): <[1:1]>\n"},
    {"leading_zeros", "a. :~ a. [007:02] :~ a. [00:02]",
     "Best model: {a}\nCost ([Weight:Level]): <[7:2]>\n"},
    {"weight_or_level_is_missing", "a. :~ a. [7:] :~ a. [:4]",
     "Best model: {a}\nCost ([Weight:Level]): <[1:4]>\n\"[7:1]\"\n"},
    {"once_for_each_instance", "p(a,1). p(b,1). p(b,2). :~ p(X,Y). [Y:2] :~ p(X,_). [1:1]",
     "Best model: {p(a,1), p(b,1), p(b,2)}\nCost ([Weight:Level]): <[4:2]>\n\"[3:1]\"\n"},
    {"equal_weak_constraints_both_cost", "a. :~ a. [1:1] :~ a. [1:1]",
     "Best model: {a}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"local_variables_make_no_instances", "p(1). p(2). :~ 1 <= #count{X:p(X)}. [1:1]",
     "Best model: {p(1), p(2)}\nCost ([Weight:Level]): <[1:1]>\n"},
    {"higher_levels_first", "a v b. :~ a. [1:2] :~ b. [9:1]",
     "Best model: {b}\nCost ([Weight:Level]): <[0:2]>\n\"[9:1]\"\n"},
    {"levels_without_instances_are_shown", "a. :~ b. [1:3] :~ a. [5:2] :~ b. [1:1]",
     "Best model: {a}\nCost ([Weight:Level]): <[0:3]>\n\"[5:2]\"\n\"[0:1]\"\n"},
    // clasp 3.3.5 finds one of its answer sets for ever when it improves all levels.
    {"levels_from_below",
     "n(1). n(2). n(3). m(1,a). m(2,a). m(2,b).\n"
     "p(X) v q(X) v t(X) :- n(X).\n"
     ":~ n(X), m(X,Y), #count{V : p(V), V != X} >= 1, n(Y), m(X,_). [X:1]\n"
     ":~ n(X), m(X,Y), n(Y). [3:1]\n"
     ":~ n(X), not q(Y), Y != X, n(Y). [2:2]\n"
     ":~ n(X), q(X), m(X,_). [3:1]\n"
     ":~ n(X), not t(X), Y != X, n(Y). [1:1]\n"
     ":~ n(X), p(X), p(X). [2:0]\n"
     ":~ n(X), not t(X). [X:2]\n"
     ":~ n(X), not q(Y), n(Y), m(X,_). [3:0]\n",
     "Best model: {m(1,a), m(2,a), m(2,b), n(1), n(2), n(3), q(1), q(2), q(3)}\n"
     "Cost ([Weight:Level]): <[6:2]>\n\"[15:1]\"\n\"[0:0]\"\n"},
    {"variable_levels", "p(a,1,2). p(b,2,3). p(c,4,3). :~ p(X,W,L). [W:L]",
     "Best model: {p(a,1,2), p(b,2,3), p(c,4,3)}\nCost ([Weight:Level]): <[6:3]>\n\"[1:2]\"\n"},
    {"variable_level_with_no_instance", "a. :~ p(L). [2:L]",
     "Best model: {a}\nCost ([Weight:Level]): <[0:1]>\n"},
    {"beyond_32_bits", "p(1). p(2). p(3). :~ p(X). [2147483647:1]",
     "Best model: {p(1), p(2), p(3)}\nCost ([Weight:Level]): <[6442450941:1]>\n"},
    {"no_answer_set", "a. :- a. :~ a.", ""},
};
INSTANTIATE_TEST_SUITE_P(Costs, OrderedPrograms, testing::ValuesIn(kCosts), case_name);

TEST(Costs, ComeWithEveryOptimalAnswerSetUpToTheLimit) {
  const std::string all = run("a v b v c. :~ c. [1:1]").output;
  EXPECT_EQ(sorted(all), sorted("Best model: {a}\nCost ([Weight:Level]): <[0:1]>\n"
                                "Best model: {b}\nCost ([Weight:Level]): <[0:1]>\n"));
  const Outcome first = run("a v b v c. :~ c. [1:1]", "-n=1");
  EXPECT_EQ(first, (Outcome{all.substr(0, all.size() / 2), "", 0}));
}

}    // namespace
}    // namespace dl_test
