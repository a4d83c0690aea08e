// errors_test.cc - mistakes in the input: one line with file and line, and nothing on standard
// output.
#include "run_dl.h"

namespace dl_test {
namespace {

constexpr std::string_view kNoGuard = "p:1: an aggregate has a comparison without a guard term";
constexpr Case kSyntax[] = {
    {"syntax_error", "a.\nb :- c d.\n", "p:2: syntax error, unexpected name, expecting '.' or ','"},
    {"number_with_letters", "p(1a).", "p:1: syntax error, unexpected name, expecting ',' or ')'"},
    {"missing_full_stop", "a", "p:1: syntax error, unexpected end of file"},
    {"late_syntax_error", "a. b. c.\n\n\n)", "p:4: syntax error, unexpected ')'"},
    {"unexpected_character", "a.\np(a)&q.\n", "p:2: unexpected character '&'"},
    {"nul_byte", std::string_view("a.\nb\0.", 6), "p:2: NUL byte in the input"},
    {"open_string", "p(\"a).\n", "p:1: string without a closing quote"},
    {"unknown_word", "a :- #foo(X).", "p:1: unknown word #foo"},
    {"disjunction_in_a_body", "a :- b v c.",
     "p:1: syntax error, unexpected v, expecting '.' or ','"},
    {"expected_tokens_in_an_aggregate", "a :- 1 < #count{X:p(X)b}.",
     "p:1: syntax error, unexpected name, expecting ',' or '}'"},
    {"expected_tokens_behind_an_operator", "a :- < b.",
     "p:1: syntax error, unexpected name, expecting aggregate function or '('"},
    {"negation_in_a_head", "not a :- b.", "p:1: syntax error, unexpected :-, expecting '?' or ','"},
    {"aggregate_without_a_guard", "a :- #count{X:p(X)}.", "p:1: syntax error, unexpected '.'"},
    {"functor_is_no_name", "p(F) :- q(X), #function_builtin(F,\"f\",X).",
     "p:1: #function_builtin needs a term and the name of a functor"},
    {"unknown_include", "a.\n#include \"none.txt\"\n",
     "p:2: cannot read \"none.txt\": No such file or directory"},
    {"second_query", "a. a?\nb?", "p:2: a second query; the first is in p, line 1"},
    {"queries_that_begin_with_a_name_alone", "a.\na\n?\nb\n?",
     "p:4: a second query; the first is in p, line 2"},
    {"times", "p(1).\na :- 1 < #times{X:p(X)}.", "p:2: #times is not supported"},
    {"any", "a :- 1 < #any{X:p(X)}.", "p:1: #any is not supported"},
    {"negated_average", "a :- not 1 < #avg{X:p(X)}.", "p:1: \"not\" before #avg is not supported"},
    {"left_guard_missing", "a :- = #count{X:p(X)}.", kNoGuard},
    {"right_guard_missing", "a :- b, #count{X:p(X)} <= .", kNoGuard},
    {"guards_that_descend", "a :- 3 > #count{X:p(X)} > 1.",
     "p:1: two guards of an aggregate must both be < or <="},
    {"second_guard_missing", "a :- 1 < #count{X:p(X)} <= , b.", kNoGuard},
};
INSTANTIATE_TEST_SUITE_P(Syntax, FaultyPrograms, testing::ValuesIn(kSyntax), case_name);

constexpr std::string_view kOverflow = "p:1: an integer leaves 32 bits; #maxint or -N= bounds it";
constexpr Case kIntegers[] = {
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
    {"product_leaves_32_bits", "q(65536). p(Z) :- q(X), Z = X * X.", kOverflow},
    {"sum_aggregate_leaves_32_bits", "q(2147483647). q(1).\n\np(S) :- S = #sum{X:q(X)}.",
     "p:3: the values of an aggregate can add up to 2147483647 or more"},
    {"sum_inside_an_aggregate_leaves_32_bits",
     "q(2147483647). p(N) :- N = #count{Z:q(X), Z = X + 1}.", kOverflow},
    {"possible_sum_leaves_32_bits",
     "q(2147483647) v r. q(3) v s. o :- 1 < #sum{X:q(X), X < 5}.\n\np :- 5 < #sum{X:q(X)}.",
     "p:3: the values of an aggregate can add up to 2147483647 or more"},
    {"possible_sum_is_the_greatest_integer",
     "p(2147483646) v a. p(1) v b. q :- 0 = #sum{X:p(X)}.\n:- not q.",
     "p:1: the values of an aggregate can add up to 2147483647 or more"},
    {"possible_differences_leave_32_bits",
     "p(2147483647) v a. p(0) v b.\nq :- 1 < #avg{X:p(X)}. :- not q.",
     "p:2: the values of an aggregate can add up to 2147483647 or more"},
    {"weight_is_no_integer", "q(a).\n:~ q(X). [X:1]", "p:2: a weight or level is not an integer"},
    {"level_is_no_integer", "q(a).\n:~ q(X). [1:X]", "p:2: a weight or level is not an integer"},
    {"open_operand_without_a_name", "q(1). p(X) :- q(X), X = _ + _.",
     "p:1: the variable _, which no positive literal binds, needs a bound on integers, #maxint or "
     "-N="},
    {"unsafe_operand_without_a_name", "q(1). p(X) :- q(X), _ < X.",
     "p:1: unsafe rule: no positive literal of the body binds the variable _"},
    {"sum_alone_inside_an_aggregate", "p(N) :- N = #count{Z:Z = 2147483647 + 1}.", kOverflow},
    {"overflow_in_some_answer_set_of_a_query", "q(2147483647) v r. p(Z) :- q(X), Z = X + 1.\nr?",
     kOverflow},
    {"number_too_great", "a.\np(2147483648).", "p:2: number 2147483648 is greater than 2147483647"},
    {"number_far_too_great", "p(99999999999999999999999).",
     "p:1: number 99999999999999999999999 is greater than 2147483647"},
    {"weight_too_great", ":~ a. [2147483648:1]",
     "p:1: number 2147483648 is greater than 2147483647"},
    {"second_bound", "#maxint = 3. #maxint = 4.", "p:1: #maxint is already 3"},
    {"not_before_a_sum", "q(1). p :- q(X), not +(X,1,2).",
     "p:1: \"not\" before + is not supported"},
    {"wrong_number_of_arguments", "p :- q(X), +(X,1).", "p:1: + takes 3 arguments, not 2"},
};
INSTANTIATE_TEST_SUITE_P(Integers, FaultyPrograms, testing::ValuesIn(kIntegers), case_name);

struct Unsafe {
  std::string_view name, program, place, variable;
  friend void PrintTo(const Unsafe& test, std::ostream* out) { *out << test.name; }
};
class UnsafePrograms : public testing::TestWithParam<Unsafe> {};
TEST_P(UnsafePrograms, AreReported) {
  std::string message(GetParam().place);
  message.append(": unsafe rule: no positive literal of the body binds the variable ");
  message.append(GetParam().variable).append("\n");
  EXPECT_EQ(run(GetParam().program), (Outcome{"", message, 1}));
}
constexpr Unsafe kUnsafe[] = {
    {"head", "q(1).\n\np(X) :- q(Y).\n", "p:3", "X"},
    {"anonymous_head", "p(_) :- q.", "p:1", "_"},
    {"comparison", "p :- q(X), X < Y.", "p:1", "Y"},
    {"constraint", ":- not q(X).", "p:1", "X"},
    {"variables_that_wait_for_each_other", "p(X) :- X == Y, Y == X.", "p:1", "X"},
    {"average_as_a_value", "p(1). a(N) :- N = #avg{X:p(X)}.", "p:1", "N"},
    {"counted_variable", "a :- 1 < #count{X,Y:p(X)}.", "p:1", "Y"},
    {"weight", "a.\n:~ a. [W:1]", "p:2", "W"},
    {"weak_constraint", ":~ not p(X).", "p:1", "X"},
    {"query_that_begins_with_a_number", "a.\n1\n< X?", "p:2", "X"},
    {"fact_that_begins_with_a_name_alone", "a.\np\n(X).", "p:2", "X"},
    {"disjunct_alone_on_its_line", "a.\nb\nv\np(X).", "p:2", "X"},
    {"line_ends_in_strings_count", "p(\"a\n\nb\").\nq(X).\n", "p:4", "X"},
};
INSTANTIATE_TEST_SUITE_P(Cases, UnsafePrograms, testing::ValuesIn(kUnsafe), case_name);

TEST(Errors, LongMessagesAreCutInTheMiddle) {
  const Outcome outcome = run("p(" + std::string(100'000, '1') + ").");
  EXPECT_TRUE(outcome.errors.starts_with("p:1: number 111"));
  EXPECT_TRUE(outcome.errors.ends_with("111 is greater than 2147483647\n"));
  EXPECT_EQ(outcome.errors.size(), 1'004);
}

TEST(Errors, TermsNestedTooDeepAreRefused) {
  const auto fact = [](int depth) {
    return numbered(1, "p(") + numbered(depth, "f(") + "a" + numbered(depth + 1, ")");
  };
  const std::string deepest = fact(4'990);
  EXPECT_EQ(run(fact(100'000) + "."),
            (Outcome{"", "p:1: a term is nested deeper than 5000 levels\n", 1}));
  EXPECT_EQ(run(deepest + "."), (Outcome{"{" + deepest + "}\n", "", 0}));
}

}    // namespace
}    // namespace dl_test
