// solver_process_test.cc - how the solver is found and called, and solvers that fail, die, hang or
// talk too much.

#include "support/run_program.h"

namespace zarel {
namespace {

// In "fake" stands a solver for the program in "input.zrl".
class SolverProcess : public testing::Test, protected WorkFolder {
 protected:
  SolverProcess() { write("input.zrl", "a.\n"); }
  Outcome run_fake(std::string_view commands) const {
    write_script("fake", commands);
    return run("zarel -silent -solver=./fake input.zrl");
  }
};

TEST_F(SolverProcess, MayBeMissingOrNoProgram) {
  std::filesystem::create_directory(path() / "folder");
  for (const std::string solver : {"./missing", "./input.zrl", "./folder"}) {
    write(".output", "{a_1(old, default)}");
    const Outcome outcome = run("zarel -silent -solver=" + solver + " input.zrl");
    EXPECT_NE(outcome.errors.find(solver), std::string::npos);    // the shell's words
    EXPECT_EQ(outcome.errors.find("impossible"), std::string::npos) << outcome.errors;
    EXPECT_EQ(outcome, (Outcome{"", outcome.errors, 0}));
  }
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
  EXPECT_NE(outcome.output.find(text + "(" + text + ")"), std::string::npos) << outcome.output;
  EXPECT_FALSE(std::filesystem::exists(path() / "canary"));
}

TEST_F(SolverProcess, MayPrintAMillionAtoms) {
  const Outcome outcome = run_fake(
      "echo '{a_2(p, default, 1)'\n"
      "seq -f ', a_2(p, default, %.0f)' 0 999999\n"
      "echo '}'\n");
  EXPECT_TRUE(outcome.output.starts_with("{p(1), p(0), p(1), "));
  EXPECT_TRUE(outcome.output.ends_with(", p(999998), p(999999)}\n"));
  EXPECT_EQ(outcome.errors, "");
}

// What ends Zarel, sent to it alone or, as a terminal's interrupt is, to its group.
struct End {
  std::string_view name, signal, status, solver, target = "$zarel";
  friend void PrintTo(const End& test, std::ostream* out) { *out << test.name; }
};
constexpr std::string_view kHanging = "echo > started; exec sleep 100\n";
constexpr std::string_view kDeaf =
    "trap '' INT TERM; sleep 100 & setsid sleep 100 & echo > started; sleep 100; sleep 100\n";
constexpr std::string_view kSearching = "dl \"$@\" -clingo=./clingo 2> said; echo more\n";
constexpr End kEnds[] = {
    {"interrupt_of_all", "INT", "130", kHanging, "-$zarel"},
    {"interrupt_of_a_search", "INT", "130", kSearching, "-$zarel"},
    {"interrupt", "INT", "130", kSearching},
    {"end", "TERM", "143", kSearching},
    {"end_of_a_deaf_solver", "TERM", "143", kDeaf},
    {"end_of_the_terminal", "HUP", "129", kSearching},
    {"death", "KILL", "137", kSearching},
    {"death_with_a_deaf_solver", "KILL", "137", kDeaf},
};
class SolverEnd : public SolverProcess, public testing::WithParamInterface<End> {};
TEST_P(SolverEnd, ComesWithZarel) {
  write("input.zrl",
        "p(1). p(2). p(3). p(4). p(5). p(6). p(7). p(8). p(9). p(10). p(11). p(12). p(13). "
        "q(X,1) v q(X,2) v q(X,3) v q(X,4) v q(X,5) v q(X,6) v q(X,7) v q(X,8) v q(X,9) v "
        "q(X,10) v q(X,11) v q(X,12) :- p(X). :- q(X,Y), q(Z,Y), X < Z.");
  write_script("clingo", "echo > started; exec clingo \"$@\"\n");
  write_script("fake", GetParam().solver);
  // All that runs carries the mark in its environment. Who is killed cannot wait for the others.
  const Outcome outcome = run(
      "mark=ZAREL_TEST=$PWD\n"
      "setsid env --default-signal=INT $mark zarel -silent -solver=./fake input.zrl & zarel=$!\n"
      "until test -s started; do sleep 0.01; done\n"
      "kill -s " +
      std::string(GetParam().signal) + " -- " + std::string(GetParam().target) +
      "; wait $zarel; echo $?\n"
      "alive() { grep -lsxzF $mark /proc/[0-9]*/environ; }\n" +
      (GetParam().signal == "KILL"
           ? "for i in $(seq 300); do alive > left; test -s left || break; sleep 0.1; done\n"
           : "") +
      "alive");
  EXPECT_EQ(outcome.output, std::string(GetParam().status) + "\n");
}
INSTANTIATE_TEST_SUITE_P(Cases, SolverEnd, testing::ValuesIn(kEnds), case_name);

constexpr ShellCase kCalls[] = {
    {"shares_standard_error_and_input",
     "echo 'cat >&2' > fake; chmod +x fake; echo word | zarel -silent -solver=./fake input.zrl", "",
     "word\n"},
    {"sees_the_banner_written_before",
     "echo 'head -c 7 shown >&2' > fake; chmod +x fake; zarel -solver=./fake input.zrl > shown", "",
     "Zarel. "},
    {"is_found_beside_the_program_behind_the_search_path",
     "mkdir bin other; cp \"$(command -v zarel)\" bin; ln -s bin/zarel linked\n"
     "echo 'echo \"{a_1(beside, default)}\"' > bin/tool\n"
     "echo 'echo \"{a_1(path, default)}\"' > other/tool; chmod +x */tool\n"
     "call='zarel -silent -solver=tool input.zrl'; bin/$call; (unset PATH; bin/$call)\n"
     "(PATH=; bin/$call); ./linked ${call#zarel}; PATH=\"$PWD/other:$PATH\"; bin/$call",
     "{beside}\n{beside}\n{beside}\n{beside}\n{path}\n"},
    {"finds_what_the_shell_finds_without_a_search_path",
     "cp \"$(command -v zarel)\" .; echo 'echo \"{a_1(a, default)}\" | cat' > tool; chmod +x tool\n"
     "env -i ./zarel -silent -solver=tool input.zrl; PATH= ./zarel -silent -solver=tool input.zrl",
     "{a}\n{a}\n"},
    // Who reads is shown an answer before the solver has ended, and ends it by going away.
    {"is_read_while_it_writes",
     "echo \"echo '{a_1(a, default)}'; seq 300 | while read i; do test -s shown && break; sleep "
     "0.1; "
     "done; wc -l < shown\" > fake; chmod +x fake\n"
     "zarel -silent -solver=./fake input.zrl > shown; cat shown",
     "{a}\n1\n"},
    {"ends_when_nobody_reads",
     "echo \"echo '{}'; sleep 30; echo late >&2\" > fake; chmod +x fake\n"
     "(zarel -silent -solver=./fake input.zrl; echo $? >&2) | head -n 1\n"
     "(trap '' PIPE; zarel -silent -solver=./fake input.zrl; echo $? >&2) | head -n 1\n"
     "echo \"yes '{}'\" > fake; (trap '' PIPE; zarel -silent -solver=./fake input.zrl) | head -n 1",
     "{}\n{}\n{}\n",
     "141\nStandard output could not be written.\n1\nStandard output could not be written.\n"},
    {"runs_where_all_signals_are_ignored",
     "env --ignore-signal zarel -silent input.zrl; env --block-signal zarel -silent input.zrl",
     "{a}\n{a}\n"},
    {"may_have_a_blank_in_its_path_and_takes_a_long_command",
     "mkdir 'my tools'; echo 'echo \"$@\" > said' > 'my tools/fake'; chmod +x my*/fake\n"
     "words=$(seq -f -option%.0f -s ' ' 2000)\n"
     "zarel -silent '-solver=my tools/fake' '-solverparams={' $words '}' input.zrl\n"
     "test \"$(cat said)\" = \".source $words -filter=a_1 -silent\"",
     ""},
};
class SolverCalls : public SolverProcess, public testing::WithParamInterface<ShellCase> {};
TEST_P(SolverCalls, GiveTheExpectedOutcome) {
  EXPECT_EQ(run(GetParam().commands), GetParam().outcome());
}
INSTANTIATE_TEST_SUITE_P(Cases, SolverCalls, testing::ValuesIn(kCalls), case_name);

// What the solver does, and what Zarel makes of it.
constexpr std::string_view kSyntax = "Internal parser invocation: syntax error.\n";
constexpr ShellCase kGarbage[] = {
    {"nothing", "exit 1", ""},
    {"bytes_of_no_token", "printf '\\000\\001\\377#;. {}\\r\\n'", "{}\n"},
    {"open_brace", "printf '{'", "", kSyntax},
    {"capital_word", "echo '{} Usage'", "{}\n", kSyntax},
    {"half_an_atom", "printf '{} {a_1(a, default'", "{}\n", kSyntax},
    {"half_an_answer_set", "printf '{a_1(a, b)} {a_1(a, b), '; kill -KILL $$", "{a@b}\n",
     "Killed\nInternal parser invocation: syntax error.\n"},
    {"death_by_a_signal_that_no_shell_tells", "echo '{}'; kill -INT $$", "{}\n",
     "The solver ended by signal 2 (Interrupt).\n"},
    {"death_of_the_shell", "echo '{}'; kill -KILL $PPID; exec sleep 100", "{}\n",
     "The solver ended by signal 9 (Killed).\n"},
    {"unfinished_string", "printf '{a_1(\"x, default)}'", "{x}\n"},
    {"words_without_commas", "echo 'one two {}'", "one\ntwo\n{}\n"},
};
class SolverGarbage : public SolverProcess, public testing::WithParamInterface<ShellCase> {};
TEST_P(SolverGarbage, LeavesTheStatusAlone) {
  EXPECT_EQ(run_fake(GetParam().commands), GetParam().outcome());
}
INSTANTIATE_TEST_SUITE_P(Cases, SolverGarbage, testing::ValuesIn(kGarbage), case_name);

}    // namespace
}    // namespace zarel
