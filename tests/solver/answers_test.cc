// answers_test.cc - answer sets of facts, rules, negation and constraints.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"facts", "p(a,1). q. p(b,2).", "{p(a,1), p(b,2), q}\n"},
    {"empty_program", "", "{}\n"},
    {"no_answer_set", "p. :- p.", ""},
    {"disjunction_with_v", "a v b.", "{a}\n{b}\n"},
    {"disjunction_with_bar_and_semicolon", "a | b. c ; d :- a.", "{a, c}\n{a, d}\n{b}\n"},
    {"minimal_disjunction", "a v b. a :- b.", "{a}\n"},
    {"v_as_a_name", "p(v). v(X) :- p(X). a v v(1).", "{p(v), v(v), a}\n{p(v), v(v), v(1)}\n"},
    {"default_negation", "a :- not b. b :- non a.", "{a}\n{b}\n"},
    {"strong_negation", "-p(a). q(X) :- -p(X). ~r.", "{-r, -p(a), q(a)}\n"},
    {"contradiction", "p(a). -p(a).", ""},
    {"constraint", "a v b. :- a.", "{b}\n"},
    {"arrow_both_ways", "a. b <- a. c:-b.", "{a, b, c}\n"},
    {"arities_are_different_predicates", "p(a). p(a,b). q(X) :- p(X).", "{p(a), p(a,b), q(a)}\n"},
    {"anonymous_variables", "p(a,1). p(a,2). q(X) :- p(X,_). r :- not p(b,_).",
     "{q(a), r, p(a,1), p(a,2)}\n"},
    {"function_terms", "p(f(a,g(1))). q(X,Y) :- p(f(X,Y)).", "{p(f(a,g(1))), q(a,g(1))}\n"},
    {"function_builtin_constructs", "p(a,b). q(F) :- p(X,Y), #function_builtin(F,f,X,Y).",
     "{p(a,b), q(f(a,b))}\n"},
    {"function_builtin_takes_apart",
     "p(f(a,b)). p(g(c)). q(X,Y) :- p(F), #function_builtin(F,f,X,Y).",
     "{p(f(a,b)), p(g(c)), q(a,b)}\n"},
    {"function_builtins_nest",
     "q(a). p(F) :- q(X), #function_builtin(F,f,G), #function_builtin(G,g,X). r(X) :- p(F), "
     "#function_builtin(F,f,G), #function_builtin(G,g,X).",
     "{q(a), p(f(g(a))), r(a)}\n"},
    {"comparisons_in_infix_form",
     "n(1). n(2). n(3). l(X) :- n(X), X < 2. g(X) :- n(X), X >= 3. e(X) :- n(X), X == 2. u(X) :- "
     "n(X), X <> 2, X != 1.",
     "{n(1), n(2), n(3), l(1), g(3), e(2), u(3)}\n"},
    {"comparisons_in_prefix_form",
     "n(1). n(2). n(3). l(X) :- n(X), <(X,2). g(X) :- n(X), >=(X,3). e(X) :- n(X), ==(X,2). u(X) "
     ":- n(X), <>(X,2), !=(X,1).",
     "{n(1), n(2), n(3), l(1), g(3), e(2), u(3)}\n"},
    {"negated_comparison", "n(1). n(2). p(X) :- n(X), not X == 1.", "{n(1), n(2), p(2)}\n"},
    {"equality_binds", "p(X) :- X == 3. q(Y) :- p(X), Y == X. r(X) :- X = a.",
     "{p(3), q(3), r(a)}\n"},
    {"comments_and_several_statements_on_a_line", "a. b. % c.\n%d.\ne.", "{a, b, e}\n"},
    {"leading_zeros", "p(007).", "{p(7)}\n"},
    {"carriage_returns", "a.\r\nb.\r\n", "{a, b}\n"},
};
INSTANTIATE_TEST_SUITE_P(Answers, Programs, testing::ValuesIn(kCases), case_name);

TEST(Answers, AreTheSameOnEveryRun) {
  std::string program = "p(X) v q(X) :- n(X).";
  for (int i = 0; i < 6; ++i) program += " n(" + std::to_string(i) + ").";
  const Outcome first = run(program);
  EXPECT_EQ(run(program).out, first.out);
  EXPECT_EQ(std::count(first.out.begin(), first.out.end(), '\n'), 64);
}

TEST(Answers, OfALongBodyAreThoseOfTheWholeBody) {
  std::string program;
  std::string body;
  for (int i = 0; i < 1000; ++i) {
    program += "p(" + std::to_string(i) + "," + std::to_string(i + 1) + ").\n";
    body +=
        (i == 0 ? "p(X0,X1)" : ", p(X" + std::to_string(i) + ",X" + std::to_string(i + 1) + ")");
  }
  program += "q(X0,X1000) :- " + body + ".\n r :- " + body + ", not p(X7,X3). s :- " + body +
             ", p(X7,X3).\n";
  const Outcome outcome = run(program, "-filter=q,r,s");
  EXPECT_EQ(outcome.out, "{r, q(0,1000)}\n");
  EXPECT_EQ(outcome.err, "");
}

// Each step has three choices, so a piece that did not forget what it passed would not end.
TEST(Answers, OfALongBodyDoNotMultiplyWhatNobodyNeeds) {
  std::string body = "p(X0,X1)";
  for (int i = 1; i < 20000; ++i)
    body += ", p(X" + std::to_string(i) + ",X" + std::to_string(i + 1) + ")";
  const Outcome outcome = run("p(0,1). p(1,0). p(1,1). q(X0) :- " + body + ".", "-filter=q");
  EXPECT_EQ(sorted(outcome.out), "{q(0), q(1)}\n");
}

}    // namespace
}    // namespace dl_test
