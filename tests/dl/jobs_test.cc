// jobs_test.cc - searches in parts, in a folder and on the cores of this machine, and the race of
// configurations: parts are the whole whatever ran when, and what does not belong to a search is
// refused.
#include <algorithm>

#include "dl/parts/answer_tables.h"
#include "dl/parts/sha256.h"
#include "run_dl.h"

namespace dl_test {
namespace {

// Functions of the shell: `n` is the number of parts; numbers name parts, none all of them.
constexpr std::string_view kFunctions =
    "split() { n=$(dl p -jobs=j \"$@\"); }\n"
    "parts() { for i in ${*:-$(seq 0 $((n - 1)))}; do dl -jobs=j -part=$i || echo $i: $?; done; }\n"
    "missing() { dl -jobs=j -missing; }\n"
    "join() { dl -jobs=j -join \"$@\"; }\n"
    "count() { grep -c '{'; }\n"
    "await_two() { for k in $(seq 100); do test $(cat pids 2>/dev/null | wc -l) -ge 2 && break; "
    "sleep 0.1; done; }\n"
    // A clingo that prints $1, searches until it is asked to end, and does $2 then.
    "slow() { trap \"$2; exit 11\" TERM; cat >/dev/null; case $all in *--verbose=1*) "
    "clingo --version | head -n 1;; esac; test -z \"$1\" || echo \"$1\"; "
    "while :; do sleep 0.1; done; }\n";

Outcome run_here(const WorkFolder& folder, std::string_view commands) {
  folder.write("functions", kFunctions);
  return folder.run(". ./functions\n" + std::string(commands));
}

class Whole : public testing::TestWithParam<Case> {};
TEST_P(Whole, IsWhatItsPartsAreTogether) {
  const Case& test = GetParam();
  const WorkFolder folder;
  folder.write("p", test.program);
  const std::string options(test.options);
  const Outcome whole = run_here(folder, "dl p " + options);
  EXPECT_EQ(sorted(whole.output), sorted(test.out));
  const Outcome first = run_here(
      folder, "split -split=3 " + options + "; test $n -gt 1 || echo $n; parts; missing; join");
  EXPECT_EQ(sorted(first.output), sorted(whole.output));
  EXPECT_EQ(first.errors, whole.errors);
  const std::string_view others[] = {
      "rm -f j/out/* j/bound; parts $(seq $((n - 1)) -1 0); missing; join",
      "parts; parts; join",
      "rm j/out/*; for i in $(seq 0 $((n - 1))); do parts $i & parts $i & done; wait; join",
      "rm -r j; split -split=3 $options; for i in $(seq 0 $((n - 1))); do dl -jobs=j -part=$i "
      "-nobound; done; join",
  };
  for (const std::string_view other : others) {
    const std::string commands = "options='" + options + "' n=$(ls j/out | wc -l); ";
    EXPECT_EQ(run_here(folder, commands + std::string(other)), first) << other;
  }
  for (const std::string_view other :
       {"-local -split=3 ", "-local -split=1 ", "-configuration=handy "}) {
    const Outcome local = run_here(folder, "dl p " + std::string(other) + options);
    EXPECT_EQ(sorted(local.output), sorted(whole.output)) << other;
    EXPECT_EQ(local.errors, whole.errors);
  }
}
#define COLOURS                                                                            \
  "#maxint = 2. f(1). c(X,r) v c(X,g) v c(X,b) :- #int(X). :- c(X,C), c(Y,C), Y = X + 1. " \
  ":- c(1,g). :- c(1,b)."
#define CHOICES "p(1). p(2). a(X) v b(X) v -a(X) :- p(X). "
constexpr Case kWholes[] = {
    {"sets", COLOURS,
     "{c(0,g), c(1,r), c(2,g)}\n{c(0,g), c(1,r), c(2,b)}\n"
     "{c(0,b), c(1,r), c(2,g)}\n{c(0,b), c(1,r), c(2,b)}\n",
     "-filter=c"},
    {"sets_without_facts", COLOURS " :- c(0,g). d(\"a\nb\\\"). d(\" {\", X) :- c(X,b).",
     "{c(0,b), c(1,r), c(2,g), d(\" {\",0)}\n"
     "{c(0,b), c(1,r), c(2,b), d(\" {\",0), d(\" {\",2)}\n",
     "-nofacts"},
    {"folded_atoms",
     "a_3(x,s,1). a_3(x,s,2). a_3(R,s,X) v a_3(z,s,X) :- a_3(x,s,X), a_2(t,s,R). "
     "a_2(t,s,y).",
     "{a_3(y,s,1), a_3(y,s,2)}\n{a_3(y,s,1), a_3(z,s,2)}\n"
     "{a_3(z,s,1), a_3(y,s,2)}\n{a_3(z,s,1), a_3(z,s,2)}\n",
     "-nofacts"},
    {"loops", "a v b. c v d :- a. c v e. d :- c. c :- d. e :- b, not c.",
     "{a, c, d}\n{b, c, d}\n{b, e}\n"},
    {"best_of_two_levels", CHOICES ":~ a(X). [X:2] :~ b(1). [2:1] :~ -a(X). [2:1] :~ b(2). [1:1]",
     "Best model: {b(1), b(2)}\nCost ([Weight:Level]): <[0:2]>\n\"[3:1]\"\n"
     "Best model: {-a(1), b(2)}\nCost ([Weight:Level]): <[0:2]>\n\"[3:1]\"\n",
     "-filter=a,b"},
    {"best_with_levels_of_the_data", CHOICES ":~ a(X). [1:X] :~ b(X). [3:X] :~ -a(X). [5:X]",
     "Best model: {a(1), a(2)}\nCost ([Weight:Level]): <[1:2]>\n\"[1:1]\"\n", "-pfilter=a,b"},
    // With a bound of both levels, clasp says of the part that has it that there is no answer set.
    {"best_that_a_bound_of_both_levels_loses",
     "a0 v a4. a1 v a0 v a4 :- a3. a4 v a0 :- not a4, a3. a4 v a1 :- a3, not a4. a3. "
     ":~ not a4. [2:1] :~ not a2. [4:2] :~ not a0. [2:2] :~ not a1. [3:2]",
     "Best model: {a0, a1, a3}\nCost ([Weight:Level]): <[4:2]>\n\"[2:1]\"\n"},
    {"brave_rows", CHOICES ":- b(1). a(X), p(Y)?", "1, 1\n1, 2\n2, 1\n2, 2\n", "-brave"},
    {"cautious_rows", CHOICES "p(3). p(4). h(X) :- b(X). h(1). h(X), p(Y)?",
     "1, 1\n1, 2\n1, 3\n1, 4\n"},
    {"brave_without_variables", CHOICES "a(1), b(2)?", "true\n", "-brave"},
    {"cautious_without_variables", CHOICES "not a(1)?", "false\n"},
    {"brave_among_the_best", CHOICES ":~ a(X). [X:2] :~ b(1). [1:1] b(X)?", "2\n", "-FB"},
    {"cautious_among_the_best", CHOICES ":~ a(X). [X:2] :~ b(1). [1:1] -a(X)?", "1\n", "-FC"},
};
INSTANTIATE_TEST_SUITE_P(Jobs, Whole, testing::ValuesIn(kWholes), case_name);

// A row's program is in the file "p".
struct JobCase {
  std::string_view name, commands, output, errors = "";
  int status = 0;
  std::string_view program = "a v b. c v d. e v f.";
  std::string_view clingo = "";    // the script "fake"
  friend void PrintTo(const JobCase& test, std::ostream* out) { *out << test.name; }
};
class Jobs : public testing::TestWithParam<JobCase> {};
TEST_P(Jobs, GiveTheExpectedOutcome) {
  const JobCase& test = GetParam();
  const WorkFolder folder;
  folder.write("p", test.program);
  folder.write_script("fake", ". ./functions; all=\"$*\"\n" + std::string(test.clingo));
  EXPECT_EQ(run_here(folder, test.commands),
            (Outcome{std::string(test.output), std::string(test.errors), test.status}));
}

#define FOREIGN "dl: the result of part 0 is that of another search, or damaged: run it again\n"
#define FOREIGN_ALL \
  "dl: the results of parts 0-3 are those of another search, or damaged: run them again\n"
#define SAYS_OTHER_VERSION "clingo \"$@\" | sed 's/^clingo version .*/clingo version 5.0.9/'"
#define CUTS_AS_CLINGO "case $* in *gringo*|*--version*|*solve-limit*) exec clingo \"$@\";; esac; "
#define DIVIDED "dl: the search was interrupted; there may be more answers\n"
constexpr JobCase kFolders[] = {
    {"files_of_a_folder", "dl p -split=4 -jobs=a/j; ls a/j; ls a/j/out; dl -jobs=a/j -missing",
     "4\nbase.aspif\ncubes\nmanifest\nout\ntables\n0-3\n"},
    {"a_result_is_the_same_again",
     "split -split=4; parts 2; sed /seconds/d j/out/2 >x; parts 2; sed /seconds/d j/out/2 | cmp - "
     "x; "
     "tail -n 1 x; ls j/out",
     "complete\n2\n"},
    {"missing_parts", "split -split=8; parts 1 3 4; missing; join", "0,2,5-7\n",
     "dl: parts 0, 2 and 5-7 are missing\n", 1},
    {"one_missing_part", "split -split=4; parts 1 2 3; join", "", "dl: part 0 is missing\n", 1},
    {"a_join_of_what_is_there",
     "split -split=4; parts 1 2; join -partial | count; join -partial >x", "3\n",
     "dl: parts 0 and 3 are missing; there may be more answers\n"
     "dl: parts 0 and 3 are missing; there may be more answers\n",
     2},
    {"the_best_of_what_is_there", "split -split=2; parts 1; join -partial",
     "Best model: {a}\nCost ([Weight:Level]): <[1:1]>\n",
     "dl: part 0 is missing; the best answer set so far is not proven to be optimal\n", 2,
     "a v b. :~ a. [1:1] :~ b. [2:1]"},
    {"rows_of_what_is_there",
     "split -split=2 -brave; parts 1; join -partial; rm -r j; split -split=2; parts 1; join "
     "-partial",
     "1\n",
     "dl: part 0 is missing; there may be more answers\n"
     "dl: part 0 is missing; there may be more answers\n",
     2, "p(1) v p(2). p(X)?"},
    {"all_parts_at_last",
     "split -split=4; parts 1; join -partial >x; parts 0 2 3; join -partial | count", "8\n",
     "dl: parts 0 and 2-3 are missing; there may be more answers\n"},
    {"figures", "split -split=4; parts; join -stats 2>&1 | grep -v cores | tail -n 2",
     "dl: 4 parts\ndl: 8 answer sets in the parts\n"},
    {"at_most_so_many",
     "for k in 1 3 8 9; do rm -rf j; split -split=4 -n=$k; parts; join | count; "
     "dl p -split=4 -local -n=$k | count; done",
     "1\n1\n3\n3\n8\n8\n8\n8\n"},
    {"at_most_so_many_best",
     "split -split=4 -n=3; parts; join | sort -u | count; dl p -split=4 -local -n=3 | "
     "sort -u | count",
     "3\n3\n", "", 0, "a v b. c v d. e v f. :~ a. [1:1] :~ b. [1:1]"},
    {"no_parts_at_all", "dl p -split=4 -jobs=j; missing; join; dl -jobs=j -part=0", "0\nfalse\n",
     "p:1: note: the program has no answer set\ndl: there is no part 0; there are none at all\n", 1,
     "a v b. :- a. :- b. a?"},
    {"a_part_that_is_none", "split -split=4; dl -jobs=j -part=4", "",
     "dl: there is no part 4; the parts are 0 to 3\n", 1},
    {"a_part_in_a_folder_of_copies",
     "split -split=4; parts 1 2 3; mkdir k k/out; cp j/manifest j/base.aspif j/cubes k; "
     "dl -jobs=k -part=0; cp k/out/0 j/out; join | count",
     "8\n"},
    {"no_folder", "dl -jobs=j -join", "",
     "dl: \"j\" is no folder of a search in parts: cannot read \"j/manifest\"\n", 1},
    {"a_folder_in_use", "split -split=4; split -split=4; mkdir k; touch k/x; dl p -split=2 -jobs=k",
     "",
     "dl: the folder \"j\" is not empty; take another one, or remove it\n"
     "dl: the folder \"k\" is not empty; take another one, or remove it\n",
     1},
    {"a_folder_that_cannot_be_made", "dl p -split=4 -jobs=p; dl p -split=4 -jobs=/proc/j", "",
     "dl: cannot make \"p\": Not a directory\n"
     "dl: cannot make \"/proc/j\": No such file or directory\n",
     1},
    {"a_result_that_cannot_be_written", "split -split=4; rm -r j/out; parts 0", "0: 1\n",
     "dl: cannot write \"j/out/0\": No such file or directory\n"},
    {"a_mistake_in_the_program", "dl p -split=4 -jobs=j; ls j", "",
     "p:1: unsafe rule: no positive literal of the body binds the variable X\n"
     "ls: cannot access 'j': No such file or directory\n",
     2, "a(X)."},
    {"an_overflow", "split -split=2; parts; join", "",
     "p:1: an integer leaves 32 bits; #maxint or -N= bounds it\n", 1,
     "a v b. c(X) :- X = 2147483647 + 1, a."},
};
INSTANTIATE_TEST_SUITE_P(Folders, Jobs, testing::ValuesIn(kFolders), case_name);

constexpr JobCase kForeign[] = {
    {"the_result_of_another_program",
     "split -split=4; parts; mv j k; echo g. >>p; split -split=4; parts; cp k/out/0 j/out; "
     "missing; "
     "join; join -partial; parts 0; join | count",
     "0\n8\n", FOREIGN FOREIGN},
    {"the_result_of_another_part", "split -split=4; parts; cp j/out/1 j/out/0; join", "", FOREIGN,
     1},
    {"the_result_of_another_clingo",
     "split -split=4; parts; sed -i 's/^clingo .*/clingo 5.0/' j/out/0; join", "", FOREIGN, 1},
    {"truncated_results",
     "split -split=4; parts; cp j/out/0 x; for i in 1 9 20 40 100 300; do "
     "head -c -$i x >j/out/0; missing; done; : >j/out/0; join; cat x x >j/out/0; join",
     "0\n0\n0\n0\n0\n0\n", FOREIGN FOREIGN, 1},
    {"a_changed_program", "split -split=4; sed -i 's/^1 .*//' j/base.aspif; parts 0; missing",
     "0: 1\n0-3\n", "dl: \"j/base.aspif\" is not what it was when the search was cut\n"},
    {"a_lost_program", "split -split=4; rm j/base.aspif; dl -jobs=j -part=0", "",
     "dl: \"j/base.aspif\" is not what it was when the search was cut\n", 1},
    {"a_changed_cut", "split -split=4; parts; sed -i 1d j/cubes; missing; join", "",
     "dl: \"j/cubes\" is not what it was when the search was cut\n"
     "dl: \"j/cubes\" is not what it was when the search was cut\n",
     1},
    {"changed_tables", "split -split=4; parts; echo brave >>j/tables; join", "",
     "dl: \"j/tables\" is not what it was when the search was cut\n", 1},
    {"a_changed_manifest",
     "split -split=4; parts; sed -i s/models=0/models=1/ j/manifest; missing; join", "0-3\n",
     FOREIGN_ALL, 1},
    {"another_format", "split -split=4; sed -i '1s/1/2/' j/manifest; missing", "",
     "dl: \"j/manifest\" is not of the format that this version reads\n", 1},
    {"another_version_of_dl",
     "split -split=4; parts; sed -i 's/^dl .*/dl 0.9/' j/manifest; parts 0; join", "0: 1\n",
     "dl: this is dl 1.0, and the search was cut by dl 0.9\n"
     "dl: this is dl 1.0, and the search was cut by dl 0.9\n",
     1},
    {"another_clingo",
     "split -split=4; { dl -jobs=j -part=0 -clingo=./fake; dl -jobs=j -part=0 -split=2 "
     "-clingo=./fake; } "
     "2>&1 | sed 's/clingo [^ ]*$/clingo V/'; missing",
     "dl: this is clingo 5.0.9, and the search was cut for clingo V\n"
     "dl: this is clingo 5.0.9, and the search was cut for clingo V\n0-3\n",
     "", 0, "a v b. c v d. e v f.", SAYS_OTHER_VERSION},
    {"a_division_of_another_search",
     "split -split=2; mv j k; echo g. >>p; split -split=2; dl -jobs=k -split=2 -part=0; "
     "cp k/cubes.1 j; missing",
     "2-3\n", "dl: \"j/cubes.1\" does not belong to this search\n", 1},
    {"a_bound_of_another_search", "split -split=2; printf 'x\\n0\\n' >j/bound; parts; join",
     "Best model: {a}\nCost ([Weight:Level]): <[1:1]>\n", "", 0, "a v b. :~ a. [1:1] :~ b. [2:1]"},
};
INSTANTIATE_TEST_SUITE_P(Foreign, Jobs, testing::ValuesIn(kForeign), case_name);

constexpr std::string_view kAnyProgram = "a v b. c v d. e v f.";
#define IS_DIVIDED "dl: the search was cut after 1 s; the part is not done\n"
constexpr JobCase kDivided[] = {
    {"a_part_that_is_cut_and_divided",
     "split -split=2; dl -jobs=j -part=0 -clingo=./fake -time=1; echo $?; ls j/out; missing; "
     "join -partial; dl -jobs=j -split=2 -part=0; parts 0; missing; parts 1 2 3; ls j/out; join | "
     "count",
     "2\n0.cut\n0-1\n{a}\n2-3\n0: 1\n1-3\n1\n2\n3\n8\n",
     IS_DIVIDED "dl: parts 0-1 are missing; there may be more answers\n"
                "dl: part 0 was divided into 2-3\n",
     0, kAnyProgram, "slow a 'echo UNKNOWN'"},
    {"a_part_that_is_cut_and_run_again",
     "split -split=2; dl -jobs=j -part=0 -clingo=./fake -time=1; parts; ls j/out; join | count",
     "0\n1\n8\n", IS_DIVIDED, 0, kAnyProgram, "slow '' 'echo UNKNOWN'"},
    {"pieces_are_divided_again",
     "split -split=2; dl -jobs=j -split=2 -part=1; dl -jobs=j -split=2 -part=3; parts 0 2 4 5; "
     "join | count",
     "2-3\n4-5\n8\n"},
    {"a_result_of_what_was_divided_does_not_count",
     "split -split=2; cp -r j k; dl -jobs=k -part=0; dl -jobs=j -split=2 -part=0; cp k/out/0 "
     "j/out; "
     "missing; parts 1 2 3; join | count",
     "2-3\n1-3\n8\n"},
    {"a_part_that_is_done", "split -split=2; parts; dl -jobs=j -split=2 -part=0", "",
     "dl: part 0 is done\n", 1},
    {"a_part_that_cannot_be_cut", "split -split=2; dl -jobs=j -split=2 -part=0", "",
     "dl: part 0 cannot be cut: clingo finishes it, or finds nothing to cut it by\n", 1, "a v b."},
    {"two_divisions_at_once",
     "split -split=2; dl -jobs=j -split=2 -part=0 -clingo=./fake; cat other; parts 0 2 3; join | "
     "count",
     "2-3\n8\n", "dl: another part was divided at the same time; divide this one again\n", 0,
     kAnyProgram, "test -e other || dl -jobs=j -split=2 -part=1 >other; exec clingo \"$@\""},
    {"a_killed_part",
     "split -split=2; ( dl -jobs=j -part=0 -clingo=./fake; echo $? ) 2>/dev/null; ls j/out; "
     "missing",
     "137\n0-1\n", "", 0, kAnyProgram, "kill -9 $PPID"},
    {"a_killed_clingo",
     "split -split=2; dl -jobs=j -part=0 -clingo=./fake; echo $?; ls j/out; missing", "1\n0-1\n",
     "dl: clingo died of signal 9 (Killed)\n", 0, kAnyProgram,
     "clingo \"$@\" | head -n 6; kill -9 $$"},
    {"a_clingo_that_is_not_done", "split -split=2; dl -jobs=j -part=0 -clingo=./fake; ls j/out", "",
     "dl: clingo ended without a complete answer (status 10)\n", 0, kAnyProgram,
     "clingo \"$@\"; exit 10"},
    {"no_clingo",
     "split -split=2; dl -jobs=j -part=0 -clingo=none; dl -jobs=j -part=0 -split=2 -clingo=none; "
     "dl p -jobs=k -split=2 -clingo=none; dl p -local -split=2 -clingo=none; "
     "dl p -configuration=race -clingo=none; ls j/out",
     "",
     "dl: cannot run \"none\": No such file or directory\n"
     "dl: cannot run \"none\": No such file or directory\n"
     "dl: cannot run \"none\": No such file or directory\n"
     "dl: cannot run \"none\": No such file or directory\n"
     "dl: cannot run \"none\": No such file or directory\n"},
    {"a_clingo_that_fails_while_it_cuts",
     "dl p -jobs=j -split=2 -clingo=./fake; dl p -local -split=2 -clingo=./fake; ls j", "",
     "dl: clingo died of signal 9 (Killed)\ndl: clingo died of signal 9 (Killed)\n"
     "ls: cannot access 'j': No such file or directory\n",
     2, kAnyProgram, "case $* in *gringo*) exec clingo \"$@\";; esac; kill -9 $$"},
};
INSTANTIATE_TEST_SUITE_P(Divided, Jobs, testing::ValuesIn(kDivided), case_name);

// Every clingo notes who it is; those that are left at the end are told.
#define NOTES_ITSELF CUTS_AS_CLINGO "echo $$ >>pids; "
#define TELLS_WHO_IS_LEFT \
  "; sleep 0.2; for i in $(cat pids); do grep -s '^State:.[^ZX]' /proc/$i/status; done; true"
#define INTERRUPTED                 \
  "& dl=$!; await_two; sleep 0.3; " \
  "kill -TERM $dl; wait $dl; echo $?" TELLS_WHO_IS_LEFT
constexpr std::string_view kCosts = "a v b. c v d. :~ a. [2:1] :~ c. [2:1] :~ b. [1:1]";
constexpr JobCase kLocal[] = {
    {"an_interrupted_search_in_parts",
     "dl p -split=4 -local -threads=2 -clingo=./fake " INTERRUPTED, "{a}\n{a}\n2\n",
     "dl: the search was interrupted; there may be more answers\n", 0, kAnyProgram,
     NOTES_ITSELF "slow a 'echo UNKNOWN'"},
    {"the_best_of_an_interrupted_search",
     "dl p -split=4 -local -threads=2 -clingo=./fake " INTERRUPTED,
     "Best model: {b, d}\nCost ([Weight:Level]): <[1:1]>\n2\n",
     "dl: the search was interrupted; the best answer set so far is not proven to be optimal\n", 0,
     kCosts,
     NOTES_ITSELF
     "mkdir first 2>/dev/null && slow '' 'echo Optimization: 1; echo b d; echo SATISFIABLE'; "
     "slow '' 'echo Optimization: 2; echo a; echo SATISFIABLE'"},
    {"a_search_in_parts_that_meets_its_time",
     "dl p -split=4 -local -threads=2 -clingo=./fake -time=1; echo $?" TELLS_WHO_IS_LEFT, "2\n",
     "dl: the search was cut after 1 s; there may be more answers\n", 0, kAnyProgram,
     NOTES_ITSELF "slow '' \"trap '' TERM; return\""},
    {"a_killed_search_in_parts",
     "( dl p -split=4 -local -threads=2 -clingo=./fake & dl=$!; "
     "await_two; kill -9 $dl; wait $dl; "
     "echo $? ) 2>/dev/null" TELLS_WHO_IS_LEFT,
     "137\n", "", 0, kAnyProgram, NOTES_ITSELF "slow ''"},
    {"a_killed_clingo_of_parts", "dl p -split=4 -local -clingo=./fake", "",
     "dl: clingo died of signal 9 (Killed)\n", 1, kAnyProgram, CUTS_AS_CLINGO "kill -9 $$"},
    {"a_clingo_of_parts_that_is_not_done",
     "dl p -split=4 -local -clingo=./fake >/dev/null; echo $?", "1\n",
     "dl: clingo ended without a complete answer (status 10)\n", 0, kAnyProgram,
     CUTS_AS_CLINGO "clingo \"$@\"; exit 10"},
    {"a_clingo_is_told_its_configuration",
     "dl p -configuration=trendy -clingo=./fake -filter=a; dl p -configuration=trendy -split=2 "
     "-jobs=j; "
     "grep conf j/manifest",
     "{a}\n2\nargument --configuration=trendy\n", "", 0, "a v b. c v d.",
     "cat >/dev/null; case \"$*\" in *--configuration=trendy*) echo a; echo SATISFIABLE; exit 30;; "
     "esac"},
    {"the_first_to_finish_wins", "dl p -configuration=race -threads=2 -clingo=./fake", "{a}\n{b}\n",
     "dl: trendy was the first to finish of auto and trendy\n", 0, "a v b. :- a, b.",
     "case $* in *=auto*) exec sleep 100;; *) exec clingo \"$@\" ;; esac"},
    {"one_that_fails_leaves_the_race", "dl p -configuration=race -threads=3 -clingo=./fake",
     "{b}\n", "dl: jumpy was the first to finish of auto, trendy and jumpy\n", 0, "a v b. :- a.",
     "case $* in *=auto*) kill -9 $$;; *=trendy*) exec clingo --nonsense;; *=jumpy*) sleep 1;; "
     "esac; exec clingo \"$@\""},
    {"a_race_that_nobody_finishes", "dl p -configuration=race -threads=2 -clingo=./fake", "",
     "dl: clingo died of signal 9 (Killed)\n", 1, kAnyProgram, CUTS_AS_CLINGO "kill -9 $$"},
    {"a_race_that_meets_its_time",
     "dl p -configuration=race -threads=2 -clingo=./fake -time=1; echo $?" TELLS_WHO_IS_LEFT,
     "Best model: {b, d}\nCost ([Weight:Level]): <[1:1]>\n2\n",
     "dl: the search was cut after 1 s; the best answer set so far is not proven to be optimal\n",
     0, kCosts,
     NOTES_ITSELF "case $* in *=auto*) slow '' 'echo Optimization: 2; echo a; echo SATISFIABLE';; "
                  "*) slow '' 'echo Optimization: 1; echo b d; echo SATISFIABLE';; esac"},
};
INSTANTIATE_TEST_SUITE_P(Local, Jobs, testing::ValuesIn(kLocal), case_name);

#define NO_FILE \
  "dl: the folder of -jobs has the program: no file is read with -part, -missing and -join"
constexpr Case kCombinations[] = {
    {"unknown_configuration", "a.",
     "dl: option \"-configuration=fast\" needs one of auto, frumpy, "
     "jumpy, tweety, handy, crafty, trendy, many or race",
     "-configuration=fast"},
    {"no_parts", "a.", "dl: option \"-split=0\" needs a number from 1 to 1000000", "-split=0"},
    {"part_that_is_no_number", "a.", "dl: option \"-part=x\" needs a number from 0 to 2147483647",
     "-part=x"},
    {"local_without_parts", "a.", "dl: option \"-local\" needs -split=K", "-local"},
    {"local_with_a_folder", "a.",
     "dl: option \"-local\" runs all parts itself, and takes no folder", "-split=2 -local -jobs=j"},
    {"local_race", "a.", "dl: -local and -configuration=race do not go together",
     "-split=2 -local -configuration=race"},
    {"parts_without_a_folder", "a.", "dl: -split needs a folder, -jobs=DIR, or -local", "-split=2"},
    {"join_without_a_folder", "a.", "dl: -part, -missing and -join need a folder, -jobs=DIR",
     "-join"},
    {"folder_alone", "a.", "dl: option \"-jobs\" needs -split=K, -part=I, -missing or -join",
     "-jobs=j"},
    {"partial_alone", "a.", "dl: option \"-partial\" needs -join", "-partial"},
    {"part_of_a_file", "a.", NO_FILE, "-jobs=j -part=0"},
    {"join_of_a_file", "a.", NO_FILE, "-jobs=j -join"},
    {"missing_of_a_file", "a.", NO_FILE, "-jobs=j -missing"},
    {"division_of_a_file", "a.", NO_FILE, "-jobs=j -split=2 -part=0"},
    {"question_in_parts", "a.", "dl: a question is about a whole search, not one in parts",
     "-split=2 -jobs=j -why=a"},
    {"race_in_a_folder", "a.", "dl: -configuration=race and -jobs do not go together",
     "-split=2 -jobs=j -configuration=race"},
};
INSTANTIATE_TEST_SUITE_P(Combinations, FaultyPrograms, testing::ValuesIn(kCombinations), case_name);

TEST(Digests, AreThoseOfThePublishedVectors) {
  EXPECT_EQ(dl::sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
  EXPECT_EQ(dl::sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(dl::sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  dl::Sha256 million;
  for (int i = 0; i < 8000; ++i) million.add(std::string(125, 'a'));    // across blocks
  EXPECT_EQ(million.hex(), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(AnswerTables, AreReadBack) {
  const dl::Source sources[] = {
      {"a\nb\\", "p(\"x\ny\\\")."},
      {"c", "q(X) v r(Y) :- p(X),\n Y = 3 * 4. :~ q(X). [1:2]\nq(X), r(Y)?"}};
  dl::Options options;
  options.leave_out_facts = true;
  const dl::AnswerTables tables{
      dl::translate(sources, options), dl::Reasoning::kBrave, {"", "h \\n"}};
  const std::string text = dl::text_of(tables);
  EXPECT_EQ(text, R"x(dl-tables 1
source a\nb\\
source c
brave
weak 0 2
query 3 1 3 1 3 11
variable X
variable Y
fault 0 1 1 1 1 2 11
fact p("x\\ny\\\\")
host 
host h \\n
)x");
  const std::optional<dl::AnswerTables> again = dl::read_tables(text);
  ASSERT_TRUE(again);
  EXPECT_EQ(dl::text_of(*again), text);
  for (const std::string_view other :
       {"", "dl-tables 2\n", "dl-tables 1\nquer\n", "dl-tables 1\nweak x\n"})
    EXPECT_FALSE(dl::read_tables(other)) << other;
}

}    // namespace
}    // namespace dl_test
