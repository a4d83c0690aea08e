// solver_process_test.cc - how the solver is found, and solvers that fail, die or talk too much.

#include "shell_fixture.h"

namespace zarel {
namespace {

class SolverProcess : public ShellTest {
 protected:
  SolverProcess() {
    write("input.zrl", "a.\n");
    write_script("fake", "echo '{a_1(a, default)}'\n");
  }
};

TEST_F(SolverProcess, MayBeMissing) {
  write(".output", "{a_1(old, default)}");
  const Outcome outcome = run("zarel -silent -solver=./missing input.zrl");
  EXPECT_EQ(outcome.output, "");
  EXPECT_TRUE(contains(outcome.errors, "./missing")) << outcome.errors;    // the shell's words
  EXPECT_FALSE(contains(outcome.errors, "impossible")) << outcome.errors;
  EXPECT_EQ(outcome.status, "0\n");
}

TEST_F(SolverProcess, MayDieOfASignal) {
  write_script("fake", "echo '{a_1(a, default)}'\nkill -KILL $$\n");
  const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
  EXPECT_EQ(outcome.output, "{a}\n");
  EXPECT_EQ(outcome.status, "0\n");
}

TEST_F(SolverProcess, SharesStandardErrorAndInput) {
  write_script("fake", "cat >&2\n");
  EXPECT_EQ(run("echo word | zarel -silent -solver=./fake input.zrl").errors, "word\n");
}

TEST_F(SolverProcess, SeesTheBannerWrittenBefore) {
  write_script("fake", "cat stdout >&2\n");
  EXPECT_TRUE(run("zarel -solver=./fake input.zrl").errors.starts_with("Zarel. "));
}

TEST_F(SolverProcess, IsFoundBesideTheProgramBehindTheSearchPath) {
  std::filesystem::create_directory(folder() / "bin");
  std::filesystem::create_directory(folder() / "other");
  std::filesystem::copy_file(ZAREL, folder() / "bin" / "zarel");
  write_script("bin/tool", "echo '{a_1(beside, default)}'\n");
  const std::string call = "zarel -silent -solver=tool input.zrl";
  EXPECT_EQ(run("bin/" + call).output, "{beside}\n");
  EXPECT_EQ(run("(unset PATH; bin/" + call + ")").output, "{beside}\n");
  EXPECT_EQ(run("(PATH=; bin/" + call + ")").output, "{beside}\n");
  write_script("other/tool", "echo '{a_1(path, default)}'\n");
  EXPECT_EQ(run("PATH=\"$PWD/other:$PATH\"; bin/" + call).output, "{path}\n");
}

TEST_F(SolverProcess, IsFoundBesideALinkedProgram) {
  std::filesystem::create_directories(folder() / "real");
  std::filesystem::copy_file(ZAREL, folder() / "real" / "zarel");
  write_script("real/tool", "echo '{a_1(beside, default)}'\n");
  link("real/zarel", "linked");
  EXPECT_EQ(run("./linked -silent -solver=tool input.zrl").output, "{beside}\n");
}

TEST_F(SolverProcess, MayHaveABlankInItsPathAndTakesALongCommand) {
  std::filesystem::create_directory(folder() / "my tools");
  write_script("my tools/fake", "echo \"$@\" >&2\n");
  std::string words;
  for (int i = 0; i < 2'000; ++i) words += " -option" + std::to_string(i);
  const Outcome outcome =
      run("zarel -silent '-solver=my tools/fake' '-solverparams={'" + words + " '}' input.zrl");
  EXPECT_EQ(outcome.errors, ".source" + words + " -filter=a_1 -silent\n");
}

TEST_F(SolverProcess, MayPrintAMillionAtoms) {
  write_script(
      "fake",
      "echo '{a_2(p, default, 1)'\n"
      "awk 'BEGIN { for (i = 0; i < 1000000; ++i) print \", a_2(p, default, \" i \")\" }'\n"
      "echo '}'\n");
  const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
  EXPECT_TRUE(outcome.output.starts_with("{p(1), p(0), p(1), "));
  EXPECT_TRUE(outcome.output.ends_with(", p(999998), p(999999)}\n"));
  EXPECT_EQ(outcome.errors, "");
}

struct Garbage {
  std::string_view name, commands, output, errors;
  friend void PrintTo(const Garbage& test, std::ostream* out) { *out << test.name; }
};

class SolverGarbage : public SolverProcess, public testing::WithParamInterface<Garbage> {};

TEST_P(SolverGarbage, LeavesTheStatusAlone) {
  write_script("fake", GetParam().commands);
  const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
  EXPECT_EQ(outcome.output, GetParam().output);
  EXPECT_EQ(outcome.errors, GetParam().errors);
  EXPECT_EQ(outcome.status, "0\n");
}

constexpr std::string_view kSyntax = "Internal parser invocation: syntax error.\n";
constexpr Garbage kGarbage[] = {
    {"bytes_of_no_token", "printf '\\000\\001\\377#;. {}\\r\\n'", "{}\n", ""},
    {"open_brace", "printf '{'", "", kSyntax},
    {"capital_word", "echo '{} Usage'", "{}\n", kSyntax},
    {"half_an_atom", "printf '{} {a_1(a, default'", "{}\n", kSyntax},
    {"unfinished_string", "printf '{a_1(\"x, default)}'", "{x}\n", ""},
    {"words_without_commas", "echo 'one two {}'", "one\ntwo\n{}\n", ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, SolverGarbage, testing::ValuesIn(kGarbage),
                         [](const auto& test) { return std::string(test.param.name); });

}    // namespace
}    // namespace zarel
