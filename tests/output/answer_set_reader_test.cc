// Tokens, items and errors of the solver's output.

#include "reading_fixture.h"

namespace zarel {
namespace {

TEST_P(Reader, PrintsWhatIsExpected) {
  GetParam().prepare();
  EXPECT_EQ(read(GetParam().input), GetParam().output);
}

constexpr Case kTokens[] = {
    {"nothing", "", ""},
    {"only_ignored_characters", ".. !%/#\\ \t\r_?=+*;&\x7F\x80\xFF\n", ""},
    {"words_and_numbers", "aB_9z, a__B9, 007", "aB_9z,a__B9,007\n"},
    {"a_number_ends_at_a_letter", "12a", "12\na\n"},
    {"an_underscore_begins_no_word", "_x", "x\n"},
    {"strings_keep_everything", "\"a\\\", \"b c,(\xFF\"", "\"a\\\",\"b c,(\xFF\"\n"},
    {"a_string_spans_lines", "\"a\nb\"", "\"a\nb\"\n"},
    {"an_empty_string_is_ignored", "a \"\"", "a\n"},
    {"the_second_quote_may_begin_a_string", "\"\"a\"", "\"a\"\n"},
    {"a_lone_quote_is_ignored", "a \"b\nc", "a\nb\nc\n"},
    {"characters_above_ascii_split_words",
     "a\xC3\xA4"
     "b",
     "a\nb\n"},
};
INSTANTIATE_TEST_SUITE_P(Tokens, Reader, testing::ValuesIn(kTokens), case_name);

constexpr Case kItems[] = {
    {"empty_answer_set", "{}", "{}\n"},
    {"bare_predicate", "{a_2(p, default)}", "{p}\n"},
    {"atoms_keep_their_order", "{a_3(q, default, 1), a_4(p, default, x, \"y z\")}",
     "{q(1), p(x,\"y z\")}\n"},
    {"the_word_in_front_is_ignored", "{zzz(p, default, x)}", "{p(x)}\n"},
    {"negated_atoms", "{-a_3(p, ns1, x), -a_2(q, default), a_2(r, default)}",
     "{-p(x)@ns1, -q, r}\n"},
    {"function_terms", "{a_4(p, default, f( a , g(b,c) ), d)}", "{p(f(a,g(b,c)),d)}\n"},
    {"function_terms_in_front", "{a_3(f(a,b), g(c), x), a_2(f(a), \"s\")}",
     "{f(a,b)(x)@g(c), f(a)@\"s\"}\n"},
    {"quoted_relation", "{a_3(\"a b\", default, x)}", "{\"a b\"(x)}\n"},
    {"service_atoms_are_not_shown", "{a_3(p, service, x), a_3(q, default, y)}", "{q(y)}\n"},
    {"service_atoms_without_arguments_are", "{a_2(p, service)}", "{p@service}\n"},
    {"a_space_that_contains_service", "{a_3(p, service1, x)}", "{p(x)@service1}\n"},
    {"term_lists", "a, f(b , \"c\")\nd", "a,f(b,\"c\")\nd\n"},
    {"several_items", "{a_2(p, default)}x, y{}\n{a_2(q, default)}", "{p}\nx,y\n{}\n{q}\n"},
    {"a_banner_with_words", "... solver [!", "solver\nline 1: syntax error.\n"},
    {"best_model",
     "Best model: {a_3(p, default, x), a_5(valueOf, defaultFlogic, o, a, v, \"->\")}\n"
     "Cost ([Weight:Level]): <[3:1]>\n{}",
     "Best model: {p(x), o[a->v]}\nCost ([Weight:Level]): <[3:1]>\n{}\n"},
    {"best_model_with_other_words", "Some answer:{}Price([A:B]):<[x : y]>",
     "Some answer: {}\nPrice ([A:B]): <[x:y]>\n"},
};
INSTANTIATE_TEST_SUITE_P(Items, Reader, testing::ValuesIn(kItems), case_name);

constexpr Case kErrors[] = {
    {"one_argument", "{a(p)}", kSyntaxError},
    {"no_arguments", "{a}", kSyntaxError},
    {"capital_words_in_atoms", "{a_3(p, default, X)}", kSyntaxError},
    {"negated_terms", "{a_3(p, default, -1)}", kSyntaxError},
    {"unclosed_answer_set", "{a_2(p, default)", kSyntaxError},
    {"trailing_comma", "{a_2(p, default),}", kSyntaxError},
    {"an_empty_string_is_no_argument", "{a_3(p, default, \"\")}", kSyntaxError},
    {"two_costs", "Best model: {} Cost ([Weight:Level]): <[3:1],[2:2]>", kSyntaxError},
    {"what_was_complete_is_printed", "{a_2(p, default)}\nx\r\n{a_2(q, default), }\n{}",
     "{p}\nx\nline 3: syntax error.\n"},
    {"carriage_returns_alone_are_no_lines", "\r\r\r\n]", "line 2: syntax error.\n"},
    {"lines_in_strings_are_not_counted", "\"a\nb\"\n]", "\"a\nb\"\nline 2: syntax error.\n"},
};
INSTANTIATE_TEST_SUITE_P(Errors, Reader, testing::ValuesIn(kErrors), case_name);

class ReaderState : public ReadingTest<testing::Test> {};

TEST_F(ReaderState, GivesAStatus) {
  read("{}");
  EXPECT_EQ(status_, 0);
  read("}");
  EXPECT_EQ(status_, 1);
}

TEST_F(ReaderState, IsNewForEachReading) {
  read("{-a_3(p, default, -");    // ends while an atom is negated, and the answer set has a frame
  read("{a_5(valueOf, sFlogic, o, a, v, \"->\"), -");
  errors_.str("");
  EXPECT_EQ(read("{a_2(p, default)}"), "{p}\n");
}

TEST_F(ReaderState, KeepsZeroBytesInStringsOnly) {
  using std::string_view_literals::operator""sv;
  EXPECT_EQ(read("a\0b,\"c\0d\""sv), "a\nb,\"c\0d\"\n"sv);
}

TEST_F(ReaderState, ReportsOutsideParsingWithoutALine) {
  report_state().ParserStateInternal = true;
  EXPECT_EQ(read("]"), "Internal parser invocation: syntax error.\n");
}

TEST_F(ReaderState, ReadsTermsNestedDeep) {
  for (const std::string_view open : {"f(", "f(a,"}) {
    const std::string term = joined({repeated(open, 100000), "x", repeated(")", 100000)});
    output_.str("");
    EXPECT_EQ(read(joined({"{a_3(p, default, ", term, ")}"})), joined({"{p(", term, ")}\n"}));
  }
}

TEST_F(ReaderState, RefusesTermsNestedTooDeep) {
  EXPECT_EQ(read(joined({"{}{a_3(p, default, ", repeated("f(a,", 2100000)})),
            "{}\nline 1: memory exhausted.\n");
  EXPECT_EQ(status_, 2);
}

TEST_F(ReaderState, ReadsLargeAnswerSets) {
  EXPECT_EQ(read(joined({"{", repeated("a_3(p, default, x), ", 300000), "a_2(q, s)}"})),
            joined({"{", repeated("p(x), ", 300000), "q@s}\n"}));
}

TEST_F(ReaderState, ReadsManyItems) {
  const std::string input = repeated("{a_3(p, default, x), -a_2(q, s)} word 12 \"s\"\n", 30000);
  EXPECT_EQ(read(input), repeated("{p(x), -q@s}\nword\n12\n\"s\"\n", 30000));
  EXPECT_EQ(report_state().parser_line, 30001);
}

}    // namespace
}    // namespace zarel
