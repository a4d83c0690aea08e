// solver_process_test.cc - how the solver is found and called, and solvers that fail, die, hang or
// talk too much.

#include "shell_fixture.h"

namespace zarel {
namespace {

class SolverProcess : public ShellTest {
 protected:
  SolverProcess() { write("input.zrl", "a.\n"); }
};

TEST_F(SolverProcess, MayBeMissingOrNoProgram) {
  std::filesystem::create_directory(folder() / "folder");
  for (const std::string solver : {"./missing", "./input.zrl", "./folder"}) {
    write(".output", "{a_1(old, default)}");
    const Outcome outcome = run("zarel -silent -solver=" + solver + " input.zrl");
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(contains(outcome.errors, solver)) << outcome.errors;    // the shell's words
    EXPECT_FALSE(contains(outcome.errors, "impossible")) << outcome.errors;
    EXPECT_EQ(outcome.status, "0\n");
  }
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
  link("bin/zarel", "linked");
  write_script("bin/tool", "echo '{a_1(beside, default)}'\n");
  write_script("other/tool", "echo '{a_1(path, default)}'\n");
  const std::string call = "zarel -silent -solver=tool input.zrl";
  EXPECT_EQ(run("bin/" + call).output, "{beside}\n");
  EXPECT_EQ(run("(unset PATH; bin/" + call + ")").output, "{beside}\n");
  EXPECT_EQ(run("(PATH=; bin/" + call + ")").output, "{beside}\n");
  EXPECT_EQ(run("./linked -silent -solver=tool input.zrl").output, "{beside}\n");
  EXPECT_EQ(run("PATH=\"$PWD/other:$PATH\"; bin/" + call).output, "{path}\n");
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

TEST_F(SolverProcess, IsCalledWithNothingThatTheProgramSays) {
  const std::string name = "\"'$(touch canary)`touch canary`';touch canary;\n";
  const std::string text = name + "touch canary\n\"";
  write(name, "d. a@" + text + ". " + text + "(" + text + ") :- d. " + text + "[" + text + "->" +
                  text + "]. b(f(" + text + ")). #namespace(" + text + "," + text + ") " +
                  "#template t{e(1)}(1){ t(X) :- e(X). } c(X) :- t{" + text + "(*)}(X).");
  write_script("fake", "echo \"$*\" >&2\n");
  const Outcome outcome =
      run("for file in *canary*; do zarel -silent -linktemplates "
          "-solver=./fake -filter='$(touch canary)' \"$file\"; "
          "zarel -silent -linktemplates \"$file\"; done");
  EXPECT_EQ(outcome.errors, ".source -filter=a_1 -filter=a_2 -filter=a_5 -silent\n");
  EXPECT_TRUE(contains(outcome.output, text + "(" + text + ")")) << outcome.output;
  EXPECT_FALSE(std::filesystem::exists(folder() / "canary"));
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

// Sends Ctrl-C to all that runs, and shows how Zarel ended and what is still alive then.
constexpr std::string_view kInterrupt =
    "setsid env --default-signal=INT zarel -silent -solver=./fake input.zrl & group=$!\n"
    "until test -s started; do sleep 0.01; done\n"
    "kill -s INT -- -$group; wait $group; echo $?\n"
    "alive() { cat /proc/[0-9]*/stat 2> none | grep \" [^ZX] [0-9]* $group \"; }\n"
    "for i in $(seq 50); do alive > left || break; sleep 0.1; done; cat left";

TEST_F(SolverProcess, EndsWithZarelWhenItHangsAndIsInterrupted) {
  write_script("fake", "echo > started; exec sleep 100\n");
  EXPECT_EQ(run(std::string(kInterrupt)).output, "130\n");
}

TEST_F(SolverProcess, IsInterruptedWithItsClingo) {
  std::string places = "q(X,0)";
  std::string holes = "p(0). p(100). ";
  for (int i = 1; i < 14; ++i) {
    places += " v q(X," + std::to_string(i) + ")";
    holes += "p(" + std::to_string(i) + "). ";
  }
  write("input.zrl", holes + places + " :- p(X). :- q(X,Y), q(Z,Y), X < Z.");
  write_script("clingo", "echo > started; exec clingo \"$@\"\n");
  write_script("fake", "exec dl \"$@\" -clingo=./clingo\n");
  EXPECT_EQ(run(std::string(kInterrupt)).output, "130\n");
}

struct Solver {
  std::string_view name, commands, output, errors;
  friend void PrintTo(const Solver& test, std::ostream* out) { *out << test.name; }
};

class SolverGarbage : public SolverProcess, public testing::WithParamInterface<Solver> {};

TEST_P(SolverGarbage, LeavesTheStatusAlone) {
  write_script("fake", GetParam().commands);
  const Outcome outcome = run("zarel -silent -solver=./fake input.zrl");
  EXPECT_EQ(outcome.output, GetParam().output);
  EXPECT_EQ(outcome.errors, GetParam().errors);
  EXPECT_EQ(outcome.status, "0\n");
}

constexpr std::string_view kSyntax = "Internal parser invocation: syntax error.\n";
constexpr Solver kSolvers[] = {
    {"nothing", "exit 1", "", ""},
    {"bytes_of_no_token", "printf '\\000\\001\\377#;. {}\\r\\n'", "{}\n", ""},
    {"open_brace", "printf '{'", "", kSyntax},
    {"capital_word", "echo '{} Usage'", "{}\n", kSyntax},
    {"half_an_atom", "printf '{} {a_1(a, default'", "{}\n", kSyntax},
    {"half_an_answer_set", "printf '{a_1(a, b)} {a_1(a, b), '; kill -KILL $$", "{a@b}\n",
     "Killed\nInternal parser invocation: syntax error.\n"},
    {"unfinished_string", "printf '{a_1(\"x, default)}'", "{x}\n", ""},
    {"words_without_commas", "echo 'one two {}'", "one\ntwo\n{}\n", ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, SolverGarbage, testing::ValuesIn(kSolvers),
                         [](const auto& test) { return std::string(test.param.name); });

}    // namespace
}    // namespace zarel
