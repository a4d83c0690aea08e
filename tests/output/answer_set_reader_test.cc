// Tokens, items and errors of the solver's output.

#include "reading_fixture.h"

namespace zarel {
namespace {

TEST_P(Reader, PrintsWhatIsExpected) {
  GetParam().prepare();
  EXPECT_EQ(read(GetParam().input), GetParam().output);
  EXPECT_EQ(read_as_file(GetParam().input), GetParam().output);
}

constexpr Case kTokens[] = {
    {"only_ignored_characters", ".. !%/#\\ \t\r_?=+*;&\x7F\x80\xFF\n", ""},
    {"words_and_numbers", "aB_9z, a__B9, 007", "aB_9z,a__B9,007\n"},
    {"a_number_ends_at_a_letter", "12a", "12\na\n"},
    {"an_underscore_begins_no_word", "_x", "x\n"},
    {"strings_keep_everything", "\"a\\\", \"b c,(\xFF\"", "\"a\\\",\"b c,(\xFF\"\n"},
    {"a_string_spans_lines", "\"a\nb\"", "\"a\nb\"\n"},
    {"an_empty_string_is_ignored", R"(a "")", "a\n"},
    {"the_second_quote_may_begin_a_string", R"(""a")", "\"a\"\n"},
    {"a_lone_quote_is_ignored", "a \"b\nc", "a\nb\nc\n"},
    {"characters_above_ascii_split_words", "a\xC3\xA4z", "a\nz\n"},
};
INSTANTIATE_TEST_SUITE_P(Tokens, Reader, testing::ValuesIn(kTokens), case_name);

constexpr Case kItems[] = {
    {"the_word_in_front_is_ignored", "{zzz(p, default, x)}", "{p(x)}\n"},
    {"negated_atoms", "{-a_3(p,ns1,x), -a_2(q,default), a_2(r,default)}", "{-p(x)@ns1, -q, r}\n"},
    {"function_terms", "{a_4(p, default, f( a , g(b,c) ), d)}", "{p(f(a,g(b,c)),d)}\n"},
    {"texts_that_look_like_terms", "{a_4(p,default,\"a,b)\",\",(\"), a_2(\"p(\",\"s,\")}",
     "{p(\"a,b)\",\",(\"), \"p(\"@\"s,\"}\n"},
    {"ignored_characters_between_terms",
     R"({a_4(p,default,_x,y.), 12(q,s), a%(q;,s,z), a_3(r,s,"x)})",
     "{p(x,y), q@s, q(z)@s, r(x)@s}\n"},
    {"function_terms_in_front", R"({a_3(f(a,b), g(c), x), a_2(f(a), "s")})",
     "{f(a,b)(x)@g(c), f(a)@\"s\"}\n"},
    {"service_atoms_are_not_shown", "{a_3(p,service,x), a_3(q,service1,y)}", "{q(y)@service1}\n"},
    {"service_atoms_without_arguments_are", "{a_2(p,service)}", "{p@service}\n"},
    {"term_lists", "a, f(b , \"c\"), 12\nd", "a,f(b,\"c\"),12\nd\n"},
    {"flat_term_lists", "f(a,b),g(\"c\nd\",12)f(a,g(b,c))", "f(a,b),g(\"c\nd\",12)\nf(a,g(b,c))\n"},
    {"several_items", "{a_2(p,default)}x, y{}\n{a_2(q,default)}", "{p}\nx,y\n{}\n{q}\n"},
    {"a_banner_with_words", "... solver [!", "solver\nline 1: syntax error.\n"},
    {"best_model",
     "Best model: {a_3(p,default,x), a_3(valueOf,defaultFlogic,o,a)}\n"
     "Cost ([Weight:Level]): <[3:1]>\n{}",
     "Best model: {p(x), o[a]}\nCost ([Weight:Level]): <[3:1]>\n{}\n"},
    {"best_model_with_other_words", "Some answer:{}Price([A:B]):<[x : y]>",
     "Some answer: {}\nPrice ([A:B]): <[x:y]>\n"},
    {"what_was_complete_is_printed", "{a_2(p,default)}\nx\r\n{a_2(q,default), }\n{}",
     "{p}\nx\nline 3: syntax error.\n"},
    {"carriage_returns_alone_are_no_lines", "\r\r\r\n]", "line 2: syntax error.\n"},
    {"lines_in_strings_are_not_counted", "\"a\nb\"\n]", "\"a\nb\"\nline 2: syntax error.\n"},
};
INSTANTIATE_TEST_SUITE_P(Items, Reader, testing::ValuesIn(kItems), case_name);

TEST_F(ReaderState, RefusesOtherForms) {
  for (const std::string_view input :
       {"{a(p)}", "{a}", "{a_3(p,s,X)}", "{a_3(p,s,-1)}", "{a_2(p,s)", "{a_2(p,s),}",
        "{a_3(p,s,12a)}", "{a_3(p,s,a\"b\")}", "{a_3(p,s,)}", "{a_3(p,,s)}", "{a_3(p,s,x}",
        "{a_3(p,s,\"\")}", "Best model: {} Cost ([Weight:Level]): <[3:1],[2:2]>"})
    EXPECT_EQ(read(input), "line 1: syntax error.\n") << input;
}

TEST_F(ReaderState, IsNewForEachReading) {
  read("{-a_3(p,default,-");    // ends while an atom is negated, and the answer set has a frame
  read("{a_5(valueOf,sFlogic,o,a,v,\"->\"), -");
  EXPECT_EQ(status_, 1);
  EXPECT_EQ(read("{a_2(p,default)}"), "{p}\n");
  EXPECT_EQ(status_, 0);
}

TEST_F(ReaderState, KeepsZeroBytesInStringsOnlyAndPassesALoneQuoteBeforeThemOver) {
  using std::string_view_literals::operator""sv;
  // Also in front of the last byte that the scanner's tables have, where they end.
  EXPECT_EQ(read("a\0b,\0\xff\"c\0d\""sv), "a\nb,\"c\0d\"\n"sv);
  EXPECT_EQ(read("{a_3(p,s,\"\0\n\0\0\")}\"c\0\"\0a"sv), "{p(\"\0\n\0\0\")@s}\n\"c\0\"\na\n"sv);
  const std::string zeros = joined({"\"", std::string(1'000'000, '\0'), "\""});
  EXPECT_TRUE(read(zeros) == zeros + "\n");
  current_run().findings.parser_line = 1;
  EXPECT_EQ(read("a \"\0b\n\0c d"sv), "a\nb\nc\nd\n");
  EXPECT_EQ(current_run().findings.parser_line, 2);
  EXPECT_EQ(read("a \"{a_2(p,s)\0, -"sv), "a\nline 2: syntax error.\n");
}

TEST_F(ReaderState, ReadsTermsNestedDeep) {
  for (const std::string_view open : {"f(", "f(a,"}) {
    const std::string term = joined({repeated(open, 100000), "x", repeated(")", 100000)});
    EXPECT_EQ(read(joined({"{a_3(p,default,", term, ")}"})), joined({"{p(", term, ")}\n"}));
  }
}

TEST_F(ReaderState, RefusesTermsNestedTooDeep) {
  EXPECT_EQ(read(joined({"{}{a_3(p, default, ", repeated("f(a,", 2100000)})),
            "{}\nline 1: memory exhausted.\n");
  EXPECT_EQ(status_, 2);
}

TEST_F(ReaderState, ReadsManyAtomsAndItems) {
  const std::string large = joined({"{", repeated("a_3(p,default,x), ", 300000), "a_2(q,s)}"});
  EXPECT_EQ(read(large), joined({"{", repeated("p(x), ", 300000), "q@s}\n"}));
  const std::string input = repeated("{a_3(p,default,x), -a_2(q,s)} word 12 \"s\"\n", 30000);
  EXPECT_EQ(read(input), repeated("{p(x), -q@s}\nword\n12\n\"s\"\n", 30000));
  EXPECT_EQ(current_run().findings.parser_line, 30001);
}

}    // namespace
}    // namespace zarel
