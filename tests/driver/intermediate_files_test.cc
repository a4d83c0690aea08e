// intermediate_files_test.cc - ".source", ".legend", ".output" and standard output when they
// cannot be opened, written or read.

#include "shell_fixture.h"

namespace zarel {
namespace {

constexpr std::string_view kNotOpened = "Intermediate rewriting file could not be opened.\n";
constexpr std::string_view kNotWritten = "Intermediate rewriting file could not be written.\n";
constexpr std::string_view kLostOutput = "Standard output could not be written.\n";

std::string many_facts() {
  std::string facts;
  for (int i = 0; i < 20'000; ++i) facts += "p(" + std::to_string(i) + ").\n";
  return facts;
}

TEST_F(ShellTest, EndsWhenTheSourceCannotBeOpened) {
  write("input.zrl", "a.\n");
  link("missing/source", ".source");    // stops root, too
  const Outcome outcome = run("zarel -silent -preparsing input.zrl");
  EXPECT_EQ(outcome.errors, kNotOpened);
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.status, "1\n");
}

TEST_F(ShellTest, NeedsNoSourceToShowTheHelp) {
  link("missing/source", ".source");
  EXPECT_EQ(run("zarel -help").status, "0\n");
}

TEST_F(ShellTest, GoesOnWhenTheLegendCannotBeOpened) {
  write("input.zrl", "a.\n");
  link("missing/legend", ".legend");
  const Outcome outcome = run("zarel -silent -preparsing input.zrl");
  EXPECT_EQ(outcome.output, "a_1(a,default).\n");
  EXPECT_EQ(outcome.status, "0\n");
}

struct FullDisk {
  std::string_view name, file, input;
  friend void PrintTo(const FullDisk& test, std::ostream* out) { *out << test.name; }
};

class OnAFullDisk : public ShellTest, public testing::WithParamInterface<FullDisk> {};

TEST_P(OnAFullDisk, TheRunEndsBeforeTheSolver) {
  write("input.zrl", GetParam().input.empty() ? many_facts() : GetParam().input);
  write_script("fake", "echo called >&2\n");
  link("/dev/full", std::string(GetParam().file));
  const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
  EXPECT_EQ(outcome.errors, kNotWritten);
  EXPECT_EQ(outcome.status, "1\n");
}

constexpr FullDisk kFullDisks[] = {
    {"few_clauses", ".source", "a.\n"},
    {"many_clauses", ".source", ""},
    {"verbatim_section", ".source", "ASITIS %*a.*%\n"},
    {"include_line", ".source", "#include <a>\n"},
    {"nothing", ".source", "%\n"},
    {"query", ".legend", "a?\n"},
    {"empty_legend", ".legend", "a.\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, OnAFullDisk, testing::ValuesIn(kFullDisks),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(ShellTest, SaysWhenStandardOutputIsLost) {
  write("few.zrl", "a.\n");
  write("many.zrl", many_facts());
  write("echo.zrl", "^\n");
  write_script("fake", "echo '{a_1(a, default)}'\n");
  for (const std::string arguments :
       {"-silent -preparsing few.zrl", "-silent -preparsing many.zrl",
        "-silent -solver=./fake few.zrl", "-silent -preparsing echo.zrl", "few.zrl -solver=true",
        "-help", "-license", "-v"}) {
    const Outcome outcome = run("zarel " + arguments + " > /dev/full");
    EXPECT_EQ(outcome.errors, kLostOutput) << arguments;
    EXPECT_EQ(outcome.status, "1\n") << arguments;
  }
  const Outcome closed = run("zarel -silent -preparsing few.zrl >&-");
  EXPECT_EQ(closed.errors, kLostOutput);
  EXPECT_EQ(closed.status, "1\n");
}

TEST_F(ShellTest, SaysWhenTheAnswersCannotBeRead) {
  write("input.zrl", "a.\n");
  write_script("fake", "echo '{a_1(a, default)}'\n");
  for (const bool is_folder : {true, false}) {
    std::filesystem::remove_all(folder() / ".output");
    if (is_folder) std::filesystem::create_directory(folder() / ".output");
    if (!is_folder) link("missing/output", ".output");
    const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(outcome.errors.ends_with("Internal parser invocation: can't open input.\n"))
        << outcome.errors;    // behind the shell's own words
    EXPECT_EQ(outcome.status, "0\n");
  }
}

TEST_F(ShellTest, WritesQueriesToTheLegendAndTheLegendBehindTheSource) {
  write("input.zrl", "a.\nb(X)?\nASITIS %*c.*%\n");
  write(".output", "{old(a, b)}");
  const Outcome outcome =
      run("zarel -silent -solver=true input.zrl && zarel -silent -solver=true input.zrl");
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(text(".legend"),
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n\na_2(b,default,X)?\n");
  EXPECT_EQ(text(".source"),
            "% ASITIS's Body is herein written verbatim\nc.\n% End of ASITIS's Section\n\n"
            "a_1(a,default).\n\n"
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n\n"
            "a_2(b,default,X)?\n\n");
  EXPECT_EQ(text(".output"), "");
}

}    // namespace
}    // namespace zarel
