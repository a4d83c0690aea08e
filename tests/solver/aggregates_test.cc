// aggregates_test.cc - aggregates with all their guards.
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"left_less", "q(1). q(5). a :- 1 < #count{X:q(X)}. b :- 2 < #count{X:q(X)}.",
     "{a, q(1), q(5)}\n"},
    {"strongly_negated_atom_behind_the_colon",
     "-q(1). ~r(1,2). a :- 1 = #count{X:-q(X)}. b :- 2 = #sum{Y,X:~r(X,Y), -q(X)}.",
     "{a, b, -q(1), -r(1,2)}\n"},
    {"left_less_equal", "q(1). q(5). a :- 2 <= #count{X:q(X)}. b :- 3 <= #count{X:q(X)}.",
     "{a, q(1), q(5)}\n"},
    {"left_greater", "q(1). q(5). a :- 3 > #count{X:q(X)}. b :- 2 > #count{X:q(X)}.",
     "{a, q(1), q(5)}\n"},
    {"left_greater_equal", "q(1). q(5). a :- 2 >= #count{X:q(X)}. b :- 1 >= #count{X:q(X)}.",
     "{a, q(1), q(5)}\n"},
    {"left_equal", "q(1). q(5). a :- 2 = #count{X:q(X)}. b :- 1 = #count{X:q(X)}.",
     "{a, q(1), q(5)}\n"},
    {"right_less", "q(1). q(5). a :- #count{X:q(X)} < 3. b :- #count{X:q(X)} < 2.",
     "{a, q(1), q(5)}\n"},
    {"right_greater_equal", "q(1). q(5). a :- #sum{X:q(X)} >= 6. b :- #sum{X:q(X)} >= 7.",
     "{a, q(1), q(5)}\n"},
    {"right_greater", "q(1). q(5). a :- #sum{X:q(X)} > 5. b :- #sum{X:q(X)} > 6.",
     "{a, q(1), q(5)}\n"},
    {"right_equal_binds", "q(1). q(5). a(N) :- #sum{X:q(X)} = N.", "{q(1), q(5), a(6)}\n"},
    {"two_guards",
     "q(1). q(5). a :- 1 < #count{X:q(X)} <= 2. b :- 2 < #count{X:q(X)} <= 3. c :- 0 <= "
     "#count{X:q(X)} < 2.",
     "{a, q(1), q(5)}\n"},
    {"negated", "q(1). a :- not 2 <= #count{X:q(X)}. b :- not 1 <= #count{X:q(X)}.", "{a, q(1)}\n"},
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
     "d(N) :- N = "
     "#max{X:p(X)}. e :- 9 > #max{X:p(X)}. f :- not 0 <= #min{X:p(X)}.",
     "{q, a, e, b, p(1), c(1), d(1)}\n{z, f}\n"},
    {"average",
     "p(1). p(2). p(6). a :- 3 = #avg{X:p(X)}. b :- 3 < #avg{X:p(X)}. c :- 2 < #avg{X:p(X)} <= 3.",
     "{a, c, p(1), p(2), p(6)}\n"},
    {"average_of_nothing", "a :- 3 >= #avg{X:p(X)}. b.", "{b}\n"},
    {"arithmetic_inside", "p(1). p(2). a(N) :- N = #count{Z:p(X), Z = X + 1, Z > 2}.",
     "{p(1), p(2), a(1)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Aggregates, Programs, testing::ValuesIn(kCases), case_name);

constexpr ErrorCase kRefused[] = {
    {"times", "p(1).\na :- 1 < #times{X:p(X)}.", "p:2: #times is not supported"},
    {"any", "a :- 1 < #any{X:p(X)}.", "p:1: #any is not supported"},
    {"average_as_a_value", "p(1). a(N) :- N = #avg{X:p(X)}.",
     "p:1: unsafe rule: no positive literal of the body binds the variable N"},
    {"negated_average", "a :- not 1 < #avg{X:p(X)}.", "p:1: \"not\" before #avg is not supported"},
    {"left_guard_missing", "a :- = #count{X:p(X)}.",
     "p:1: an aggregate has a comparison without a guard term"},
    {"right_guard_missing", "a :- b, #count{X:p(X)} <= .",
     "p:1: an aggregate has a comparison without a guard term"},
    {"second_guard_missing", "a :- 1 < #count{X:p(X)} <= , b.",
     "p:1: an aggregate has a comparison without a guard term"},
    {"unsafe_inside", "a :- 1 < #count{X:not p(X)}.",
     "p:1: unsafe rule: no positive literal of the body binds the variable X"},
    {"guard_not_bound", "a :- N < #count{X:p(X)}.",
     "p:1: unsafe rule: no positive literal of the body binds the variable N"},
};
INSTANTIATE_TEST_SUITE_P(RefusedAggregates, FaultyPrograms, testing::ValuesIn(kRefused), case_name);

}    // namespace
}    // namespace dl_test
