// questions_test.cc - dl's questions: why, why not, what conflicts, what is paid.
#include "run_dl.h"

namespace dl_test {
namespace {

constexpr std::string_view kPaths =
    "edge(a,b). edge(b,c).\n"
    "node(X) :-    % both\n"
    "   edge(X,_).\n"
    "path(X,Y) :- edge(X,Y).\n"
    "path(X,Z) :- path(X,Y), edge(Y,Z), X != Z, not closed(X,_).\n"
    "closed(d,\"x y\"). closed(e,1). stop(X) :- closed(X,_).\n";

constexpr Case kWhy[] = {
    {"proof_of_the_statements_as_written", kPaths,
     "path(a,c)\n"
     "  by p:5: path(X,Z) :- path(X,Y), edge(Y,Z), X != Z, not closed(X,_).   with X = a, Z = c, Y "
     "= b\n"
     "  path(a,b)\n"
     "    by p:4: path(X,Y) :- edge(X,Y).   with X = a, Y = b\n"
     "    edge(a,b)    [fact, p:1]\n"
     "  edge(b,c)    [fact, p:1]\n"
     "  a!=c\n"
     "  not closed(a,_)\n",
     "'-why=path(a,c)'"},
    {"depth", kPaths,
     "path(a,c)\n"
     "  by p:5: path(X,Z) :- path(X,Y), edge(Y,Z), X != Z, not closed(X,_).   with X = a, Z = c, Y "
     "= b\n"
     "  path(a,b)    ...\n"
     "  edge(b,c)    [fact, p:1]\n"
     "  a!=c\n"
     "  not closed(a,_)\n",
     "'-why=path(a,c)' -depth=1"},
    {"variables_ask_for_the_instances", kPaths,
     "closed(d,\"x y\")    [fact, p:6]\n"
     "node(a)\n"
     "  by p:2: node(X) :- edge(X,_).   with X = a\n"
     "  edge(a,b)    [fact, p:1]\n",
     "'-why=closed(d,X)' -n=1; dl p '-why=node( X ) % one' -depth=2 | head -3"},
    {"ten_instances_and_the_number_of_the_others",
     "p(1,1). p(2,1). p(3,1). p(4,1). p(5,1). p(6,1). p(7,1). p(8,1). p(9,1). p(10,1).\np(11,1). "
     "p(12,1).",
     "p(1,1)    [fact, p:1]\np(2,1)    [fact, p:1]\np(3,1)    [fact, p:1]\np(4,1)    [fact, p:1]\n"
     "p(5,1)    [fact, p:1]\np(6,1)    [fact, p:1]\np(7,1)    [fact, p:1]\np(8,1)    [fact, p:1]\n"
     "p(9,1)    [fact, p:1]\np(10,1)    [fact, p:1]\nand 2 more\np(1,1)    [fact, p:1]\n",
     "'-why=p(_,_)'; dl p '-why=p(X,X)'"},
    {"aggregates_and_arithmetic_with_their_values",
     "w(1). w(2). w(f(3)). v(a). #maxint = 10.\n"
     "s(X) :- v(X), N = #sum{W,X : w(W), not u(W)}, M = N + 1, #succ(M,K), 1 <= #count{W : w(W)} < "
     "9, not 7 < #max{W : w(W), W < 5}, #function_builtin(F,g,K,X), 10 = K * Y.\n",
     "s(a)\n"
     "  by p:2: s(X) :- v(X), N = #sum{W,X : w(W), not u(W)}, M = N + 1, #succ(M,K), 1 <= #count{W "
     ": w(W)} < 9, not 7 < #max{W : w(W), W < 5}, #function_builtin(F,g,K,X), 10 = K * Y.   with X "
     "= a, N = 3, M = 4, K = 5, F = g(5,a), Y = 2\n"
     "  v(a)    [fact, p:1]\n"
     "  3=#sum{W,a : w(W), not u(W)}    [value 3: 1,a; 2,a; f(3),a]\n"
     "    w(1)    [fact, p:1]\n"
     "    w(2)    [fact, p:1]\n"
     "    w(f(3))    [fact, p:1]\n"
     "  4=3+1\n"
     "  #succ(4,5)\n"
     "  1<=#count{W : w(W)}<9    [value 3: 1; 2; f(3)]\n"
     "    w(1)    [fact, p:1]\n"
     "    w(2)    [fact, p:1]\n"
     "    w(f(3))    [fact, p:1]\n"
     "  not 7<#max{W : w(W), W<5}    [value 2: 2 that it does not need]\n"
     "  #function_builtin(g(5,a),g,5,a)\n"
     "  10=5*2\n",
     "'-why=s(a)'"},
    {"by_cases", "a v b. a :- b. b :- a.",
     "b\n"
     "  by p:1: b :- a.\n"
     "  a\n"
     "    by cases: p:1: a v b.\n"
     "    if a:\n"
     "      a    [assumed]\n"
     "    if b:\n"
     "      a\n"
     "        by p:1: a :- b.\n"
     "        b    [assumed]\n",
     "-why=b"},
    {"choice", "t(p). a(X,1) v a(X,2) v a(X,1) :- t(X). :- a(X,2).",
     "a(p,1)\n"
     "  by p:1: a(X,1) v a(X,2) v a(X,1) :- t(X).   with X = p\n"
     "  chosen, instead of a(p,2)\n"
     "  t(p)    [fact, p:1]\n",
     "'-why=a(p,1)'"},
    {"another_answer_set_that_holds_it", "a v -b(1). :~ -b(1). [3:1] :~ a. [2:2]",
     "Answer set 1 does not hold it; one that does, which pays [2:2] instead of [3:1]:\n"
     "a\n"
     "  by p:1: a v -b(1).\n"
     "  chosen, instead of -b(1)\n",
     "-why=a"},
    {"another_answer_set_with_an_instance", "p(1,2) v p(3,3). :~ p(X,X). [1:1]",
     "Answer set 1 does not hold it; one that does, which pays [1:1] instead of nothing:\n"
     "p(3,3)\n"
     "  by p:1: p(1,2) v p(3,3).\n"
     "  chosen, instead of p(1,2)\n",
     "'-why=p(X,X)'"},
    {"no_answer_set_holds_it", kPaths,
     "path(c,a) is not there:\n"
     "  p:4: path(X,Y) :- edge(X,Y).   with X = c, Y = a\n"
     "    FAILS  edge(c,a)\n"
     "  p:5: path(X,Z) :- path(X,Y), edge(Y,Z), X != Z, not closed(X,_).   with X = c, Z = a\n"
     "    FAILS  path(c,Y)\n"
     "    FAILS  edge(Y,a)\n"
     "    holds  c!=a\n"
     "    holds  not closed(c,_)\n"
     "No answer set holds it.\n"
     "path(X,X): no instance is there; -whynot tells why a single one is not\n"
     "No answer set holds it.\n",
     "'-why=path(c,a)'; dl p '-why=path(X,X)'"},
    {"no_answer_set_at_all", "a v b. :- not c.",
     "There is no answer set; -conflict tells why.\nThere are fewer than 2 answer sets.\n",
     "-why=a; dl p -why=a -n=2"},
    {"the_answer_set_of_that_number", "a. b. p(1). p(2) v q. :- q.",
     "p(2)\n  by p:1: p(2) v q.\n  chosen, instead of q\nThere are fewer than 2 answer sets.\n",
     "'-why=p(2)' -n=1; dl p '-why=p(2)' -n=2"},
};
INSTANTIATE_TEST_SUITE_P(Why, OrderedPrograms, testing::ValuesIn(kWhy), case_name);

constexpr Case kWhyNot[] = {
    {"each_rule_with_what_fails", kPaths,
     "path(d,a) is not there:\n"
     "  p:4: path(X,Y) :- edge(X,Y).   with X = d, Y = a\n"
     "    FAILS  edge(d,a)\n"
     "  p:5: path(X,Z) :- path(X,Y), edge(Y,Z), X != Z, not closed(X,_).   with X = d, Z = a\n"
     "    FAILS  path(d,Y)\n"
     "    FAILS  edge(Y,a)\n"
     "    holds  d!=a\n"
     "    FAILS  not closed(d,_)\n"
     "             closed(d,\"x y\")    [fact, p:6]\n",
     "'-whynot=path(d,a)'"},
    {"what_holds_although_it_is_negated",
     "p(1). q(1). q(2). q(3). q(4). q(5) :- p(1). r(X) :- p(X), not q(_). s(X) :- p(X), not q(5).",
     "r(1) is not there:\n"
     "  p:1: r(X) :- p(X), not q(_).   with X = 1\n"
     "    holds  p(1)\n"
     "    FAILS  not q(_)\n"
     "             q(1)    [fact, p:1]\n"
     "             q(2)    [fact, p:1]\n"
     "             q(3)    [fact, p:1]\n"
     "             and others\n"
     "s(1) is not there:\n"
     "  p:1: s(X) :- p(X), not q(5).   with X = 1\n"
     "    holds  p(1)\n"
     "    FAILS  not q(5)\n"
     "             q(5)    [by p:1]\n",
     "'-whynot=r(1)'; dl p '-whynot=s(1)'"},
    {"values_of_aggregates", "p(1). p(2). q(X) :- p(X), 5 <= #sum{Y : p(Y)}.",
     "q(1) is not there:\n"
     "  p:1: q(X) :- p(X), 5 <= #sum{Y : p(Y)}.   with X = 1\n"
     "    holds  p(1)\n"
     "    FAILS  5<=#sum{Y : p(Y)}    [value 3]\n",
     "'-whynot=q(1)'"},
    {"nothing_gives_it", "free(a). -p(b). p(c) v d :- free(_). d.",
     "fre(a): no rule has this head; did you mean free/1?\n"
     "free(b) is not there:\n"
     "  it is no fact, and no rule has this head\n"
     "p(b) is not there:\n"
     "  p:1: p(c) v d :- free(_).\n"
     "    gives other atoms only\n"
     "  -p(b) holds\n",
     "'-whynot=fre(a)'; dl p '-whynot=free(b)'; dl p '-whynot=p(b)'"},
    {"another_answer_set_holds_it", "a v b :- c. c. :~ a. [1:1]",
     "a is not there:\n"
     "  p:1: a v b :- c.\n"
     "    holds  c\n"
     "    the body holds, but the head is true by b\n"
     "Another answer set holds it, which pays [1:1] instead of nothing.\n",
     "-whynot=a"},
    {"what_keeps_it_from_being_chosen", "a v b. :- a, not c.",
     "a is not there:\n"
     "  p:1: a v b.\n"
     "    the body holds, but the head is true by b\n"
     "No answer set holds it.\n"
     "It could hold without:\n"
     "  p:1: :- a, not c.\n"
     "It does not go together with:\n"
     "  p:1\n",
     "-whynot=a"},
    {"an_answer_set_without_it", "a v b. :~ a. [1:1]",
     "Answer set 1 holds it; one that does not, which pays [1:1] instead of nothing:\n"
     "b is not there:\n"
     "  p:1: a v b.\n"
     "    the body holds, but the head is true by a\n",
     "-whynot=b"},
    {"every_answer_set_holds_it", "a v b. c. d :- c.",
     "Every answer set holds it:\nd\n  by p:1: d :- c.\n  c    [fact, p:1]\n", "-whynot=d"},
};
INSTANTIATE_TEST_SUITE_P(WhyNot, OrderedPrograms, testing::ValuesIn(kWhyNot), case_name);

constexpr Case kConflicts[] = {
    {"constraints_by_lines_and_instances",
     "p(1,1). p(2,1). q(X,Y) :- p(X,Y).\n"
     ":- q(X,Z), q(Y,Z), X < Y, not sure(_).\n:- q(9,_).\n",
     "There is no answer set.\n"
     "There is one without:\n"
     "  p:2: :- q(X,Z), q(Y,Z), X < Y, not sure(_).\n"
     "This does not go with the rules:\n"
     "  p:2\n"
     "Of these, it is enough to give up:\n"
     "  p:2   with X = 1, Z = 1, Y = 2\n"
     "This does not go with the rules:\n"
     "  p:2   with X = 1, Z = 1, Y = 2\n",
     "-conflict"},
    {"constraints_that_collide", "a v b. c.\n:- a.\n:- b.\n:- not c.\n",
     "There is no answer set.\nThese do not go together:\n  p:2\n  p:3\n",
     "-conflict | sed -n 's/: :-.*//; /no answer/p; /together/,$p'"},
    {"clashes", "bird(x). flies(X) :- bird(X).\n-flies(X) :- bird(X).",
     "There is no answer set.\n"
     "There is one without:\n"
     "  flies/1 and -flies/1, which exclude each other\n"
     "This does not go with the rules:\n"
     "  flies/1 and -flies/1, which exclude each other\n"
     "Of these, it is enough to give up:\n"
     "  flies(x) and -flies(x), which exclude each other\n"
     "This does not go with the rules:\n"
     "  flies(x) and -flies(x), which exclude each other\n",
     "-conflict"},
    {"a_loop_through_negation", "b.\na :- b, not a.",
     "There is no answer set, with or without the constraints.\n"
     "There is one without:\n"
     "  p:2: a :- b, not a.\n",
     "-conflict"},
    {"no_conflict", "a v b. :- a, b. a, b?", "There is an answer set.\n", "-conflict"},
};
INSTANTIATE_TEST_SUITE_P(Conflicts, OrderedPrograms, testing::ValuesIn(kConflicts), case_name);

constexpr Case kPaid[] = {
    {"what_is_paid_and_what_avoiding_it_costs",
     "a v b. c. d v e.\n:~ a. [3:1]\n:~ b. [5:1]\n:~ c. [1:2]\n:~ d. [2:1]\n:~ e. [2:1]\n:- e, b.",
     "The best answer set pays [1:2] [5:1].\n"
     "pays 1 at level 2: p:4: :~ c. [1:2]\n"
     "  no answer set avoids it\n"
     "pays 3 at level 1: p:2: :~ a. [3:1]\n"
     "  avoided only at [1:2] [7:1]: then 5 for p:3\n"
     "pays 2 at level 1: p:5: :~ d. [2:1]\n"
     "  avoided at the same cost: then 2 for p:6\n",
     "-paid; :"},
    {"equal_instances_together", "p(a,1). p(a,2). q(1). r(1).\n:~ p(X,_), not s(X). [2:1]\n",
     "The best answer set pays [4:1].\n"
     "pays 4 at level 1: p:2: :~ p(X,_), not s(X). [2:1]   with X = a (2 times)\n"
     "  no answer set avoids it\n",
     "-paid"},
    {"no_weak_constraints", "a v b.", "There are no weak constraints.\n", "-paid"},
    {"nothing_is_paid", "a. :~ b. [1:1]", "The best answer set pays nothing.\n", "-paid"},
};
INSTANTIATE_TEST_SUITE_P(Paid, OrderedPrograms, testing::ValuesIn(kPaid), case_name);

constexpr Case kErrors[] = {
    {"no_atom", "a.",
     "dl: \"a. b\" is no atom; one is written p(a), -p(a,X) or p(f(b),_), without a full stop",
     "'-why=a. b'"},
    {"negated_atom", "a.",
     "dl: \"not a\" is no atom; one is written p(a), -p(a,X) or p(f(b),_), without a full stop",
     "'-whynot=not a'"},
    {"unfinished_atom", "a.",
     "dl: \"a(\" is no atom; one is written p(a), -p(a,X) or p(f(b),_), without a full stop",
     "'-why=a('"},
    {"atom_with_variables", "a.",
     "dl: \"a(_)\" has variables; what is not there has to be a single atom", "'-whynot=a(_)'"},
    {"bound_that_is_not_given", "a.", "dl: #maxint stands in the question and is not given",
     "'-why=a(#maxint)'"},
    {"two_questions", "a.", "dl: one question at a time, see dl -help", "-why=a -paid"},
    {"mistakes_of_the_program", "a.\n:- X > 1.",
     "p:2: unsafe rule: no positive literal of the body binds the variable X", "-why=a"},
    {"syntax_errors_of_the_program", "a.\nb", "p:2: syntax error, unexpected end of file", "-paid"},
};
INSTANTIATE_TEST_SUITE_P(Questions, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

// Nothing is said to be none, or best, that was only not found.
TEST(Questions, ThatAreCutSayWhatIsNotKnown) {
  const std::string program = numbered(12, "hole(N). ") + numbered(13, "pigeon(N). ") +
                              "in(P,H) v out(P,H) :- pigeon(P), hole(H).\n"
                              ":- in(P,H), in(Q,H), P < Q. :- pigeon(P), #count{H : in(P,H)} < 1.";
  EXPECT_EQ(run(program, "'-why=in(1,2)' -time=1"),
            (Outcome{"The time was over before answer set 1 was found.\n",
                     "dl: the search was cut after 1 s; the answer is not complete\n", 2}));
}

}    // namespace
}    // namespace dl_test
