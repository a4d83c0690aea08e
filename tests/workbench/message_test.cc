// message_test.cc - how a message is drawn: its source line, the range, what may not reach a
// terminal.

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include "base/file_table.h"
#include "support/texts.h"
#include "workbench/messages/message_text.h"
#include "workbench/messages/reporter.h"

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

// Takes messages about a text of one line, and hands back what was written.
class Reported {
 public:
  explicit Reported(MessageOptions options, std::string_view text = "p?")
      : options_(std::move(options)), file_(files_.add("f", {}, text)), texts_(files_) {}

  // "replaced-query" is a warning, everything unknown an error.
  Reported& report(std::string_view code, int count = 1) {
    for (int i = 0; i < count; ++i) reporter_.report({code, {at_, at_}, "wrong"});
    return *this;
  }

  Reporter& reporter() { return reporter_; }

  std::string written() {
    reporter_.finish();
    return std::exchange(out_, std::ostringstream()).str();
  }

 private:
  MessageOptions options_;
  zarel::FileTable files_;
  std::uint32_t file_;
  SourceTexts texts_;
  std::ostringstream out_;
  Reporter reporter_{options_, texts_, out_};
  zarel::Position at_{file_, 1, 1, 1};
};

constexpr std::string_view kError = "f:1:1: error: wrong [code]\n  1 | p?\n    | ^\n";
constexpr std::string_view kWarning = "f:1:1: warning: wrong [replaced-query]\n  1 | p?\n    | ^\n";
constexpr std::string_view kFatalWarning =
    "f:1:1: error: wrong [replaced-query]\n  1 | p?\n    | ^\n";

TEST(Reporter, CountsWhatIsBehindTheFirstTwenty) {
  Reported all({});
  all.report("replaced-query").report("code", 19);
  EXPECT_EQ(all.written(), std::string(kWarning) + zarel::repeated(kError, 19));
  EXPECT_EQ(all.report("code").written(), "1 more error is not shown\n");
  EXPECT_EQ(all.report("replaced-query", 2).written(), "2 more warnings are not shown\n");
  EXPECT_EQ(all.report("code", 99'999).report("replaced-query").written(),
            "99999 more errors and 1 more warning are not shown\n");
  EXPECT_EQ(all.reporter().errors(), 100'019U);
  EXPECT_EQ(all.reporter().warnings(), 4U);
}

TEST(Reporter, ShowsWhatIsSwitchedOn) {
  EXPECT_EQ(Reported({.off = {"replaced-query"}}).report("replaced-query").written(), "");
  EXPECT_EQ(Reported({.off = {"code"}}).report("code").written(), kError);
  Reported strict({.is_strict = true});
  EXPECT_EQ(strict.report("replaced-query").written(), kFatalWarning);
  EXPECT_EQ(strict.reporter().errors(), 1U);
  Reported fatal({.as_errors = {"replaced-query"}});
  EXPECT_EQ(fatal.report("replaced-query").written(), kFatalWarning);
  Reported off({.is_strict = true, .off = {"replaced-query"}});
  EXPECT_EQ(off.report("replaced-query").written(), "");
  EXPECT_EQ(off.reporter().errors(), 0U);
}

TEST(Reporter, LooksForCommentsThatAllow) {
  constexpr std::pair<std::string_view, bool> kTexts[] = {
      {"p? %! allow replaced-query", true},
      {"p?\n%!allow other,replaced-query\r\n", true},
      {"p? %! allow other replaced-query", true},
      {"p? %! allow other\n% replaced-query", false},
      {"p? %! allowed replaced-query", false},
      {"p? % allow replaced-query", false},
      {"p? %! allow replaced", false},
  };
  for (const auto& [text, is_allowed] : kTexts) {
    EXPECT_EQ(Reported({}, text).report("replaced-query").written().empty(), is_allowed) << text;
    EXPECT_FALSE(Reported({}, text).report("code").written().empty()) << text;
  }
}

TEST(Reporter, WritesAllAsJson) {
  Reported json({.as_json = true}, "p?");
  EXPECT_EQ(json.report("replaced-query", 30).written(),
            zarel::repeated(R"({"kind":"message","code":"replaced-query","severity":"warning",)"
                            R"("message":"wrong","label":"","help":"",)"
                            R"("ranges":[{"file":"f","first":{"line":1,"column":1,"byte":1},)"
                            R"("last":{"line":1,"column":1,"byte":1}}],"notes":[],"fixes":[]})"
                            "\n",
                            30));
  const Message message{"code",
                        {},
                        "\xff\"\n\x1b",
                        "label",
                        {{{}, "note"}},
                        "help",
                        {{Fix::Kind::kInsertBehind, {}, "."}}};
  json.reporter().report(message);
  EXPECT_EQ(json.written(),
            "{\"kind\":\"message\",\"code\":\"code\",\"severity\":\"error\",\"message\":\"\uFFFD"
            R"(\"\n\u001b","label":"label","help":"help","ranges":[],)"
            R"("notes":[{"message":"note","ranges":[]}],)"
            R"("fixes":[{"kind":"insert-behind","ranges":[],"replacement":"."}]})"
            "\n");
  json.reporter().note("2 answer sets");
  EXPECT_EQ(json.written(), "{\"kind\":\"note\",\"message\":\"2 answer sets\"}\n");
}

TEST(Reporter, KeepsNotesOfTheRunClean) {
  Reported all({});
  all.reporter().note("p\x1b[0m");
  EXPECT_EQ(all.written(), "p\uFFFD[0m\n");
  Reported quiet({.is_quiet = true});
  quiet.reporter().note("p");
  EXPECT_EQ(quiet.written(), "");
}

}    // namespace
}    // namespace workbench
