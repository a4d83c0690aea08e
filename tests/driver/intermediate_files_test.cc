// intermediate_files_test.cc - ".source", ".legend", ".output" and the standard streams when they
// cannot be opened, written or read.

#include "support/run_program.h"

namespace zarel {
namespace {

// What the shell says itself is not looked at: "end" shows the last line only.
constexpr std::string_view kBegin =
    "end() { \"$@\" 2> said; set -- $?; tail -n 1 said >&2; return $1; }\n"
    "full() { ln -s /dev/full $1; zarel -silent -solver=./uncalled $2; }\n"
    "echo a. > few; echo 'a?' > query; echo 'ASITIS %*a.*% b.' > verbatim\n"
    "seq -f 'p(%.0f).' 0 19999 > many; (echo 'q(X,Y) :- p(X), p(Y).'; head -n 150 many) > pairs\n";

class Faults : public testing::TestWithParam<ShellCase> {};
TEST_P(Faults, AreReportedOnce) {
  const WorkFolder folder;
  folder.write_script("uncalled", "echo called >&2\n");
  folder.write_script("solver", "head -n 1 .source >&2; echo '{a_1(a, default)}'\n");
  // Runs beside three others, each in a folder of its own.
  folder.write_script("last",
                      "dl \"$@\"; touch done\n"
                      "until [ $(ls ../?/done | wc -l) = 4 ]; do sleep 0.01; done\n");
  EXPECT_EQ(folder.run(std::string(kBegin).append(GetParam().commands)), GetParam().outcome());
}

constexpr std::string_view kNotOpened = "Intermediate rewriting file could not be opened.\n";
constexpr std::string_view kNotWritten = "Intermediate rewriting file could not be written.\n";
constexpr std::string_view kLostOutput = "Standard output could not be written.\n";
constexpr std::string_view kNotRead = "Internal parser invocation: can't open input.\n";
constexpr std::string_view kFact = "a_1(a,default).\n";
constexpr ShellCase kSourceAndLegend[] = {
    // Root may write everywhere but where there is nothing.
    {"source_in_no_folder", "ln -s none/source .source; zarel -silent few", "", kNotOpened, 1},
    {"source_is_a_folder", "mkdir .source; zarel -silent few", "", kNotOpened, 1},
    {"folder_that_takes_no_files", "mkdir no; cd no; rmdir ../no; zarel -silent ../few", "",
     kNotOpened, 1},
    {"help_needs_no_source", "ln -s none/source .source; zarel -help > help", ""},
    {"legend_in_no_folder", "ln -s none/legend .legend; zarel -silent -preparsing few", kFact},
    {"query_without_legend", "mkdir .legend; zarel -silent -solver=./uncalled query", "",
     kNotWritten, 1},
    {"legend_that_is_lost", "ln -s /dev/null .legend; zarel -silent -solver=./uncalled query", "",
     kNotWritten, 1},
    {"clause", "full .source few", "", kNotWritten, 1},
    {"many_clauses", "full .source many", "", kNotWritten, 1},
    {"verbatim_section", "full .source verbatim", "", kNotWritten, 1},
    {"query", "full .legend query", "", kNotWritten, 1},
    {"empty_legend", "full .legend few", "", kNotWritten, 1},
    // Nothing is shown of a program that is not all there.
    {"shown_clauses", "ln -s /dev/full .source; zarel -silent -preparsing many", "", kNotWritten,
     1},
    {"shown_behind_a_verbatim_section",
     "ln -s /dev/full .source; zarel -silent -preparsing verbatim", "", kNotWritten, 1},
    {"shown_query", "ln -s /dev/full .legend; zarel -silent -preparsing query", "", kNotWritten, 1},
    {"shown_with_a_name_that_is_lost",
     "cat many > lost; echo 'p(X)? q(Y,X).' >> lost; zarel -silent -preparsing lost", "", "", 1},
    {"shown_but_not_kept", "ln -s /dev/null .source; zarel -silent -preparsing verbatim",
     "a_1(b,default).\n"},
};
constexpr ShellCase kSolverOutput[] = {
    {"folder", "mkdir .output; end zarel -silent -solver=./solver few", "", kNotRead},
    {"no_folder", "ln -s none/output .output; end zarel -silent -solver=./solver few", "",
     kNotRead},
    {"endless_device", "ln -s /dev/full .output; end zarel -silent -solver=./solver few", "",
     kNotRead},
    // A program that runs is a file that not even root can write.
    {"old_answers",
     "cp \"$(command -v sleep)\" .output; ./.output 60 & "
     "until cmp -s /proc/$!/exe .output; do sleep 0.01; done; "
     "end zarel -silent -solver=./solver few; kill $!",
     "", kNotRead},
    {"disk_that_fills_up", "trap '' XFSZ; ulimit -f 100; zarel -silent pairs", "",
     "dl: cannot write to standard output: File too large\n"
     "Internal parser invocation: syntax error.\n"},
    {"no_shell",
     "echo '{a_1(old, default)}' > .output; "
     "word=$(printf %099999d 0); zarel -silent -solver=true -solverparams={-$word -$word} few",
     "", "It is impossible to call the Orvund System.\n", 1},
};
constexpr ShellCase kStandardStreams[] = {
    {"rewritten", "zarel -silent -preparsing few > /dev/full", "", kLostOutput, 1},
    {"much", "zarel -silent -preparsing many > /dev/full", "", kLostOutput, 1},
    {"echoed", "echo ^ > echo; zarel -silent -preparsing echo > /dev/full", "", kLostOutput, 1},
    {"banner", "zarel -solver=true few > /dev/full", "", kLostOutput, 1},
    {"help", "zarel -help > /dev/full", "", kLostOutput, 1},
    {"licence", "zarel -license > /dev/full", "", kLostOutput, 1},
    {"version", "zarel -v > /dev/full", "", kLostOutput, 1},
    // No file may take the number of a closed stream, and its text.
    {"closed_output", "zarel -solver=./solver few >&-", "",
     "a_1(a,default).\nStandard output could not be written.\n", 1},
    {"closed_errors", "zarel -silent none few 2>&-; head -n 1 .source", "{a}\na_1(a,default).\n"},
    {"all_closed", "zarel -silent none few <&- >&- 2>&-; head -n 1 .source", kFact},
    {"closed_input", "zarel -silent -postparsing <&-", "", kNotRead},
    {"folder_as_input", "zarel -silent -postparsing < .", "", kNotRead},
    // The first page of a process's memory is a file that opens.
    {"input_that_cannot_be_read",
     "zarel -silent -preparsing /proc/self/mem few; zarel -silent -postparsing < /proc/self/mem",
     kFact,
     "/proc/self/mem: line 0: can't open input.\nInternal parser invocation: can't open input.\n"},
    {"pipe_that_is_left", "(zarel -silent -preparsing many; echo $? >&2) | head -n 1",
     "a_2(p,default,0).\n", "141\n"},
    {"pipe_that_is_left_without_a_signal",
     "(trap '' PIPE; zarel -silent -preparsing many; echo $? >&2) | head -n 1",
     "a_2(p,default,0).\n", "Standard output could not be written.\n1\n"},
};
constexpr ShellCase kRuns[] = {
    {"in_different_folders_are_independent",
     "for i in 1 2 3 4; do mkdir $i; cd $i; echo \"p($i).\" > p; "
     "zarel -silent -solver=../last p > out & cd ..; done; wait; cat ?/out",
     "{p(1)}\n{p(2)}\n{p(3)}\n{p(4)}\n"},
};
INSTANTIATE_TEST_SUITE_P(SourceAndLegend, Faults, testing::ValuesIn(kSourceAndLegend), case_name);
INSTANTIATE_TEST_SUITE_P(SolverOutput, Faults, testing::ValuesIn(kSolverOutput), case_name);
INSTANTIATE_TEST_SUITE_P(StandardStreams, Faults, testing::ValuesIn(kStandardStreams), case_name);
INSTANTIATE_TEST_SUITE_P(Runs, Faults, testing::ValuesIn(kRuns), case_name);

TEST(IntermediateFiles, HoldQueriesInTheLegendAndTheLegendBehindTheSource) {
  const WorkFolder folder;
  folder.write("input.zrl", "a.\nb(X)?\nASITIS %*c.*%\n");
  folder.write(".output", "{old(a, b)}");
  const Outcome outcome =
      folder.run("for run in 1 2; do zarel -silent -solver=true input.zrl; done");
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(folder.read(".legend"),
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n\na_2(b,default,X)?\n");
  EXPECT_EQ(folder.read(".source"),
            "% ASITIS's Body is herein written verbatim\nc.\n% End of ASITIS's Section\n\n"
            "a_1(a,default).\n\n" +
                folder.read(".legend") + "\n");
  EXPECT_EQ(folder.read(".output"), "");
}

}    // namespace
}    // namespace zarel
