// errors_test.cc - mistakes in the input: one line with file and line, and nothing on standard
// output.
#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr ErrorCase kErrors[] = {
    {"syntax_error", "a.\nb :- c d.\n", "p:2: syntax error, unexpected name, expecting '.' or ','"},
    {"missing_full_stop", "a", "p:1: syntax error, unexpected end of file"},
    {"late_syntax_error", "a. b. c.\n\n\n)", "p:4: syntax error, unexpected ')'"},
    {"unexpected_character", "a.\np(a)&q.\n", "p:2: unexpected character '&'"},
    {"open_string", "p(\"a).\n", "p:1: string without a closing quote"},
    {"unknown_word", "a :- #foo(X).", "p:1: unknown word #foo"},
    {"disjunction_in_a_body", "a :- b v c.",
     "p:1: syntax error, unexpected v, expecting '.' or ','"},
    {"negation_in_a_head", "not a :- b.", "p:1: syntax error, unexpected :-, expecting '?' or ','"},
    {"aggregate_without_a_guard", "a :- #count{X:p(X)}.", "p:1: syntax error, unexpected '.'"},
    {"unsafe_head", "q(1).\n\np(X) :- q(Y).\n",
     "p:3: unsafe rule: no positive literal of the body binds the variable X"},
    {"unsafe_fact", "p(X).",
     "p:1: unsafe rule: no positive literal of the body binds the variable X"},
    {"anonymous_head", "p(_) :- q.",
     "p:1: unsafe rule: no positive literal of the body binds the variable _"},
    {"unsafe_negation", "p :- q(X),\n not r(Y).",
     "p:1: unsafe rule: no positive literal of the body binds the variable Y"},
    {"unsafe_comparison", "p :- q(X), X < Y.",
     "p:1: unsafe rule: no positive literal of the body binds the variable Y"},
    {"unsafe_constraint", ":- not q(X).",
     "p:1: unsafe rule: no positive literal of the body binds the variable X"},
    {"variables_that_wait_for_each_other", "p(X) :- X == Y, Y == X.",
     "p:1: unsafe rule: no positive literal of the body binds the variable X"},
    {"functor_is_no_name", "p(F) :- q(X), #function_builtin(F,\"f\",X).",
     "p:1: #function_builtin needs a term and the name of a functor"},
    {"unknown_include", "a.\n#include \"none.txt\"\n",
     "p:2: cannot read \"none.txt\": No such file or directory"},
};
INSTANTIATE_TEST_SUITE_P(Errors, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

TEST(Errors, NulBytesAreRefused) {
  const Outcome outcome = run(std::string_view("a.\nb\0.", 6));
  EXPECT_EQ(outcome.err, "p:2: NUL byte in the input\n");
  EXPECT_EQ(outcome.out, "");
}

TEST(Errors, FilesOfMoreThanTwoGigabytesAreRefused) {
  const Directory directory;
  directory.write("huge", "");
  std::filesystem::resize_file(directory.path() + "/huge", std::uintmax_t{3} << 30);
  const Outcome outcome = directory.run("huge");
  EXPECT_EQ(outcome.err, "dl: \"huge\" has more than 2147483645 bytes\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST(Errors, LongMessagesAreCutInTheMiddle) {
  const Outcome outcome = run("p(" + std::string(100'000, '1') + ").");
  EXPECT_TRUE(outcome.err.starts_with("p:1: number 111"));
  EXPECT_TRUE(outcome.err.ends_with("111 is greater than 2147483647\n"));
  EXPECT_EQ(outcome.err.size(), 1'004);
}

TEST(Errors, TermsNestedTooDeepAreRefused) {
  std::string deep;
  for (int i = 0; i < 100000; ++i) deep += "f(";
  const Outcome outcome = run("p(" + deep + "a" + std::string(100000, ')') + ").");
  EXPECT_EQ(outcome.err, "p:1: a term is nested deeper than 5000 levels\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST(Errors, TermsNestedToTheLimitAreAnswered) {
  std::string deep;
  for (int i = 0; i < 4990; ++i) deep += "f(";
  const Outcome outcome = run("p(" + deep + "a" + std::string(4990, ')') + ").");
  EXPECT_EQ(outcome.out, "{p(" + deep + "a" + std::string(4990, ')') + ")}\n");
}

}    // namespace
}    // namespace dl_test
