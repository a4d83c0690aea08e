// names_test.cc - spellings on their way to clingo and back.
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kCases[] = {
    {"constant_not", "p(not). q(X) :- p(X).", "{p(not), q(not)}\n"},
    {"predicate_not", "not(a). p :- not not(b), not(a).", "{not(a), p}\n"},
    {"functor_not", "p(not(a)).", "{p(not(a))}\n"},
    {"capital_predicate", "Node(a). q(X) :- Node(X).", "{Node(a), q(a)}\n"},
    {"strongly_negated_capital_predicate", "-Node(a).", "{-Node(a)}\n"},
    {"capital_predicate_alone", "N. -M. q :- N, not K, 1 > #count{X:P, s(X)}.", "{N, -M, q}\n"},
    {"capital_functor", "p(F(a)).", "{p(F(a))}\n"},
    {"numbered_predicate", "#12t(a). q(X) :- #12t(X).", "{#12t(a), q(a)}\n"},
    {"underscores_inside", "a_2(p_,x__n). h1(a). n_q(b).", "{a_2(p_,x__n), h1(a), n_q(b)}\n"},
    {"string_with_blanks_and_commas", "p(\"a b, {c}\", \"x\").", "{p(\"a b, {c}\",\"x\")}\n"},
    {"string_with_backslashes", "p(\"a\\\",\"\\n\\\\\").", "{p(\"a\\\",\"\\n\\\\\")}\n"},
    {"string_with_words_like_ours", "p(\"_nq _t _w(\").", "{p(\"_nq _t _w(\")}\n"},
    {"string_with_other_bytes", "p(\"\xc3\xa9\t\r\x01\xff\").", "{p(\"\xc3\xa9\t\r\x01\xff\")}\n"},
    {"string_with_a_percent_sign", "p(\"50% of\"). q.", "{q, p(\"50% of\")}\n"},
    {"empty_string", "p(\"\").", "{p(\"\")}\n"},
    {"string_and_constant_differ", "p(\"a\"). q :- p(a).", "{p(\"a\")}\n"},
    {"names_like_helpers_of_ours", "h(a). overflow(1). w(1,1,1). q(1). p :- q(1).",
     "{p, h(a), overflow(1), w(1,1,1), q(1)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Names, Programs, testing::ValuesIn(kCases), case_name);

TEST(Names, StringsKeepTheirLineEnds) {
  const Outcome outcome = run("p(\"a\nb\\nc\").\nq(X) :- p(X).\n");
  EXPECT_EQ(outcome.out, "{p(\"a\nb\\nc\"), q(\"a\nb\\nc\")}\n");
}

TEST(Names, LineEndsInStringsCountAsLines) {
  EXPECT_EQ(run("p(\"a\n\nb\").\nq(X).\n").err,
            "p:4: unsafe rule: no positive literal of the body binds the variable X\n");
}

}    // namespace
}    // namespace dl_test
