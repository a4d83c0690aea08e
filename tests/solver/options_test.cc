// options_test.cc - the command line and the files it names.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "run_dl.h"

namespace dl_test {
namespace {

TEST(Options, FilterShowsAPredicateAndItsStrongNegation) {
  EXPECT_EQ(run("a. -b. b(1). c.", "-filter=b").out, "{b(1), -b}\n");
}

TEST(Options, PositiveFilterLeavesStrongNegationOut) {
  EXPECT_EQ(run("-b(2). b(1). c.", "--pfilter=b,c").out, "{c, b(1)}\n");
}

TEST(Options, FilterMayBeRepeatedAndNameNothing) {
  EXPECT_EQ(run("a. b. c.", "-filter=a -filter=,c,none").out, "{a, c}\n");
  EXPECT_EQ(run("a. b. c.", "-filter=none").out, "{}\n");
}

TEST(Options, LimitTheNumberOfAnswerSets) {
  const Outcome outcome = run("a v b v c v d.", "-n=3");
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 3);
  EXPECT_EQ(outcome.status, 0);
}

TEST(Options, NofactsLeavesOutFactsButNotDerivedAtoms) {
  EXPECT_EQ(run("p(1). p(\"a\nb\"). q(X) :- p(X). -r. s v t. :- t.", "-nofacts").out,
            "{q(1), q(\"a\nb\"), s}\n");
}

TEST(Options, TakeOptionsAndFilesInAnyOrderWithOneDashOrTwo) {
  const Directory directory;
  directory.write("x", "a. b.");
  directory.write("y", "c.");
  EXPECT_EQ(directory.run("--filter=a,c x -silent --n=5 y -threads=2").out, "{a, c}\n");
}

TEST(Options, IncludeFilesInAllForms) {
  const Directory directory;
  directory.write("p", "#include <one>\n#include \"two.txt\"\n#include three\n#include<one>\np.");
  directory.write("one", "one. :~ one. [2:1]");
  directory.write("two.txt", "two.\n#include one\n#include \"p\"");
  directory.write("three", "three.");
  EXPECT_EQ(directory.run("p").out,
            "Best model: {one, p, three, two}\nCost ([Weight:Level]): <[2:1]>\n");
}

TEST(Options, IncludeLooksBesideTheFileFirst) {
  const Directory directory;
  ASSERT_EQ(std::system(("mkdir '" + directory.path() + "/d'").c_str()), 0);
  directory.write("d/p", "#include x\n#include y");
  directory.write("d/x", "beside.");
  directory.write("x", "far.");
  directory.write("y", "here.");
  EXPECT_EQ(directory.run("d/p").out, "{beside, here}\n");
}

TEST(Options, ErrorsInIncludedFilesNameThem) {
  const Directory directory;
  directory.write("p", "#include <q>\n");
  directory.write("q", "a.\nb");
  EXPECT_EQ(directory.run("p").err, "q:2: syntax error, unexpected end of file\n");
}

TEST(Options, HelpAndVersionAreOutput) {
  const Outcome help = run("", "-help");
  EXPECT_EQ(help.out.substr(0, 31), "usage: dl {option|file}...\nFind");
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(run("", "--version").out, "dl 1.0\n");
}

constexpr ErrorCase kErrors[] = {
    {"unknown_option", "a.", "dl: unknown option \"-foo\", see dl -help", "-foo"},
    {"value_that_is_no_number", "a.", "dl: option \"-n=x\" needs a number from 0 to 2147483647",
     "-n=x"},
    {"no_threads", "a.", "dl: option \"-threads=0\" needs a number from 1 to 64", "-threads=0"},
    {"unreadable_file", "a.", "dl: cannot read \"none\": No such file or directory", "none"},
    {"directory", "a.", "dl: cannot read \".\": Is a directory", "."},
    {"clingo_missing", "a.", "dl: cannot run \"no-such-clingo\": No such file or directory",
     "-clingo=no-such-clingo"},
};
INSTANTIATE_TEST_SUITE_P(OptionErrors, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

TEST(Options, AFileIsNeeded) {
  const Directory directory;
  const Outcome outcome = directory.run("-silent");
  EXPECT_EQ(outcome.err, "dl: no input file, see dl -help\n");
  EXPECT_EQ(outcome.status, 1);
}

}    // namespace
}    // namespace dl_test
