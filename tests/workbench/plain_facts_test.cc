// plain_facts_test.cc - facts that the translation's survey does not read, which nothing tells.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

#include "dl/read_files.h"
#include "support/run_program.h"
#include "zarel/program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

std::string translated(dl::Program surveyed) {
  const bool has_failed = surveyed.has_failed();
  const dl::Translated result = dl::translate(std::move(surveyed), {});
  std::string text = result.text + (has_failed ? "--- failed\n" : "");
  for (std::size_t line = 1; line <= result.lines.lines(); ++line) {
    const SourceLocation place = result.lines.source_of(line).location;
    ((text += std::to_string(place.line)) += ' ') += std::to_string(place.column);
  }
  if (!result.mistake) return text;
  ((text += result.mistake->text) += ' ') += std::to_string(result.mistake->place.first.line);
  return text;
}

// Returns the lines that the survey leaves out.
std::size_t compare(Program& program, const std::string& name) {
  if (!program.rewrite()) return 0;
  const std::string text = program.text();
  std::size_t lines = 0;
  for (const TextStretch& facts : program.plain_facts()) lines += facts.lines;
  EXPECT_EQ(translated(dl::survey_with_files(name, text, program.plain_facts())),
            translated(dl::survey_with_files(name, text)));
  return lines;
}

struct Case {
  std::string_view name, program;
  std::size_t left_out;    // lines
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

class PlainFacts : public testing::TestWithParam<Case> {};
TEST_P(PlainFacts, AreTranslatedTheSameUnread) {
  Program program;
  program.read_text(GetParam().program, "program");
  EXPECT_EQ(compare(program, "program"), GetParam().left_out);
}
constexpr Case kCases[] = {
    {"alone", "p(a,1). -q(\"a, b\"). r. ann[age -> 3, name -> \"x\"].", 5},
    {"between_rules", "p(1). p(2). q(X) :- p(X). p(3). ASITIS %*p(4).\n*% q(X), p(X)?", 3},
    {"others", "p(f(1)). p(1) v p(2). p(1..2). a_3(p). #maxint=5. :~ p(1). [1:2]", 1},
    {"lines_in_a_string", "p(\"a\nb\"). p(X) :- p(X). #include <none>", 2},
    {"with_open_relations", "t(R) :- R(X,Y). p(1,2). q(1,2). r(X) :- R(X,Y), t(R).", 2},
    {"behind_an_open_statement", "ASITIS %*p:-*% p(1). p(2).", 2},
    {"behind_an_open_string", "ASITIS %*p(\"*% p(\",\"). p(2).", 2},
    {"behind_a_wrong_line", "ASITIS %*\n$ *% p(1). p(2).", 2},
    {"before_what_is_wrong", "p(1). p(2). ASITIS %*#include <no*%", 2},
};
INSTANTIATE_TEST_SUITE_P(Cases, PlainFacts, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// A line that is not closed would take what follows it for its own.
TEST(PlainFacts, BeginOnALineOfTheirOwn) {
  MappedText text{"#include none", {}};
  text.append_plain_fact("a_2(p,default,1).\n", {});
  EXPECT_TRUE(text.plain_facts.empty());
  text.append_plain_fact("a_2(p,default,2).\n", {});
  text.append_plain_fact("a_2(p,default,3).\n", {});
  ASSERT_EQ(text.plain_facts.size(), 1);
  EXPECT_EQ(text.plain_facts.front().lines, 2);
  EXPECT_EQ(text.text.substr(text.plain_facts.front().begin, 10), "a_2(p,defa");
}

TEST(PlainFacts, OfTheExamplesAndGoldenProgramsAreTranslatedTheSameUnread) {
  std::size_t left_out = 0;
  for (const char* const folder : {PROJECT_FOLDER "/examples", PROJECT_FOLDER "/tests/golden"}) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      const fs::path& path = entry.path();
      if (path.extension() != ".zrl") continue;
      RunOptions options;
      options.links_templates = true;
      Program program(options, [](const Diagnostic&) {});
      program.read_file(path.string());
      SCOPED_TRACE(path.string());
      left_out += compare(program, path.string());
    }
  }
  EXPECT_GT(left_out, 250);
}

}    // namespace
}    // namespace zarel
