// arithmetic_test.cc - integers: ranges, sums, products, successors; and aggregates with all their
// guards.
#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kArithmetic[] = {
    {"int_ranges_up_to_the_bound",
     "p(X) :- #int(X). #maxint = 3. r(X) :- #int(X), >=(X,1), <=(X,2).",
     "{p(0), p(1), p(2), p(3), r(1), r(2)}\n"},
    {"int_tests", "q(2). q(7). q(a). p(X) :- q(X), #int(X). r(X) :- q(X), not #int(X).",
     "{q(2), q(7), q(a), p(2), r(7), r(a)}\n", "-N=5"},
    {"succ_both_ways",
     "#maxint = 4. q(2). q(4). p(X) :- q(Y), #succ(X,Y). r(Y) :- q(X), #succ(X,Y).",
     "{q(2), q(4), p(1), p(3), r(3)}\n"},
    {"nothing_bound", "#maxint = 2. p(X,Y) :- #succ(X,Y). q(X,Y) :- +(X,Y,2).",
     "{p(0,1), p(1,2), q(0,2), q(1,1), q(2,0)}\n"},
    {"sum_of_all_forms",
     "q(1). q(5). p(Z) :- q(X), +(X,3,Z). r(Z) :- q(X), Z = X + 3. s(Y) :- q(Z), Z = 3 + Y. "
     "t(X) :- q(Z), +(X,1,Z).",
     "{q(1), q(5), p(4), p(8), r(4), r(8), s(2), t(0), t(4)}\n"},
    {"product_of_all_forms",
     "q(12). q(5). q(0). p(Z) :- q(X), Z = X * 4. r(Z) :- q(X), *(4,X,Z). s(Y) :- q(Z), Z = 4 * Y.",
     "{q(12), q(5), q(0), p(48), p(20), p(0), r(48), r(20), r(0), s(3), s(0)}\n"},
    {"sum_beyond_the_bound_does_not_hold",
     "#maxint = 5. q(3). q(2). p(Z) :- q(X), q(Y), Z = X + Y. ", "{q(3), q(2), p(5), p(4)}\n"},
    {"sum_tested", "t(1,2,3). t(1,2,4). p :- t(X,Y,Z), Z = X + Y. q(Z) :- t(X,Y,Z), Z = X + Y.",
     "{p, t(1,2,3), t(1,2,4), q(3)}\n"},
    {"product_with_zero_is_open_up_to_the_bound",
     "#maxint = 2. q(0). q(1). p(X,Y) :- q(X), *(X,Y,0).",
     "{q(0), q(1), p(1,0), p(0,0), p(0,1), p(0,2)}\n"},
    {"product_beyond_the_bound_does_not_hold",
     "#maxint = 100000. q(100000). p(Z) :- q(X), Z = X * X. s(Z) :- q(X), Z = X * 1.",
     "{q(100000), s(100000)}\n"},
    {"chained_assignments", "q(2). p(C) :- C = B * B, B = A + 1, q(A).", "{q(2), p(9)}\n"},
    {"arithmetic_over_texts_does_not_hold", "q(a). q(\"b\"). q(1). p(Z) :- q(X), Z = X + 1.",
     "{q(a), q(\"b\"), q(1), p(2)}\n"},
    {"bound_as_a_term", "#maxint = 9. p(#maxint). q(X) :- p(X), X == #maxint.", "{p(9), q(9)}\n"},
    {"option_before_directive", "#maxint = 9. p(#maxint).", "{p(4)}\n", "-N=4"},
    {"results_up_to_the_greatest_integer",
     "q(2147483646). p(Z) :- q(X), Z = X + 1. r(Z) :- q(X), Z = X * 1.",
     "{q(2147483646), p(2147483647), r(2147483646)}\n"},
    {"guards_before_the_sum_prevent_overflow",
     "q(2147483647). q(1). p(Z) :- q(X), X < 5, Z = X + X.", "{q(2147483647), q(1), p(2)}\n"},
    {"sum_aggregate_up_to_the_greatest_integer", "q(2147483646). q(1). p(S) :- S = #sum{X:q(X)}.",
     "{q(2147483646), q(1), p(2147483647)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Arithmetic, Programs, testing::ValuesIn(kArithmetic), case_name);

constexpr Case kAggregates[] = {
    {"left_guards",
     "q(1). q(5). l1 :- 1 < #count{X:q(X)}. l2 :- 2 < #count{X:q(X)}. le2 :- 2 <= #count{X:q(X)}. "
     "le3 :- 3 <= #count{X:q(X)}. g3 :- 3 > #count{X:q(X)}. g2 :- 2 > #count{X:q(X)}. ge2 :- 2 >= "
     "#count{X:q(X)}. ge1 :- 1 >= #count{X:q(X)}. e2 :- 2 = #count{X:q(X)}. e1 :- 1 = "
     "#count{X:q(X)}.",
     "{l1, le2, g3, ge2, e2, q(1), q(5)}\n"},
    {"right_guards",
     "q(1). q(5). l3 :- #count{X:q(X)} < 3. l2 :- #count{X:q(X)} < 2. ge6 :- #sum{X:q(X)} >= 6. "
     "ge7 :- #sum{X:q(X)} >= 7. g5 :- #sum{X:q(X)} > 5. g6 :- #sum{X:q(X)} > 6. e(N) :- "
     "#sum{X:q(X)} = N.",
     "{l3, ge6, g5, q(1), q(5), e(6)}\n"},
    {"two_guards",
     "q(1). q(5). a :- 1 < #count{X:q(X)} <= 2. b :- 2 < #count{X:q(X)} <= 3. c :- 0 <= "
     "#count{X:q(X)} < 2.",
     "{a, q(1), q(5)}\n"},
    {"negated", "q(1). a :- not 2 <= #count{X:q(X)}. b :- not 1 <= #count{X:q(X)}.", "{a, q(1)}\n"},
    {"strongly_negated_atom_behind_the_colon",
     "-q(1). ~r(1,2). a :- 1 = #count{X:-q(X)}. b :- 2 = #sum{Y,X:~r(X,Y), -q(X)}.",
     "{a, b, -q(1), -r(1,2)}\n"},
    {"sum_counts_each_tuple",
     "w(a,2). w(b,2). s(N) :- N = #sum{W,X:w(X,W)}. t(N) :- N = #sum{W:w(_,W)}.",
     "{w(a,2), w(b,2), s(4), t(2)}\n"},
    {"global_variables", "g(a). g(b). m(a,1). m(a,2). n(X,N) :- g(X), N = #count{Y:m(X,Y)}.",
     "{g(a), g(b), m(a,1), m(a,2), n(b,0), n(a,2)}\n"},
    {"local_variables_of_two_aggregates",
     "p(1). p(2). q(3). a :- 2 = #count{X:p(X)}, 1 = #count{X:q(X)}.", "{a, p(1), p(2), q(3)}\n"},
    {"several_literals_inside",
     "p(1). p(2). q(2). r(3). a(N) :- N = #count{X:p(X), not q(X), X < 5}.",
     "{p(1), p(2), q(2), r(3), a(1)}\n"},
    {"min_and_max_bind", "p(3). p(7). a(N) :- N = #min{X:p(X)}. b(N) :- N = #max{X:p(X)}.",
     "{p(3), p(7), a(3), b(7)}\n"},
    {"extrema_of_nothing",
     "p(1) :- q. z v q. a :- 0 <= #min{X:p(X)}. b :- #max{X:p(X)} <= 9. c(N) :- N = #min{X:p(X)}. "
     "d(N) :- N = #max{X:p(X)}. e :- 9 > #max{X:p(X)}. f :- not 0 <= #min{X:p(X)}.",
     "{q, a, e, b, p(1), c(1), d(1)}\n{z, f}\n"},
    {"average",
     "p(1). p(2). p(6). a :- 3 = #avg{X:p(X)}. b :- 3 < #avg{X:p(X)}. c :- 2 < #avg{X:p(X)} <= 3. "
     "d :- 3 >= #avg{X:q(X)}.",
     "{a, c, p(1), p(2), p(6)}\n"},
    {"arithmetic_inside", "p(1). p(2). a(N) :- N = #count{Z:p(X), Z = X + 1, Z > 2}.",
     "{p(1), p(2), a(1)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Aggregates, Programs, testing::ValuesIn(kAggregates), case_name);

}    // namespace
}    // namespace dl_test
