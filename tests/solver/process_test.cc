// process_test.cc - a clingo that fails, lies, is slow or is killed; scripts stand for the faults
// that the real one lacks.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

// A search that takes minutes.
constexpr std::string_view kHard =
    "#maxint = 12. q(X,1) v q(X,2) v q(X,3) v q(X,4) v q(X,5) v q(X,6) v q(X,7) v q(X,8) v q(X,9) "
    "v q(X,10) v q(X,11) v "
    "q(X,12) :- #int(X).\n:- q(X,Y), q(Z,Y), X < Z.\n";

Outcome run_with(std::string_view script, const std::string& options = "",
                 std::string_view program = "a.") {
  const Directory directory;
  directory.write_script("fake", script);
  directory.write("p", program);
  return directory.run("p -clingo=./fake " + options);
}

struct Fault {
  std::string_view name;
  std::string_view script;
  std::string_view err;
  friend void PrintTo(const Fault& test, std::ostream* out) { *out << test.name; }
};
constexpr Fault kFaults[] = {
    {"killed", "kill -9 $$", "dl: clingo died of signal 9 (Killed)\n"},
    {"half_a_line", "cat >/dev/null; printf 'a b'; exit 30",
     "dl: clingo ended without a complete answer (status 30)\n"},
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
     "dl: the values of a #sum, or the weights of weak constraints, leave the 32 bits of clingo\n"},
    {"too_old", "echo \"*** ERROR: (clingo): unknown option: 'warn'\" >&2; exit 1",
     "dl: clingo: unknown option: 'warn'\n"},
    {"error_without_a_place", "echo '*** ERROR: (clingo): worse' >&2; exit 65",
     "dl: clingo: worse\n"},
};
class Faults : public testing::TestWithParam<Fault> {};
TEST_P(Faults, OfClingoAreErrors) {
  const Outcome outcome = run_with(GetParam().script);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, GetParam().err);
  EXPECT_EQ(outcome.status, 1);
}
INSTANTIATE_TEST_SUITE_P(Cases, Faults, testing::ValuesIn(kFaults), case_name);

struct Streams {
  std::string_view name, arguments, out, err;
  int status;
  friend void PrintTo(const Streams& test, std::ostream* to) { *to << test.name; }
};
constexpr std::string_view kBadDescriptor =
    "dl: cannot write to standard output: Bad file descriptor\n";
constexpr std::string_view kLost = "dl: cannot write to standard output\n";
constexpr Streams kStreams[] = {
    {"help_on_a_full_disk", "-help >/dev/full", "", kLost, 1},
    {"version_on_a_full_disk", "-version >/dev/full", "", kLost, 1},
    {"translation_on_a_full_disk", "p -translate >/dev/full", "", kLost, 1},
    {"answers_on_a_full_disk", "p >/dev/full", "",
     "dl: cannot write to standard output: No space left on device\n", 1},
    {"pipe_that_is_left", "many | head -c 5", "{p(1)",
     "dl: cannot write to standard output: Broken pipe\n", 0},
    {"closed_output", "p >&-", "", kBadDescriptor, 1},
    {"closed_input_and_output", "p <&- >&-", "", kBadDescriptor, 1},
    {"closed_input_and_errors", "p <&- 2>&-", "{a}\n", "", 0},
    {"all_closed", "p <&- >&- 2>&-", "", "", 1},
    {"no_program", "p -clingo=./p", "", "dl: cannot run \"./p\": Permission denied\n", 1},
    // Nothing of the command line and of the program ever meets a shell.
    {"command_line", "'-clingo=;touch canary' '-filter=$(touch canary)' p; ls canary 2>/dev/null",
     "", "dl: cannot run \";touch canary\": No such file or directory\n", 2},
    {"names", "names '$(touch canary)' -filter='`touch canary`,p'; ls canary 2>/dev/null",
     "{p(\"$(touch canary)\"), p(\"`touch canary`';touch canary;\")}\n", "", 2},
};
class StandardStreams : public testing::TestWithParam<Streams> {};
TEST_P(StandardStreams, AreLookedAt) {
  const Directory directory;
  directory.write("p", "a.");
  std::string many;
  for (int i = 1; i < 100'000; ++i) many += "p(" + std::to_string(i) + ").";
  directory.write("many", many);
  directory.write("names", "p(\"$(touch canary)\").");
  directory.write("$(touch canary)", "p(\"`touch canary`';touch canary;\").");
  const Outcome outcome = directory.run(std::string(GetParam().arguments));
  EXPECT_EQ(outcome.out, GetParam().out);
  EXPECT_EQ(outcome.err, GetParam().err);
  EXPECT_EQ(outcome.status, GetParam().status);
}
INSTANTIATE_TEST_SUITE_P(Cases, StandardStreams, testing::ValuesIn(kStreams), case_name);

TEST(Process, PassesTheSearchOptionsOn) {
  const Outcome outcome = run_with(
      "cat >/dev/null; echo \"$*\" | sed 's/^--verbose/x/; s/ /_/g'; echo SATISFIABLE; exit 30",
      "-threads=3 -n=2");
  EXPECT_EQ(outcome.out, "{x=0_--warn=none_--fast-exit_--parallel-mode=3_--models=2_-}\n");
}

TEST(Process, ReadsOutputInPiecesOfAnyLength) {
  const Outcome outcome = run_with(
      "cat >/dev/null; printf 'p(\"a '; sleep 0.1; printf 'b\\\\'; sleep 0.1; printf '\\\\\") q'; "
      "sleep 0.1; "
      "printf '\\nSATISFIABLE\\n'; exit 30");
  EXPECT_EQ(outcome.out, "{p(\"a b\\\"), q}\n");
  EXPECT_EQ(outcome.err, "");
}

TEST(Process, ShowsAnswersBeforeAFault) {
  const Outcome outcome = run_with("cat >/dev/null; echo a; sleep 0.2; kill -9 $$");
  EXPECT_EQ(outcome.out, "{a}\n");
  EXPECT_EQ(outcome.err, "dl: clingo died of signal 9 (Killed)\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST(Process, AnAnswerSetIsBestOnlyWhenClingoSaysSo) {
  const Outcome outcome = run_with(
      "cat >/dev/null; echo 'Optimization: 1'; echo a; echo SATISFIABLE; exit 11", "", "a. :~ a.");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.status, 1);
}

TEST(Process, TimeLimitCutsTheSearch) {
  const auto begin = std::chrono::steady_clock::now();
  const Outcome outcome = run(kHard, "-time=1");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "dl: the search was cut after 1 s; there may be more answers\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
}

TEST(Process, TimeLimitKeepsWhatWasFound) {
  const Outcome outcome = run_with(
      "cat >/dev/null; trap 'echo UNKNOWN; exit 11' TERM; echo a; while :; do sleep 0.1; done",
      "-time=1");
  EXPECT_EQ(outcome.out, "{a}\n");
  EXPECT_EQ(outcome.status, 2);
}

TEST(Process, AClingoThatDoesNotListenIsEnded) {
  const Outcome outcome =
      run_with("cat >/dev/null; trap '' TERM; echo a; while :; do sleep 0.1; done", "-time=1");
  EXPECT_EQ(outcome.out, "{a}\n");
  EXPECT_EQ(outcome.status, 2);
}

TEST(Process, AnUnprovedModelIsNotShownWhenTheSearchIsCut) {
  const Outcome outcome = run_with(
      "cat >/dev/null; trap 'echo a; echo SATISFIABLE; exit 11' TERM; echo 'Optimization: 1'; "
      "while :; do sleep 0.1; done",
      "-time=1", "a. :~ a.");
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.status, 2);
}

// More than pipes hold, so that clingo must read before all of it is translated.
std::string large_program(std::string_view last_line) {
  std::string program;
  for (int i = 0; i < 100000; ++i) program += "p(" + std::to_string(i) + ").\n";
  return program += last_line;
}

// What dl says about the program, and what became of its clingo: not started, gone, or left behind.
std::string outcome_while_clingo_reads(const std::string& program, const std::string& options) {
  const Directory directory;
  directory.write("p", program);
  directory.write_script("fake", "echo $$ >pid; exec clingo \"$@\"");
  const Outcome outcome = directory.run("p -clingo=./fake " + options);
  const std::string pid = directory.read("pid");
  const bool is_left = !pid.empty() && ::kill(std::stoi(pid), 0) == 0;
  return outcome.out + outcome.err + std::to_string(outcome.status) +
         (pid.empty() ? " not started"
          : is_left   ? " left behind"
                      : " gone");
}

TEST(Process, ClingoReadsAlongAndIsEndedByALaterMistake) {
  EXPECT_EQ(outcome_while_clingo_reads(large_program("a b."), ""),
            "p:100001: syntax error, unexpected name\n1 gone");
  EXPECT_EQ(outcome_while_clingo_reads(large_program("a(#maxint)."), ""),
            "p:100001: #maxint needs a bound on integers, #maxint or -N=\n1 gone");
  EXPECT_EQ(outcome_while_clingo_reads(large_program("a(1)."), "-filter=a"), "{a(1)}\n0 gone");
  EXPECT_EQ(outcome_while_clingo_reads(large_program("a b."), "-translate"),
            "p:100001: syntax error, unexpected name\n1 not started");
}

// The last line decides how clingo is called, or there is more to read.
TEST(Process, ClingoWaitsForAProgramThatIsNotPlain) {
  for (const std::string_view line : {":~ p(1).\na b.", "p(X)?\na b.", "#include <q>\na b."}) {
    EXPECT_EQ(outcome_while_clingo_reads(large_program(line), ""),
              "p:100002: syntax error, unexpected name\n1 not started");
  }
  EXPECT_EQ(outcome_while_clingo_reads(large_program("p(1), p(0)?"), ""), "true\n0 gone");
}

TEST(Process, AClingoThatStopsReadingIsHeard) {
  const std::string loud =
      "head -n 2 >/dev/null; exec 0<&-; echo '-:2:1-2: error: bad' >&2; exit 65";
  EXPECT_EQ(run_with(loud, "", large_program("")).err, "p:2: clingo: bad\n");
}

// Starts dl on the hard program in the background, ends it with the signal, and tells its status
// and whether its clingo, a copy under a name of its own, is gone.
std::string outcome_of_signal(const std::string& signal) {
  const Directory directory;
  directory.write("p", kHard);
  directory.write_script("fake", "echo $$ >pid; exec clingo \"$@\"");
  directory.write_script(
      "go", "'" DL_PROGRAM
            "' p -clingo=./fake >out 2>err & dl=$!\n"
            "for i in 1 2 3 4 5 6 7 8 9; do sleep 0.2; test -s pid && break; done\nsleep 0.5\n"
            "kill -" +
                signal +
                " $dl; wait $dl; echo $? >status\n"
                // Dead but not yet buried by init is dead.
                "alive() { grep -qs '^State:.[^ZX]' /proc/$(cat pid)/status; }\n"
                "for i in 1 2 3 4 5 6 7 8 9; do alive || break; sleep 0.2; done\n"
                "alive && cat /proc/$(cat pid)/status >>status\nexit 0\n");
  EXPECT_EQ(std::system(("cd '" + directory.path() + "' && bash ./go 2>/dev/null").c_str()), 0);
  return directory.read("out") + directory.read("err") + directory.read("status");
}

TEST(Process, SignalsEndClingoAndDl) {
  EXPECT_EQ(outcome_of_signal("TERM"), "143\n");
  EXPECT_EQ(outcome_of_signal("INT"), "130\n");
}

TEST(Process, ClingoDoesNotOutliveAKilledDl) {
  EXPECT_EQ(outcome_of_signal("KILL"), "137\n");
}

}    // namespace
}    // namespace dl_test
