// solving_test.cc - how a run of zrl ends: limits, signals, readers that go away, and what it
// leaves behind; and that its answers are those of zarel.

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

// A search that takes hours, where `hard` holds; the best answer set is there only if it ends.
constexpr std::string_view kBest =
    "#maxint=14. pigeon(0..14). hole(1..14).\n"
    "in(P, H) v out(P, H) :- pigeon(P), hole(H), hard.\n"
    "some(P) :- in(P, _).\n"
    ":- pigeon(P), not some(P), hard.\n"
    ":- in(P, H), in(Q, H), P < Q.\n"
    "calm v hard.\n"
    ":~ calm. [3:1]\n";
const std::string kPigeons = std::string(kBest.substr(0, kBest.find("calm"))) + "hard.\n";

// Two to the power of forty answer sets.
std::string many() {
  std::string text;
  for (int i = 0; i < 40; ++i) {
    const std::string number = std::to_string(i);
    text.append("a").append(number).append(" v b").append(number).append(".\n");
  }
  return text;
}

// Clingo, or another solver, whose process that works on is in the file pid.
constexpr std::string_view kNoted = "echo $$ >pid; exec clingo \"$@\"";
constexpr std::string_view kNotedSolver =
    "sleep 1000 & echo $! >pid; echo '{a_1(a,default)}'; wait";

// What remains of a run behind its status: its solver, a second later at most (dead and not yet
// buried is dead), and files.
constexpr std::string_view kTellRemains =
    "alive() { grep -s '^State:.[^ZX]' /proc/$(cat pid)/status; }\n"
    "for i in $(seq 10); do alive >left || break; sleep 0.1; done; cat left\n"
    "rm -f left pid; ls -A . tmp";
constexpr std::string_view kNothingRemains =
    ".:\n.stderr\n.stdout\nbest.zrl\nhalf\nhard.zrl\nidle\nmany.zrl\nnoted\nsolver\ntmp\n\ntmp:\n";

class Ends : public testing::TestWithParam<ShellCase> {
 protected:
  Ends() {
    folder_.write("hard.zrl", kPigeons);
    folder_.write("best.zrl", kBest);
    folder_.write("many.zrl", many());
    folder_.write_script("noted", kNoted);
    folder_.write_script("solver", kNotedSolver);
    folder_.write_script("half",
                         "echo $$ >pid; cat >/dev/null; echo \"a_1'a'd\"; "
                         "seq -f \"a_2'p'd(%.0f)\" 30000 | tr '\\n' ' '; $HALF");
    folder_.write_script("idle", "echo $$ >pid; exec sleep 100");
    fs::create_directory(folder_.path() / "tmp");
  }

  Outcome run(std::string_view commands) const {
    std::string all = "export TMPDIR=\"$PWD/tmp\"\n";
    ((all += commands) += '\n') += kTellRemains;
    return folder_.run(all);
  }

 private:
  WorkFolder folder_;
};

TEST_P(Ends, AsTheUserIsTold) {
  Outcome expected = GetParam().outcome();
  expected.output += kNothingRemains;
  EXPECT_EQ(run(GetParam().commands), expected);
}

// Starts zrl, waits until its solver has worked for a while, and sends a signal to zrl.
#define SIGNALLED(ARGUMENTS, SIGNAL)                  \
  "zrl run " ARGUMENTS                                \
  " & zrl=$!\n"                                       \
  "until test -s pid; do sleep 0.05; done; sleep 1\n" \
  "kill -" SIGNAL " $zrl; wait $zrl; echo $?"

constexpr ShellCase kEnds[] = {
    {"time_limit_of_the_search", "zrl run -t 0.7 --clingo=./noted hard.zrl; echo $?", "20\n",
     "ended by the time limit after 0.7 s: no answer set so far, there may be more\n"},
    {"time_limit_within_an_answer_set",
     "HALF='exec sleep 100' zrl run -t 1 --clingo=./half hard.zrl; echo $?", "{a}\n20\n",
     "ended by the time limit after 1 s: 1 answer set so far, there may be more\n"},
    {"end_within_an_answer_set", "HALF='exit 30' zrl run --clingo=./half hard.zrl; echo $?",
     "{a}\n3\n", "error: ./half ended without a complete answer (status 30) [solver-incomplete]\n"},
    {"time_limit_of_the_reading",
     "(sleep 5; echo a.) | zrl run -t 0.3; echo $?; echo $$ >pid; :>pid", "20\n",
     "ended by the time limit after 0.3 s before the search began\n"},
    {"time_limit_while_clingo_reads",
     "seq 300000 | sed 's/.*/p(&)./' | zrl run -t 1.5 --clingo=./idle; echo $?", "20\n",
     "ended by the time limit after 1.5 s before the search began\n"},
    {"time_limit_with_a_best_answer",
     "zrl run -t 1 --filter=calm --clingo=./noted best.zrl; echo $?",
     "Best model: {calm}\nCost ([Weight:Level]): <[3:1]>\n20\n",
     "ended by the time limit after 1 s: the best answer set so far has cost 3 at level 1, not "
     "proven to be optimal\n"},
    {"interrupt", SIGNALLED("--clingo=./noted hard.zrl", "INT"), "20\n",
     "interrupted: no answer set so far, there may be more\n"},
    {"termination", SIGNALLED("--clingo=./noted hard.zrl", "TERM"), "20\n",
     "interrupted: no answer set so far, there may be more\n"},
    {"hang_up", SIGNALLED("--clingo=./noted hard.zrl", "HUP"), "20\n",
     "interrupted: no answer set so far, there may be more\n"},
    // Of a killed process some shells tell, at once or later.
    {"kill", "{ " SIGNALLED("--clingo=./noted hard.zrl", "KILL") "; } 2>/dev/null", "137\n"},
    {"interrupt_of_another_solver", SIGNALLED("--solver=./solver hard.zrl", "INT"), "{a}\n20\n",
     "interrupted: 1 answer set so far, there may be more\n"},
    {"time_limit_of_another_solver", "zrl run -t 0.7 --solver=./solver hard.zrl; echo $?",
     "{a}\n20\n", "ended by the time limit after 0.7 s: 1 answer set so far, there may be more\n"},
    {"reader_that_goes", "{ zrl run --clingo=./noted many.zrl; echo $? >&2; } | head -1 | wc -l",
     "1\n", "4\n"},
    {"reader_that_goes_before_the_next_answer",
     "{ zrl run --solver=./solver hard.zrl; echo $? >&2; } | head -1", "{a}\n", "4\n"},
    {"closed_output",
     "zrl run -n1 --keep kept many.zrl >&-; echo $?; wc -l <kept/rewritten.dl;"
     " rm -r kept; sleep 1000 & echo $! >pid; kill $!",
     "4\n40\n", "error: the answers cannot be written: Bad file descriptor [output-failure]\n"},
    {"reader_that_takes_nothing",
     "{ zrl run -t 0.5 --clingo=./noted many.zrl; echo $? >&2; } | sleep 3", "",
     "ended with answers that nobody reads\n20\n"},
};
INSTANTIATE_TEST_SUITE_P(Of, Ends, testing::ValuesIn(kEnds),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(Runs, KeepTheirTimeLimitWithinASecond) {
  const WorkFolder folder;
  folder.write("hard.zrl", kPigeons);
  folder.write_script("deaf", "trap '' TERM INT; while :; do sleep 0.1; done");
  for (const std::string option : {"--clingo=clingo", "--clingo=./deaf", "--solver=./deaf"}) {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(folder.run("zrl run -t 0.5 hard.zrl " + option).status, 20) << option;
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
    EXPECT_GT(took.count(), 0.4) << option;
    EXPECT_LT(took.count(), 1.5) << option;
  }
}

TEST(Runs, DoNotMeetInOneFolder) {
  const WorkFolder folder;
  std::string commands;
  std::string expected;
  for (int i = 0; i < 8; ++i) {
    const std::string number = std::to_string(i);
    folder.write(number + ".zrl", "a" + number + " v b" + number + ".");
    commands.append("zrl run -q -n1 ").append(number).append(".zrl >>out").append(number);
    commands.append(i % 2 == 0 ? " & " : " --solver=dl & ");
    expected.append("{b").append(number).append("}\n");
  }
  const Outcome outcome = folder.run(commands + "wait; cat out*; ls -A");
  EXPECT_EQ(outcome.output.find(".source"), std::string::npos);
  std::ranges::replace(expected, 'b', 'a');
  std::string answers = outcome.output.substr(0, expected.size());
  std::ranges::replace(answers, 'b', 'a');
  EXPECT_EQ(answers, expected);
}

// On a terminal a line tells what goes on, and goes away before anything else is written; in a pipe
// nobody waits for it.
TEST(Runs, ShowOnATerminalWhatGoesOn) {
  const WorkFolder folder;
  folder.write_script("slow", "sleep 1.5; exec clingo \"$@\"");
  folder.write("a.zrl", "a.");
  constexpr std::string_view kRun = "zrl a.zrl --clingo=./slow";
  const std::string shown = folder.run("script -qec '" + std::string(kRun) + "' /dev/null").output;
  EXPECT_NE(shown.find("\r\x1b[Kgrounding, 1 s\r\x1b[K{a}"), std::string::npos) << shown;
  EXPECT_EQ(shown.find("s1 answer set"), std::string::npos) << shown;
  EXPECT_EQ(folder.run(kRun).errors, "1 answer set\n");
  const std::string quiet =
      folder.run("script -qec '" + std::string(kRun) + " --quiet' /dev/null").output;
  EXPECT_EQ(quiet, "{a}\r\n");
}

TEST(Runs, TellWhatTheyTook) {
  const WorkFolder folder;
  folder.write("a.zrl", "a v b. c :- a.");
  const Outcome outcome = folder.run("zrl --stats a.zrl");
  EXPECT_EQ(outcome.output, "{a, c}\n{b}\n");
  for (const char* line :
       {"2 answer sets\nreading: 0.", "\nsearching: 0.", "\n2 clauses read, 0 made",
        "\nclingo: Models       : 2\n", "\nclingo: Rules "}) {
    EXPECT_NE(outcome.errors.find(line), std::string::npos) << line << outcome.errors;
  }
}

TEST(Runs, TellWhichRulesCostMost) {
  const WorkFolder folder;
  folder.write("a.zrl",
               "#maxint = 20. p(1..20).\nq(X, Y) :- p(X), p(Y).\n\nr :- q(X, X).\n"
               "o[has ->> {X}] :- p(X), X < 6.\n");
  const Outcome outcome = folder.run("zrl --profile a.zrl | wc -l");
  EXPECT_EQ(outcome.output, "1\n");
  EXPECT_EQ(outcome.errors,
            "1 answer set\na.zrl:2: 400 ground instances\na.zrl:1: 20 ground instances\n"
            "a.zrl:4: 20 ground instances\na.zrl:5: 5 ground instances\n");
}

TEST(Runs, SearchInAnotherOrderForAnotherSeed) {
  const WorkFolder folder;
  folder.write("many.zrl", many());
  std::set<std::string> firsts;
  for (const char* seed : {"1", "2", "3", "4"}) {
    const std::string command = std::string("zrl run -q -n1 many.zrl --seed=") + seed;
    const std::string first = folder.run(command).output;
    EXPECT_EQ(folder.run(command).output, first);
    firsts.insert(first);
  }
  EXPECT_GT(firsts.size(), 1U);
}

std::multiset<std::string> lines_of(const std::string& text) {
  std::multiset<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.insert(line);
  return lines;
}

// zarel leaves the addresses in frames as they are.
std::string with_prefixes(const std::string& text) {
  static const std::regex address("\"http://(?:example.org/(geo|kind)|(ex).org/a)#(\\w+)\"");
  return std::regex_replace(text, address, "$1$2:$3");
}

// What zarel finds wrong with these it says on standard output.
const std::set<std::string> kWithFindings = {"echo", "replaced", "replaced_query"};

// Of one program, in the folder of its files. Returns whether zrl takes it; what it refuses, zarel
// has something to say about, too.
bool expect_same_answers(const fs::path& files, const std::string& names, bool links) {
  const WorkFolder folder;
  fs::copy(files, folder.path() / "files", fs::copy_options::recursive);
  fs::copy(PROJECT_FOLDER "/library", folder.path() / "library", fs::copy_options::recursive);
  const Outcome established =
      folder.run("cd files; zarel -silent " + std::string(links ? "-linktemplates " : "") + names);
  const Outcome outcome = folder.run("cd files; zrl run -q " +
                                     std::string(links ? "" : "--literal-templates ") + names);
  if (outcome.status == 0 || outcome.status == 10) {
    EXPECT_EQ(lines_of(outcome.output), lines_of(with_prefixes(established.output)))
        << files << names;
    return true;
  }
  EXPECT_TRUE(outcome.status == 1 || outcome.status == 2) << files << names;
  EXPECT_NE(outcome.errors.find("error: "), std::string::npos) << files << names;
  EXPECT_FALSE(established.errors.empty() && established.status == 0) << files << names;
  return false;
}

TEST(Answers, AreThoseOfZarelForTheExamples) {
  for (const auto& entry : fs::directory_iterator(PROJECT_FOLDER "/examples")) {
    if (entry.path().extension() != ".zrl") continue;
    fs::path options = entry.path();
    std::istringstream words(text_of(options.replace_extension(".options")));
    std::string names;
    bool links = false;
    for (std::string word; words >> word;) {
      links = links || word == "-linktemplates";
      if (word.ends_with(".zrl")) names += word + ' ';
    }
    names += entry.path().filename().string();
    EXPECT_TRUE(expect_same_answers(PROJECT_FOLDER "/examples", names, links)) << names;
  }
}

// They are read while clingo still writes them.
TEST(Answers, AreThoseOfZarelWhenTheyAreLong) {
  const WorkFolder folder;
  folder.write("long.zrl", numbered(6'000, "p(N, \"a b, N\"). oN : c. oM[at -> {N, \"}\"}].\n") +
                               "q(X) v -q(X) :- p(X, _), X < 2.");
  EXPECT_TRUE(expect_same_answers(folder.path(), "long.zrl", true));
}

TEST(Answers, AreThoseOfZarelForItsCases) {
  int count = 0;
  for (const auto& entry : fs::recursive_directory_iterator(PROJECT_FOLDER "/tests/golden")) {
    const fs::path folder = entry.path().parent_path();
    if (entry.path().filename() != "input.zrl" || kWithFindings.contains(folder.filename()))
      continue;
    const bool links = text_of(folder / "args").find("-linktemplates") != std::string::npos;
    if (expect_same_answers(folder, "input.zrl", links)) ++count;
  }
  EXPECT_GT(count, 30);
}

}    // namespace
}    // namespace zarel
