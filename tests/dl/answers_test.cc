// answers_test.cc - answer sets of facts, rules, negation and constraints, and spellings on their
// way to clingo and back.
#include <algorithm>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kAnswers[] = {
    {"empty_program", "", "{}\n"},
    {"disjunction_with_bar_and_semicolon", "a | b. c ; d :- a.", "{a, c}\n{a, d}\n{b}\n"},
    {"v_as_a_name", "p(v). v(X) :- p(X). a v v(1).", "{p(v), v(v), a}\n{p(v), v(v), v(1)}\n"},
    {"default_negation", "a :- not b. b :- non a.", "{a}\n{b}\n"},
    {"strong_negation", "-p(a). q(X) :- -p(X). ~r.", "{-r, -p(a), q(a)}\n"},
    {"contradiction", "p(a). -p(a).", ""},
    {"constraint", "a v b. :- a.", "{b}\n"},
    {"arrow_both_ways", "a. b <- a. c:-b.", "{a, b, c}\n"},
    {"arities_are_different_predicates", "p(a). p(a,b). q(X) :- p(X).", "{p(a), p(a,b), q(a)}\n"},
    {"anonymous_variables_under_both_negations",
     "n(a). n(b). -p(a,f(1)). -p(c,c). q(X) :- n(X), not -p(X,f(_)). r :- not -p(_,_). "
     "s(X) :- -p(X,X), not -p(b,_). c(N) :- N = #count{X:n(X), not -p(X,_)}.",
     "{n(a), n(b), -p(a,f(1)), -p(c,c), q(b), s(c), c(1)}\n"},
    {"anonymous_variables", "p(a,1). p(a,2). q(X) :- p(X,_). r :- not p(b,_).",
     "{q(a), r, p(a,1), p(a,2)}\n"},
    {"function_terms", "p(f(a,g(1))). q(X,Y) :- p(f(X,Y)).", "{p(f(a,g(1))), q(a,g(1))}\n"},
    {"function_builtins_construct_and_take_apart",
     "q(a). p(h(c)). p(F) :- q(X), #function_builtin(F,f,G,X), #function_builtin(G,g,X). "
     "r(X,Y) :- p(F), #function_builtin(F,f,G,Y), #function_builtin(G,g,X).",
     "{q(a), p(h(c)), p(f(g(a),a)), r(a,a)}\n"},
    {"comparisons",
     "n(1). n(2). n(3). l(X) :- n(X), X < 2. g(X) :- n(X), X >= 3. e(X) :- n(X), X == 2. u(X) :- "
     "n(X), X <> 2, X != 1. lp(X) :- n(X), <(X,2). gp(X) :- n(X), >=(X,3). ep(X) :- n(X), "
     "==(X,2). up(X) :- n(X), <>(X,2), !=(X,1). d(X) :- n(X), not X == 1.",
     "{n(1), n(2), n(3), l(1), g(3), e(2), u(3), lp(1), gp(3), ep(2), up(3), d(2), d(3)}\n"},
    {"equality_binds", "p(X) :- X == 3. q(Y) :- p(X), Y == X. r(X) :- X = a.",
     "{p(3), q(3), r(a)}\n"},
    {"comments_and_line_ends", "a. b. % c.\n%d.\r\ne.\r\n", "{a, b, e}\n"},
    {"leading_zeros", "p(007).", "{p(7)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Answers, Programs, testing::ValuesIn(kAnswers), case_name);

constexpr Case kNames[] = {
    {"word_not", "p(not). q(X) :- p(X). not(a). r :- not not(b), not(a). p(not(a)).",
     "{p(not), q(not), not(a), r, p(not(a)), q(not(a))}\n"},
    {"capitals", "Node(a). q(X) :- Node(X). -Node(b). p(F(a)).",
     "{Node(a), q(a), -Node(b), p(F(a))}\n"},
    {"capital_predicate_alone", "N. -M. q :- N, not K, 1 > #count{X:P, s(X)}.", "{N, -M, q}\n"},
    {"numbered_predicate", "#12t(a). q(X) :- #12t(X).", "{#12t(a), q(a)}\n"},
    {"underscores_inside", "a_2(p_,x__n). h1(a). n_q(b).", "{a_2(p_,x__n), h1(a), n_q(b)}\n"},
    {"strings",
     "p(\"a b, {c}\", \"x\"). p(\"_nq _t _w(\"). p(\"50% of\"). p(\"\"). p(\"a\"). q :- p(a).",
     "{p(\"a b, {c}\",\"x\"), p(\"_nq _t _w(\"), p(\"50% of\"), p(\"\"), p(\"a\")}\n"},
    {"string_with_backslashes", "p(\"a\\\",\"\\n\\\\\").", "{p(\"a\\\",\"\\n\\\\\")}\n"},
    {"string_with_other_bytes", "p(\"\xc3\xa9\t\r\x01\xff\").", "{p(\"\xc3\xa9\t\r\x01\xff\")}\n"},
    {"names_like_helpers_of_ours", "h(a). overflow(1). w(1,1,1). q(1). p :- q(1).",
     "{p, h(a), overflow(1), w(1,1,1), q(1)}\n"},
    {"line_ends_in_strings", "p(\"a\nb\\nc\").\nq(X) :- p(X).\n",
     "{p(\"a\nb\\nc\"), q(\"a\nb\\nc\")}\n"},
};
INSTANTIATE_TEST_SUITE_P(Names, Programs, testing::ValuesIn(kNames), case_name);

TEST(Answers, AreTheSameOnEveryRun) {
  const std::string program = "p(X) v q(X) :- n(X). n(0). n(1). n(2). n(3). n(4). n(5).";
  const Outcome first = run(program);
  EXPECT_EQ(run(program), first);
  EXPECT_EQ(std::ranges::count(first.output, '\n'), 64);
}

TEST(Answers, OfALongBodyAreThoseOfTheWholeBody) {
  const std::string body = numbered(1000, "p(XN,XM), ");
  EXPECT_EQ(run(numbered(1000, "p(N,M).\n") + "q(X0,X1000) :- " + body + "p(0,1).\nr :- " + body +
                    "not p(X7,X3). s :- " + body + "p(X7,X3).\n",
                "-filter=q,r,s"),
            (Outcome{"{r, q(0,1000)}\n", "", 0}));
}

// Each step has three choices, so a piece that did not forget what it passed would not end.
TEST(Answers, OfALongBodyDoNotMultiplyWhatNobodyNeeds) {
  const std::string body = numbered(20'000, "p(XN,XM), ");
  const Outcome outcome = run("p(0,1). p(1,0). p(1,1). q(X0) :- " + body + "p(0,1).", "-filter=q");
  EXPECT_EQ(sorted(outcome.output), sorted("{q(0), q(1)}\n"));
}

}    // namespace
}    // namespace dl_test
