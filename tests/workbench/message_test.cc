// message_test.cc - how a message is drawn: its source line, the range, what may not reach a
// terminal.

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "base/file_table.h"
#include "support/texts.h"
#include "workbench/message_text.h"

namespace workbench {
namespace {

struct Range {
  std::uint32_t first_line = 1;
  std::uint32_t first_column = 1;
  std::uint32_t last_line = 1;
  std::uint32_t last_column = 1;
};

std::string drawn_at(const Range& range, std::string_view text, std::string_view label = {}) {
  zarel::FileTable files;
  const std::uint32_t file = files.add("f", {}, text);
  SourceTexts texts(files);
  const Message message{"code",
                        {{file, range.first_line, range.first_column, range.first_column},
                         {file, range.last_line, range.last_column, range.last_column}},
                        "wrong",
                        std::string(label)};
  std::string whole = drawn(message, Severity::kError, texts, Colours::kNone);
  return whole.substr(whole.find('\n') + 1);    // the first line is the cases' matter
}

struct Case {
  std::string_view name;
  Range range;
  std::string_view text;
  std::string_view excerpt;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

class Drawing : public testing::TestWithParam<Case> {};

TEST_P(Drawing, UnderlinesTheRange) {
  EXPECT_EQ(drawn_at(GetParam().range, GetParam().text, "here"), GetParam().excerpt);
}

constexpr Case kCases[] = {
    {"word", {2, 4, 2, 6}, "p.\nab cde f\n", "  2 | ab cde f\n    |    ^^^ here\n"},
    {"tabs", {1, 3, 1, 5}, "\ta\tb c", "  1 |     a   b c\n    |      ^^^^^ here\n"},
    {"wide_characters",
     {1, 4, 1, 9},
     "\u4e2d\u6587\u4e2dx",
     "  1 | \u4e2d\u6587\u4e2dx\n    |   ^^^^ here\n"},
    {"first_byte_alone", {1, 2, 1, 2}, "(\u4e2d)", "  1 | (\u4e2d)\n    |  ^^ here\n"},
    {"combining_characters", {1, 5, 1, 5}, "ae\u0301x", "  1 | ae\u0301x\n    |   ^ here\n"},
    {"carriage_return", {1, 3, 1, 3}, "p(\r\nq", "  1 | p(\n    |   ^ here\n"},
    {"byte_order_mark", {1, 4, 1, 4}, "\uFEFFp(", "  1 | p(\n    | ^ here\n"},
    {"escapes",
     {1, 7, 1, 7},
     "\x1b[31mp\x7f\xc2\x9b\u202e(",
     "  1 | \uFFFD[31mp\uFFFD\uFFFD\uFFFD(\n    |       ^ here\n"},
    {"no_utf8",
     {1, 6, 1, 6},
     "\xff\xe4\xed\xa0\x80p\xc3",
     "  1 | \uFFFD\uFFFD\uFFFD\uFFFD\uFFFDp\uFFFD\n    |      ^ here\n"},
    {"end_of_the_line", {1, 3, 1, 3}, "p(\nq.", "  1 | p(\n    |   ^ here\n"},
    {"end_of_the_file", {2, 1, 2, 1}, "p(\n", "  2 |\n    | ^ here\n"},
    {"empty_file", {1, 1, 1, 1}, "", "  note: here\n"},
    {"line_that_is_gone", {3, 1, 3, 5}, "p.\n", "  note: here\n"},
    {"column_that_is_gone", {1, 9, 1, 12}, "p.\n", "  1 | p.\n    |   ^ here\n"},
    {"three_lines",
     {1, 3, 3, 2},
     "p :-\n\n  q.\n",
     "  1 | p :-\n    |   ^^\n  2 |\n  3 |   q.\n    |   ^ here\n"},
    {"many_lines", {1, 3, 9, 2}, "p :- \n\n\n\nq.\n", "  1 | p :- \n    |   ^^... here\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Drawing, testing::ValuesIn(kCases), zarel::case_name);

// Lines that are too long are cut in front, behind, and within the range.
TEST(DrawnMessages, CutsLongLines) {
  const std::string line = zarel::repeated("abcd ", 40) + "X" + zarel::repeated(" efgh", 40);
  EXPECT_EQ(drawn_at({1, 201, 1, 201}, line),
            "  1 | ..." + line.substr(140, 94) + "...\n    | " + std::string(63, ' ') + "^\n");
  EXPECT_EQ(drawn_at({1, 6, 1, 9}, line), "  1 | " + line.substr(0, 97) + "...\n    |      ^^^^\n");
  EXPECT_EQ(drawn_at({1, 401, 1, 401}, line),
            "  1 | ..." + line.substr(340) + "\n    | " + std::string(63, ' ') + "^\n");
  EXPECT_EQ(drawn_at({1, 11, 1, 300}, line), "  1 | " + line.substr(0, 97) + "...\n    | " +
                                                 std::string(10, ' ') + std::string(90, '^') +
                                                 "\n");
  EXPECT_EQ(drawn_at({1, 100, 1, 100}, line.substr(0, 100)),
            "  1 | " + line.substr(0, 100) + "\n    | " + std::string(99, ' ') + "^\n");
}

// A hundred of them would take minutes if the whole line were looked at for each.
TEST(DrawnMessages, CutsALongLineQuickly) {
  zarel::FileTable files;
  std::string text = zarel::repeated("\u00e4", 10'000'000);
  const std::uint32_t file = files.add("f", {}, text);
  SourceTexts texts(files);
  const zarel::Position middle{file, 1, 10'000'001, 5'000'001};
  for (int i = 0; i < 100'000; ++i) {
    const std::string all =
        drawn({"code", {middle, middle}, "wrong"}, Severity::kError, texts, Colours::kNone);
    ASSERT_EQ(std::count(all.begin(), all.end(), '^'), 1);
    ASSERT_LT(all.size(), 400U);
  }
}

TEST(DrawnMessages, ShowsNotesAndHelp) {
  zarel::FileTable files;
  const std::uint32_t file = files.add(
      "a\x1b"
      "b",
      {}, "p(1).\np.");
  SourceTexts texts(files);
  const zarel::Position first{file, 1, 1, 1};
  const zarel::Position second{file, 2, 1, 1};
  const Message message{"code",
                        {second, second},
                        "wrong \x1b",
                        {},
                        {{{first, first}, "first"}, {{}, "no place"}},
                        "write \n it"};
  EXPECT_EQ(drawn(message, Severity::kWarning, texts, Colours::kNone),
            "a\uFFFDb:2:1: warning: wrong \uFFFD [code]\n  2 | p.\n    | ^\n"
            "  help: write \uFFFD it\n"
            "a\uFFFDb:1:1: note: first\n  1 | p(1).\n    | ^\n"
            "  note: no place\n");
  const std::string in_colour = drawn(message, Severity::kWarning, texts, Colours::kTerminal);
  EXPECT_EQ(in_colour.substr(0, in_colour.find("\n  \x1b[1;32mhelp")),
            "\x1b[1ma\uFFFDb:2:1:\x1b[0m \x1b[1;35mwarning:\x1b[0m wrong \uFFFD [code]\n"
            "\x1b[34m  2 |\x1b[0m p.\n\x1b[34m    |\x1b[0m \x1b[1;35m^\x1b[0m");
}

}    // namespace
}    // namespace workbench
