// arithmetic_test.cc - integers: ranges, sums, products, successors, and what leaves 32 bits.
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"int_ranges_up_to_the_bound", "p(X) :- #int(X). #maxint = 3.", "{p(0), p(1), p(2), p(3)}\n"},
    {"int_tests", "q(2). q(7). q(a). p(X) :- q(X), #int(X). r(X) :- q(X), not #int(X).",
     "{q(2), q(7), q(a), p(2), r(7), r(a)}\n", "-N=5"},
    {"range_of_the_printed_form", "p(X) :- #int(X), >=(X,1), <=(X,3). #maxint = 10.",
     "{p(1), p(2), p(3)}\n"},
    {"succ_both_ways",
     "#maxint = 4. q(2). q(4). p(X) :- q(Y), #succ(X,Y). r(Y) :- q(X), #succ(X,Y).",
     "{q(2), q(4), p(1), p(3), r(3)}\n"},
    {"succ_of_nothing_bound", "#maxint = 2. p(X,Y) :- #succ(X,Y).", "{p(0,1), p(1,2)}\n"},
    {"sum_in_prefix_form", "q(1). q(2). p(Z) :- q(X), +(X,3,Z).", "{q(1), q(2), p(4), p(5)}\n"},
    {"sum_in_infix_form", "q(1). q(2). p(Z) :- q(X), Z = X + 3.", "{q(1), q(2), p(4), p(5)}\n"},
    {"sum_solved_for_an_operand", "q(5). q(2). p(Y) :- q(Z), Z = 3 + Y. r(X) :- q(Z), +(X,1,Z).",
     "{q(5), q(2), p(2), r(4), r(1)}\n"},
    {"sum_beyond_the_bound_does_not_hold",
     "#maxint = 5. q(3). q(2). p(Z) :- q(X), q(Y), Z = X + Y. ", "{q(3), q(2), p(5), p(4)}\n"},
    {"sum_of_nothing_bound", "#maxint = 2. p(X,Y) :- +(X,Y,2).", "{p(0,2), p(1,1), p(2,0)}\n"},
    {"sum_tested", "t(1,2,3). t(1,2,4). p :- t(X,Y,Z), Z = X + Y. q(Z) :- t(X,Y,Z), Z = X + Y.",
     "{p, t(1,2,3), t(1,2,4), q(3)}\n"},
    {"product", "q(3). q(0). p(Z) :- q(X), Z = X * 4. r(Z) :- q(X), *(4,X,Z).",
     "{q(3), q(0), p(12), p(0), r(12), r(0)}\n"},
    {"product_solved_for_an_operand", "q(12). q(5). p(Y) :- q(Z), Z = 4 * Y.",
     "{q(12), q(5), p(3)}\n"},
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
INSTANTIATE_TEST_SUITE_P(Arithmetic, Programs, testing::ValuesIn(kCases), case_name);

constexpr ErrorCase kErrors[] = {
    {"int_without_a_bound", "q.\np(X) :- #int(X).",
     "p:2: #int needs a bound on integers, #maxint or -N="},
    {"succ_without_a_bound", "q(1). p(X) :- q(Y), #succ(X,Y).",
     "p:1: #succ needs a bound on integers, #maxint or -N="},
    {"bound_term_without_a_bound", "p(#maxint).",
     "p:1: #maxint needs a bound on integers, #maxint or -N="},
    {"open_operands_without_a_bound", "p(X,Y) :- +(X,Y,2).",
     "p:1: the variable X, which no positive literal binds, needs a bound on integers, #maxint or "
     "-N="},
    {"sum_leaves_32_bits", "q(2147483647).\np(Z) :- q(X), Z = X + 1.",
     "p:2: an integer leaves 32 bits; #maxint or -N= bounds it"},
    {"product_leaves_32_bits", "q(65536). p(Z) :- q(X), Z = X * X.",
     "p:1: an integer leaves 32 bits; #maxint or -N= bounds it"},
    {"sum_aggregate_leaves_32_bits", "q(2147483647). q(1).\n\np(S) :- S = #sum{X:q(X)}.",
     "p:3: an integer leaves 32 bits; #maxint or -N= bounds it"},
    {"sum_inside_an_aggregate_leaves_32_bits",
     "q(2147483647). p(N) :- N = #count{Z:q(X), Z = X + 1}.",
     "p:1: an integer leaves 32 bits; #maxint or -N= bounds it"},
    {"possible_sum_leaves_32_bits", "q(2147483647) v r. q(3) v s. p :- 5 < #sum{X:q(X)}.",
     "dl: the values of a #sum, or the weights of weak constraints, leave the 32 bits of clingo"},
    {"overflow_in_some_answer_set_of_a_query", "q(2147483647) v r. p(Z) :- q(X), Z = X + 1.\nr?",
     "p:1: an integer leaves 32 bits; #maxint or -N= bounds it"},
    {"number_too_great", "a.\np(2147483648).", "p:2: number 2147483648 is greater than 2147483647"},
    {"number_far_too_great", "p(99999999999999999999999).",
     "p:1: number 99999999999999999999999 is greater than 2147483647"},
    {"second_bound", "#maxint = 3. #maxint = 4.", "p:1: #maxint is already 3"},
    {"not_before_a_sum", "q(1). p :- q(X), not +(X,1,2).",
     "p:1: \"not\" before + is not supported"},
    {"wrong_number_of_arguments", "p :- q(X), +(X,1).", "p:1: + takes 3 arguments, not 2"},
};
INSTANTIATE_TEST_SUITE_P(ArithmeticErrors, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

}    // namespace
}    // namespace dl_test
