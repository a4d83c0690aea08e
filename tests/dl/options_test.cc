// options_test.cc - the command line and the files it names.
#include <algorithm>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kOptions[] = {
    {"filter_shows_strong_negation_too", "a. -b. b(1). c.", "{b(1), -b}\n", "-filter=b"},
    {"positive_filter", "-b(2). b(1). c.", "{c, b(1)}\n", "--pfilter=b,c"},
    {"filter_is_repeated", "a. b. c.", "{a, c}\n", "-filter=a -filter=,c,none"},
    {"filter_names_nothing", "a. b. c.", "{}\n", "-filter=none"},
    {"nofacts_shows_derived_atoms", "p(1). p(\"a\nb\"). q(X) :- p(X). -r. s v t. :- t.",
     "{q(1), q(\"a\nb\"), s}\n", "-nofacts"},
    {"version", "", "dl 1.0, tested with clingo 5.4.1 and 5.8.1\n", "--version"},
};
INSTANTIATE_TEST_SUITE_P(Options, Programs, testing::ValuesIn(kOptions), case_name);

TEST(Options, LimitTheNumberOfAnswerSets) {
  const Outcome outcome = run("a v b v c v d.", "-n=3");
  EXPECT_EQ(std::ranges::count(outcome.output, '\n'), 3);
  EXPECT_EQ(outcome.status, 0);
}

TEST(Options, HelpIsOutput) {
  const Outcome help = run("", "-help");
  EXPECT_EQ(help.output.substr(0, 31), "usage: dl {option|file}...\nFind");
  EXPECT_EQ(help.status, 0);
}

constexpr ShellCase kFiles[] = {
    {"options_and_files_in_any_order",
     "echo 'a. b.' >x; echo c. >y; "
     "dl --filter=a,c x -silent --n=5 y -threads=2",
     "{a, c}\n"},
    {"include_lines_of_all_forms",
     "printf '#include <one>\\n#include \"two.txt\"\\n#include three\\n#include<one>\\np.' >p; "
     "echo 'one. :~ one. [2:1]' >one; echo three. >three; "
     "printf 'two.\\n#include one\\n#include \"p\"' >two.txt; dl p",
     "Best model: {one, p, three, two}\nCost ([Weight:Level]): <[2:1]>\n"},
    {"include_looks_beside_the_file_first",
     "mkdir d; printf '#include x\\n#include y' >d/p; echo beside. >d/x; echo far. >x; "
     "echo here. >y; dl d/p",
     "{beside, here}\n"},
    {"errors_in_included_files", "echo '#include <q>' >p; printf 'a.\\nb' >q; dl p", "",
     "q:2: syntax error, unexpected end of file\n", 1},
    {"the_rules_with_most_instances",
     "printf 'e(1,2). e(2,3).\nr(X,Y) :- e(X,Y).\nr(X,Z) :- r(X,Y), e(Y,Z).\n"
     "n(N) :- N = #count{Y : r(X,Y)}.\n:- r(X,X).\n:~ r(_,X). [1:1]\n' >p; "
     "dl -stats p -filter=n",
     "Best model: {n(2)}\nCost ([Weight:Level]): <[3:1]>\n",
     "p:4: 4 instances\np:6: 3 instances\np:2: 2 instances\np:3: 1 instance\n"},
    {"dash_is_a_file", "echo a. >-; echo b. | dl -", "{a}\n"},
    {"no_file", "dl -silent", "", "dl: no input file, see dl -help\n", 1},
    {"more_than_two_gigabytes", "truncate -s 3G huge; dl huge", "",
     "dl: \"huge\" has more than 2147483645 bytes\n", 1},
};
INSTANTIATE_TEST_SUITE_P(Files, Commands, testing::ValuesIn(kFiles), case_name);

constexpr Case kErrors[] = {
    {"unknown_option", "a.", "dl: unknown option \"-foo\", see dl -help", "-foo"},
    {"value_that_is_no_number", "a.", "dl: option \"-n=x\" needs a number from 0 to 2147483647",
     "-n=x"},
    {"no_threads", "a.", "dl: option \"-threads=0\" needs a number from 1 to 64", "-threads=0"},
    {"unreadable_file", "a.", "dl: cannot read \"none\": No such file or directory", "none"},
    {"directory", "a.", "dl: cannot read \".\": Is a directory", "."},
    {"clingo_missing", "a.", "dl: cannot run \"no-such-clingo\": No such file or directory",
     "-clingo=no-such-clingo"},
};
INSTANTIATE_TEST_SUITE_P(Options, FaultyPrograms, testing::ValuesIn(kErrors), case_name);

}    // namespace
}    // namespace dl_test
