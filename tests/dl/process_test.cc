// process_test.cc - a clingo that fails, lies, is slow or is killed (scripts stand for the faults
// that the real one lacks), and standard streams with faults of their own.
#include <chrono>
#include <csignal>

#include "dl/clingo_process.h"
#include "dl/failure.h"
#include "dl/model_reader.h"
#include "run_dl.h"

namespace dl_test {
namespace {

// A search that takes minutes.
constexpr std::string_view kHard =
    "#maxint = 12. q(X,1) v q(X,2) v q(X,3) v q(X,4) v q(X,5) v q(X,6) v q(X,7) v q(X,8) v q(X,9) "
    "v q(X,10) v q(X,11) v q(X,12) :- #int(X).\n:- q(X,Y), q(Z,Y), X < Z.\n";

struct Script {
  std::string_view name, text, errors;
  std::string output = "";
  int status = 1;
  std::string_view options = "", program = "a.";
  friend void PrintTo(const Script& test, std::ostream* out) { *out << test.name; }
};
class Scripts : public testing::TestWithParam<Script> {};
TEST_P(Scripts, StandForClingo) {
  const Script& test = GetParam();
  const WorkFolder folder;
  folder.write_script("fake", test.text);
  folder.write("p", test.program);
  EXPECT_EQ(folder.run("dl p -clingo=./fake " + std::string(test.options)),
            (Outcome{test.output, std::string(test.errors), test.status}));
}
constexpr std::string_view kCut = "dl: the search was cut after 1 s; there may be more answers\n";
const std::string kManyFacts = numbered(100'000, "p(N).\n");    // more than pipes hold
// Atoms with a blank behind each, more than is read at once.
#define LONG_LINE "seq -f 'p(%.0f,\"a b\")' 30000 | tr '\\n' ' '; "
const Script kScripts[] = {
    {"prints_a_long_answer_set", "cat >/dev/null; " LONG_LINE "echo q; echo SATISFIABLE; exit 30",
     "", "{" + numbered(30'000, "p(N,\"a b\"), ", 1) + "q}\n", 0},
    {"ends_within_a_long_answer_set",
     "cat >/dev/null; echo SATISFIABLE; echo a; " LONG_LINE "exit 30",
     "dl: clingo ended without a complete answer (status 30)\n", "{a}\n"},
    {"is_cut_within_a_long_answer_set", "cat >/dev/null; echo a; " LONG_LINE "exec sleep 100", kCut,
     "{a}\n", 2, "-time=1"},
    {"killed", "kill -9 $$", "dl: clingo died of signal 9 (Killed)\n"},
    {"half_a_line", "cat >/dev/null; echo SATISFIABLE; printf 'a b'; exit 30",
     "dl: clingo ended without a complete answer (status 30)\n"},
    {"ends_as_if_more_were_not_wanted", "cat >/dev/null; echo a; echo SATISFIABLE; exit 10",
     "dl: clingo ended without a complete answer (status 10)\n", "{a}\n"},
    {"no_final_line", "cat >/dev/null; exit 30",
     "dl: clingo ended without a complete answer (status 30)\n"},
    {"unknown_result", "echo UNKNOWN; exit 0",
     "dl: clingo ended without a complete answer (status 0)\n"},
    {"interrupted", "echo UNKNOWN; exit 1",
     "dl: clingo was interrupted before its search was complete (status 1)\n"},
    {"out_of_memory", "exit 33", "dl: clingo ran out of memory\n"},
    {"input_not_read", "exec 0<&-; exit 65",
     "dl: clingo was interrupted before its search was complete (status 65)\n"},
    {"error_in_the_translation", "cat >/dev/null; echo '-:1:2-3: error: bad' >&2; exit 65",
     "p:1: clingo: bad\n"},
    {"overflow_inside_clingo", "echo '*** ERROR: (clingo): x: Integer overflow!' >&2; exit 65",
     "dl: the weights of weak constraints leave the 32 bits of clingo\n"},
    {"too_old", "echo \"*** ERROR: (clingo): unknown option: 'warn'\" >&2; exit 1",
     "dl: clingo: unknown option: 'warn'\n"},
    {"another_major_version",
     "test $1 = --version && echo clingo version 6.0.1 || { cat >/dev/null; exit 64; }",
     "dl: clingo ended without a complete answer (status 64); this is clingo 6.0.1, and it was "
     "tested with 5.4.1 and 5.8.1\n"},
    {"error_of_another_major_version",
     "test $1 = --version && echo clingo version 50.1 || { echo '*** ERROR: (clingo): no' >&2; "
     "exit 65; }",
     "dl: clingo: no; this is clingo 50.1, and it was tested with 5.4.1 and 5.8.1\n"},
    {"error_without_a_place", "echo '*** ERROR: (clingo): worse' >&2; exit 65",
     "dl: clingo: worse\n"},
    {"stops_reading", "head -n 2 >/dev/null; exec 0<&-; echo '-:2:1-2: error: bad' >&2; exit 65",
     "p:2: clingo: bad\n", "", 1, "", kManyFacts},
    {"is_given_the_search_options",
     "cat >/dev/null; echo \"$*\" | sed 's/^--verbose/x/; s/ /_/g'; echo SATISFIABLE; exit 30", "",
     "{x=0_--warn=none_--fast-exit_--parallel-mode=3_--models=2_-}\n", 0, "-threads=3 -n=2"},
    {"prints_in_pieces",
     "cat >/dev/null; printf 'p(\"a '; sleep 0.1; printf 'b\\\\'; sleep 0.1; printf '\\\\\") q'; "
     "sleep 0.1; printf '\\nSATISFIABLE\\n'; exit 30",
     "", "{p(\"a b\\\"), q}\n", 0},
    {"answers_before_a_fault", "cat >/dev/null; echo a; sleep 0.2; kill -9 $$",
     "dl: clingo died of signal 9 (Killed)\n", "{a}\n"},
    {"dies_in_the_count_of_instances",
     "test $1 = --mode=gringo && exit 3; cat >/dev/null; echo a; echo SATISFIABLE; exit 30",
     "dl: clingo ended before all instances of the rules were counted\n", "{a}\n", 1, "-stats"},
    {"says_of_nothing_that_it_is_best",
     "cat >/dev/null; echo 'Optimization: 1'; echo a; echo SATISFIABLE; exit 11",
     "dl: clingo was interrupted before its search was complete (status 11)\n", "", 1, "",
     "a. :~ a."},
    {"finds_something_in_time",
     "cat >/dev/null; trap 'echo UNKNOWN; exit 11' TERM; echo a; while :; do sleep 0.1; done", kCut,
     "{a}\n", 2, "-time=1"},
    {"does_not_listen", "cat >/dev/null; trap '' TERM; echo a; while :; do sleep 0.1; done", kCut,
     "{a}\n", 2, "-time=1"},
    {"goes_on_for_ever_with_the_same_costs",
     "cat >/dev/null; while :; do echo 'Optimization: 3'; done",
     "dl: clingo finds the same costs again and again, which is a fault of its version; clingo 5.7 "
     "or another configuration may find the best\n",
     "", 1, "", "a v b. :~ a."},
    {"shows_its_best_in_time",
     "cat >/dev/null; trap 'echo b; echo SATISFIABLE; exit 11' TERM; echo 'Optimization: 3'; "
     "echo 'Optimization: 1'; while :; do sleep 0.1; done",
     "dl: the search was cut after 1 s; the best answer set so far is not proven to be optimal\n",
     "Best model: {b}\nCost ([Weight:Level]): <[1:1]>\n", 2, "-time=1", "a v b. :~ a. [3:1] :~ b."},
    {"shows_its_best_when_interrupted",
     "cat >/dev/null; trap 'echo b; echo SATISFIABLE; exit 11' TERM; echo 'Optimization: 1'; "
     "kill -INT $PPID; while :; do sleep 0.1; done",
     "dl: the search was interrupted; the best answer set so far is not proven to be optimal\n",
     "Best model: {b}\nCost ([Weight:Level]): <[1:1]>\n", 2, "", "b. :~ b."},
    {"has_proved_its_best_in_time",
     "cat >/dev/null; trap 'echo b; echo OPTIMUM FOUND; exit 11' TERM; echo 'Optimization: 1'; "
     "while :; do sleep 0.1; done",
     kCut, "Best model: {b}\nCost ([Weight:Level]): <[1:1]>\n", 2, "-time=1", "b. :~ b."},
    {"has_no_brave_answer_in_time",
     "cat >/dev/null; trap 'echo a; echo SATISFIABLE; exit 11' TERM; while :; do sleep 0.1; done",
     kCut, "", 2, "-time=1 -brave", "a v b. b?"},
    {"outlives_its_output", "cat >/dev/null; exec sleep 100 >&-", kCut, "", 2, "-time=1"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Scripts, testing::ValuesIn(kScripts), case_name);

constexpr std::string_view kBadDescriptor =
    "dl: cannot write to standard output: Bad file descriptor\n";
constexpr std::string_view kLost = "dl: cannot write to standard output\n";
constexpr ShellCase kStreams[] = {
    {"help_on_a_full_disk", "dl -help >/dev/full", "", kLost, 1},
    {"version_on_a_full_disk", "dl -version >/dev/full", "", kLost, 1},
    {"translation_on_a_full_disk", "echo a. >p; dl p -translate >/dev/full", "", kLost, 1},
    {"answers_on_a_full_disk", "echo a. >p; dl p >/dev/full", "",
     "dl: cannot write to standard output: No space left on device\n", 1},
    {"pipe_that_is_left", "seq -f 'p(%.0f).' 99999 >many; dl many | head -c 5", "{p(1)",
     "dl: cannot write to standard output: Broken pipe\n", 0},
    {"closed_output", "echo a. >p; dl p >&-", "", kBadDescriptor, 1},
    {"closed_input_and_output", "echo a. >p; dl p <&- >&-", "", kBadDescriptor, 1},
    {"closed_input_and_errors", "echo a. >p; dl p <&- 2>&-", "{a}\n", "", 0},
    {"all_closed", "echo a. >p; dl p <&- >&- 2>&-", "", "", 1},
    {"all_signals_ignored", "echo a. >p; env --ignore-signal dl p", "{a}\n"},
    {"no_environment", "echo a. >p; env -i $(command -v dl) p", "{a}\n"},
    // Who opens a pipe for writing waits until dl reads from it.
    {"signals_while_reading",
     "mkfifo f; for s in INT TERM; do dl f & exec 3>f; kill -$s $!; wait $!; echo $?; exec 3>&-; "
     "done; dl f -time=1",
     "2\n2\n",
     "dl: the search was interrupted\ndl: the search was interrupted\n"
     "dl: the search was cut after 1 s\n",
     2},
    {"no_program", "echo a. >p; dl p -clingo=./p", "",
     "dl: cannot run \"./p\": Permission denied\n", 1},
    // Nothing of the command line and of the program ever meets a shell.
    {"command_line",
     "echo a. >p; dl '-clingo=;touch canary' '-filter=$(touch canary)' p; ls canary 2>/dev/null",
     "", "dl: cannot run \";touch canary\": No such file or directory\n", 2},
    {"names",
     R"x(echo 'p("$(touch canary)").' >names; echo "p(\"\`touch canary\`';touch canary;\")." )x"
     R"x(>'$(touch canary)'; dl names '$(touch canary)' -filter='`touch canary`,p'; )x"
     "ls canary 2>/dev/null",
     "{p(\"$(touch canary)\"), p(\"`touch canary`';touch canary;\")}\n", "", 2},
};
INSTANTIATE_TEST_SUITE_P(Streams, Commands, testing::ValuesIn(kStreams), case_name);

TEST(LongLines, AreTakenInPiecesThatEndBetweenAtoms) {
  const std::string line = numbered(20'000, "p(N,\"a \\\" b\\\\\") q(\" \") ") + "r(\"" +
                           numbered(20'000, " N") + "\\\" \")" + numbered(9'000, " -q(N)");
  const std::string all = "a b\n" + line + "\n\nOTHER" + numbered(20'000, " N") + "\nb c";
  std::size_t given = 0;
  dl::LineReader reader([&](char* into, std::size_t room) {
    const std::size_t size = all.copy(into, std::min(room, given * 7 % 5'000 + 1), given);
    given += size;
    return size;
  });
  std::string taken;
  std::size_t pieces = 0;
  do {
    std::string_view text;
    while (reader.next(text)) (taken += text) += '\n';
    if (!reader.next_piece(text)) continue;
    ++pieces;
    taken += text;
    std::size_t atoms = 0;
    dl::each_atom(text, [&](std::string_view atom) {
      const std::string_view name = atom.substr(0, atom.find('('));
      atoms += (name == "p" || name == "q" || name == "r" || name == "-q") && atom.back() == ')'
                   ? atom.size() + 1
                   : 0;
    });
    EXPECT_EQ(atoms, text.size());
  } while (reader.wait());
  EXPECT_EQ(taken + "b c", all);
  EXPECT_GT(pieces, 20);
  EXPECT_TRUE(reader.has_rest());
}

TEST(Process, NothingToWaitForIsAFailure) {
  std::string message;
  try {
    dl::ClingoProcess().end();
  } catch (const dl::Failure& failure) {
    message = failure.diagnostic.text;
  }
  std::signal(SIGPIPE, SIG_DFL);    // as the programs of other tests expect it
  EXPECT_EQ(message, "cannot wait for clingo: No child processes");
}

TEST(Process, TimeLimitCutsTheSearch) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(run(kHard, "-time=1"), (Outcome{"", std::string(kCut), 2}));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

// What dl says about a program with many facts in front, so that clingo must read before all of it
// is translated; and what became of its clingo: not started, gone, or left behind.
std::string outcome_while_clingo_reads(std::string_view last_lines, std::string_view options = "") {
  const WorkFolder folder;
  folder.write("p", kManyFacts + std::string(last_lines));
  folder.write_script("fake", "echo $$ >pid; exec clingo \"$@\"");
  const Outcome outcome = folder.run("dl p -clingo=./fake " + std::string(options));
  const std::string pid = folder.read("pid");
  const bool is_left = !pid.empty() && ::kill(std::stoi(pid), 0) == 0;
  return outcome.output + outcome.errors + std::to_string(outcome.status) +
         (pid.empty() ? " not started"
          : is_left   ? " left behind"
                      : " gone");
}

TEST(Process, ClingoReadsAlongAndIsEndedByALaterMistake) {
  EXPECT_EQ(outcome_while_clingo_reads("a :- not p(X)."),
            "p:100001: unsafe rule: no positive literal of the body binds the variable X\n1 gone");
  EXPECT_EQ(outcome_while_clingo_reads("a(#maxint)."),
            "p:100001: #maxint needs a bound on integers, #maxint or -N=\n1 gone");
  EXPECT_EQ(outcome_while_clingo_reads("a(1).", "-filter=a"), "{a(1)}\n0 gone");
  EXPECT_EQ(outcome_while_clingo_reads("a b.", "-translate"),
            "p:100001: syntax error, unexpected name\n1 not started");
}

TEST(Process, ClingoIsNotStartedForWhatCannotBeParsed) {
  EXPECT_EQ(outcome_while_clingo_reads("a b."),
            "p:100001: syntax error, unexpected name\n1 not started");
}

TEST(Process, ClingoIsToldOfQueriesAndWeakConstraintsInTheLastLine) {
  EXPECT_EQ(outcome_while_clingo_reads("p(1), p(0)?"), "true\n0 gone");
  EXPECT_EQ(outcome_while_clingo_reads("a v b. :~ a. [2:1]", "-filter=a,b"),
            "Best model: {b}\nCost ([Weight:Level]): <[0:1]>\n0 gone");
}

// What is better than {n} takes minutes to exclude.
TEST(Process, TimeLimitLeavesTheBestAnswerSetSoFar) {
  std::string program(kHard);
  program.insert(program.find("(X).") + 3, ", h");
  program += "h v n. :~ n. [2:3] ";
  const std::string_view end =
      "dl: the search was cut after 2 s; the best answer set so far is not proven to be optimal\n";
  EXPECT_EQ(run(program + ":~ not h. [1:3]", "-time=2"),
            (Outcome{"Best model: {n}\nCost ([Weight:Level]): <[3:3]>\n", std::string(end), 2}));
  // Several levels are looked for from below.
  EXPECT_EQ(run(program + ":~ n, X = 4. [X:X]", "-time=2"),
            (Outcome{"", "dl: the search was cut after 2 s; there may be more answers\n", 2}));
}

// Starts dl on the hard program in the background, ends it with the signal, and tells what it
// printed, its status, and whether its clingo is alive; dead but not yet buried by init is dead.
std::string outcome_of_signal(const std::string& signal) {
  const WorkFolder folder;
  folder.write("p", kHard);
  folder.write_script("fake", "echo $$ >pid; exec clingo \"$@\"");
  return folder
      .run(
          "dl p -clingo=./fake 2>&1 & dl=$!\n"
          "until test -s pid; do sleep 0.1; done; sleep 0.5\n"
          "kill -" +
          signal +
          " $dl; wait $dl; echo $?\n"
          "alive() { grep -s '^State:.[^ZX]' /proc/$(cat pid)/status; }\n"
          "for i in $(seq 20); do alive >left || break; sleep 0.1; done; cat left")
      .output;
}

TEST(Process, SignalsEndClingoAndDl) {
  for (const std::string signal : {"TERM", "INT"}) {
    EXPECT_EQ(outcome_of_signal(signal),
              "dl: the search was interrupted; there may be more answers\n2\n");
  }
}

TEST(Process, ClingoDoesNotOutliveAKilledDl) {
  EXPECT_EQ(outcome_of_signal("KILL"), "137\n");
  EXPECT_EQ(outcome_of_signal("HUP"), "129\n");
}

}    // namespace
}    // namespace dl_test
