// intermediate_files_test.cc - ".source", ".legend", ".output" and the standard streams when they
// cannot be opened, written or read.

#include "shell_fixture.h"

namespace zarel {
namespace {

struct Case {
  std::string_view name, commands, output, errors, status;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

class Faults : public ShellTest, public testing::WithParamInterface<Case> {
 protected:
  Faults() {
    write("few", "a.\n");
    write("query", "a?\n");
    write("echo", "^\n");
    write("include", "#include <a>\n");
    write("verbatim", "ASITIS %*a.*%\n");
    write("nothing", "%\n");
    std::string facts;
    for (int i = 0; i < 20'000; ++i) facts += "p(" + std::to_string(i) + ").\n";
    write("many", facts);
    write("pairs", "q(X,Y) :- p(X), p(Y).\n" + facts.substr(0, facts.find("p(150)")));
    write_script("uncalled", "echo called >&2\n");
    write_script("solver", "head -n 1 .source >&2; echo '{a_1(a, default)}'\n");
    // Runs beside three others, each in a folder of its own.
    write_script("last", "'" ZAREL_FOLDER
                         "/dl' \"$@\"; touch done\n"
                         "until [ $(ls ../?/done | wc -l) = 4 ]; do sleep 0.01; done\n");
  }
};

// What the shell says itself is not looked at: "end" shows the last line only.
TEST_P(Faults, AreReportedOnce) {
  const Outcome outcome =
      run("end() { \"$@\" 2> said; set -- $?; tail -n 1 said >&2; return $1; }; " +
          std::string(GetParam().commands));
  EXPECT_EQ(outcome.output, GetParam().output);
  EXPECT_EQ(outcome.errors, GetParam().errors);
  EXPECT_EQ(outcome.status, GetParam().status);
}

constexpr std::string_view kNotOpened = "Intermediate rewriting file could not be opened.\n";
constexpr std::string_view kNotWritten = "Intermediate rewriting file could not be written.\n";
constexpr std::string_view kLostOutput = "Standard output could not be written.\n";
constexpr std::string_view kNotRead = "Internal parser invocation: can't open input.\n";
constexpr std::string_view kFact = "a_1(a,default).\n";
constexpr Case kSourceAndLegend[] = {
    // Root may write everywhere but where there is nothing.
    {"source_in_no_folder", "ln -s none/source .source; zarel -silent few", "", kNotOpened, "1\n"},
    {"source_is_a_folder", "mkdir .source; zarel -silent few", "", kNotOpened, "1\n"},
    {"folder_that_takes_no_files", "mkdir no; cd no; rmdir ../no; zarel -silent ../few", "",
     kNotOpened, "1\n"},
    {"help_needs_no_source", "ln -s none/source .source; zarel -help > help", "", "", "0\n"},
    {"legend_in_no_folder", "ln -s none/legend .legend; zarel -silent -preparsing few", kFact, "",
     "0\n"},
    {"query_without_legend", "mkdir .legend; zarel -silent -solver=./uncalled query", "",
     kNotWritten, "1\n"},
    {"legend_that_is_lost", "ln -s /dev/null .legend; zarel -silent -solver=./uncalled query", "",
     kNotWritten, "1\n"},
    {"clause", "ln -s /dev/full .source; zarel -silent -solver=./uncalled few", "", kNotWritten,
     "1\n"},
    {"many_clauses", "ln -s /dev/full .source; zarel -silent -solver=./uncalled many", "",
     kNotWritten, "1\n"},
    {"verbatim_section", "ln -s /dev/full .source; zarel -silent -solver=./uncalled verbatim", "",
     kNotWritten, "1\n"},
    {"include_line", "ln -s /dev/full .source; zarel -silent -solver=./uncalled include", "",
     kNotWritten, "1\n"},
    {"nothing", "ln -s /dev/full .source; zarel -silent -solver=./uncalled nothing", "",
     kNotWritten, "1\n"},
    {"query", "ln -s /dev/full .legend; zarel -silent -solver=./uncalled query", "", kNotWritten,
     "1\n"},
    {"empty_legend", "ln -s /dev/full .legend; zarel -silent -solver=./uncalled few", "",
     kNotWritten, "1\n"},
};
constexpr Case kSolverOutput[] = {
    {"folder", "mkdir .output; end zarel -silent -solver=./solver few", "", kNotRead, "0\n"},
    {"no_folder", "ln -s none/output .output; end zarel -silent -solver=./solver few", "", kNotRead,
     "0\n"},
    {"endless_device", "ln -s /dev/full .output; end zarel -silent -solver=./solver few", "",
     kNotRead, "0\n"},
    // A program that runs is a file that not even root can write.
    {"old_answers",
     "cp \"$(command -v sleep)\" .output; ./.output 60 & "
     "until cmp -s /proc/$!/exe .output; do sleep 0.01; done; "
     "end zarel -silent -solver=./solver few; kill $!",
     "", kNotRead, "0\n"},
    {"disk_that_fills_up", "trap '' XFSZ; ulimit -f 100; zarel -silent pairs", "",
     "dl: cannot write to standard output: File too large\n"
     "Internal parser invocation: syntax error.\n",
     "0\n"},
    {"no_shell",
     "echo '{a_1(old, default)}' > .output; "
     "word=$(printf %099999d 0); zarel -silent -solver=true -solverparams={-$word -$word} few",
     "", "It is impossible to call the Orvund System.\n", "1\n"},
};
constexpr Case kStandardStreams[] = {
    {"rewritten", "zarel -silent -preparsing few > /dev/full", "", kLostOutput, "1\n"},
    {"much", "zarel -silent -preparsing many > /dev/full", "", kLostOutput, "1\n"},
    {"echoed", "zarel -silent -preparsing echo > /dev/full", "", kLostOutput, "1\n"},
    {"banner", "zarel -solver=true few > /dev/full", "", kLostOutput, "1\n"},
    {"help", "zarel -help > /dev/full", "", kLostOutput, "1\n"},
    {"licence", "zarel -license > /dev/full", "", kLostOutput, "1\n"},
    {"version", "zarel -v > /dev/full", "", kLostOutput, "1\n"},
    // No file may take the number of a closed stream, and its text.
    {"closed_output", "zarel -solver=./solver few >&-", "",
     "a_1(a,default).\nStandard output could not be written.\n", "1\n"},
    {"closed_errors", "zarel -silent none few 2>&-; head -n 1 .source", "{a}\na_1(a,default).\n",
     "", "0\n"},
    {"all_closed", "zarel -silent none few <&- >&- 2>&-; head -n 1 .source", kFact, "", "0\n"},
    {"closed_input", "zarel -silent -postparsing <&-", "", "input in flex scanner failed\n", "2\n"},
    {"pipe_that_is_left", "(zarel -silent -preparsing many; echo $? >&2) | head -n 1",
     "a_2(p,default,0).\n", "141\n", "0\n"},
    {"pipe_that_is_left_without_a_signal",
     "(trap '' PIPE; zarel -silent -preparsing many; echo $? >&2) | head -n 1",
     "a_2(p,default,0).\n", "Standard output could not be written.\n1\n", "0\n"},
};
constexpr Case kRuns[] = {
    {"in_different_folders_are_independent",
     "for i in 1 2 3 4; do mkdir $i; cd $i; echo \"p($i).\" > p; "
     "zarel -silent -solver=../last p > out & cd ..; done; wait; cat ?/out",
     "{p(1)}\n{p(2)}\n{p(3)}\n{p(4)}\n", "", "0\n"},
};
constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };
INSTANTIATE_TEST_SUITE_P(SourceAndLegend, Faults, testing::ValuesIn(kSourceAndLegend), case_name);
INSTANTIATE_TEST_SUITE_P(SolverOutput, Faults, testing::ValuesIn(kSolverOutput), case_name);
INSTANTIATE_TEST_SUITE_P(StandardStreams, Faults, testing::ValuesIn(kStandardStreams), case_name);
INSTANTIATE_TEST_SUITE_P(Runs, Faults, testing::ValuesIn(kRuns), case_name);

TEST_F(ShellTest, WritesQueriesToTheLegendAndTheLegendBehindTheSource) {
  write("input.zrl", "a.\nb(X)?\nASITIS %*c.*%\n");
  write(".output", "{old(a, b)}");
  const Outcome outcome =
      run("zarel -silent -solver=true input.zrl && zarel -silent -solver=true input.zrl");
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(text(".legend"),
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n\na_2(b,default,X)?\n");
  EXPECT_EQ(text(".source"),
            "% ASITIS's Body is herein written verbatim\nc.\n% End of ASITIS's Section\n\n"
            "a_1(a,default).\n\n"
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n\n"
            "a_2(b,default,X)?\n\n");
  EXPECT_EQ(text(".output"), "");
}

}    // namespace
}    // namespace zarel
