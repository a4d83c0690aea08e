// command_line_test.cc - banner, usage, licence: the texts that hold the date of the build.

#include <regex>

#include "support/run_program.h"

namespace zarel {
namespace {

constexpr std::string_view kUsage =
    "usage:  zarel {FRONTEND} {OPTIONS} [filename [filename [...]]]\n\n";
constexpr std::string_view kMore = "Specify -help for more detailed usage information.\n\n";
constexpr std::string_view kHelp =
    "Zarel Specific options:\n"
    "\n"
    "--higherorder               Enables higher order predicate names\n"
    "--solver=[path_name]        The path of the solver executable file \n"
    "                            For example: --solver=/orvund/ov\n"
    "--preparsing                Print out re-written code and exit\n"
    "--postparsing               Maps higher-order atoms into first-order atom\n"
    "--framespace                Activates displaying for framespace directives\n"
    "--uri                       Enables more verbose output for URI constants\n"
    "--filter=name1,..,nameN     Output only instances of the specified predicates\n"
    "--pfilter=name1,..,nameN    Output only positive of the  instances \n"
    "                            specified predicates\n"
    "--solverparams={options}    The specific solver options \n"
    "                            For example: -solverparams={-v -nofacts}\n"
    "--aritycheck                Forces to check same arity for the same\n"
    "                            predicate name\n"
    "--safetycheck               Forces to check safety of rule's head variables\n"
    "\n"
    "\n";

// What follows the banner; the whole text, marked, when there is none in front.
std::string behind_banner(const std::string& output) {
  static const std::regex banner(
      "^Zarel\\. [^\\n]+\\n"
      "\\[V1\\.5\\.1 - Build [^/\\n]+/[A-Z][a-z]{2} [ 0-9][0-9] [0-9]{4}   gcc [^\\n]+\\]\\n\\n");
  std::smatch match;
  if (!std::regex_search(output, match, banner)) return "no banner: " + output;
  return match.suffix();
}

class BehindTheBanner : public testing::TestWithParam<ShellCase> {};
TEST_P(BehindTheBanner, ComesWhatTheArgumentsAskFor) {
  const WorkFolder folder;
  folder.write(".source", "old");
  folder.write(".legend", "old");
  Outcome outcome = folder.run(GetParam().commands);
  outcome.output = behind_banner(outcome.output);
  EXPECT_EQ(outcome, GetParam().outcome());
  EXPECT_EQ(folder.read(".source") + folder.read(".legend"), "");    // every run starts them anew
}

const std::string kLongUsage = std::string(kUsage).append(kHelp);
const ShellCase kCases[] = {
    {"no_argument", "zarel", kMore, kUsage, 255},
    {"options_without_a_file", "zarel -preparsing -uri", kMore, kUsage, 255},
    {"help", "zarel -help", kLongUsage, ""},
    {"short_help", "zarel -h -nonsense", kLongUsage, ""},
    {"silent_help", "zarel -silent missing.zrl --help", kLongUsage, ""},
    {"unknown_option", "zarel -silent missing.zrl -vv -help", kMore, kUsage, 255},
    {"two_dashes_and_v", "zarel --v", kMore, kUsage, 255},
    {"two_dashes_and_h", "zarel --h", kMore, kUsage, 255},
    {"lone_dash", "zarel -silent - < /dev/null", kMore, kUsage, 255},
    {"more_than_the_exact_word", "zarel -silent=1", kMore, kUsage, 255},
    {"linked_templates_are_no_prefix", "zarel -linktemplates=1", kMore, kUsage, 255},
    {"both_spellings_of_linked_templates", "zarel -linktemplates --linktemplates", kMore, kUsage,
     255},
    {"open_list", "zarel -silent a.zrl '-solverparams={-n=3'", kMore, kUsage, 255},
    {"open_list_of_two_words", "zarel '-solverparams={-n=3' -help", kMore, kUsage, 255},
    {"list_that_is_closed_too_early", "zarel '-solverparams={a}b'", kMore, kUsage, 255},
    {"only_a_closing_brace", "zarel '}'", kMore, kUsage, 255},
};
INSTANTIATE_TEST_SUITE_P(Cases, BehindTheBanner, testing::ValuesIn(kCases), case_name);

TEST(CommandLine, ShowsTheNameAsTheUserCalledTheProgram) {
  const Outcome outcome = WorkFolder().run("'" ZAREL_FOLDER "/zarel'");
  EXPECT_TRUE(outcome.errors.starts_with("usage:  " ZAREL_FOLDER "/zarel {FRONTEND}"));
}

TEST(CommandLine, PutsTheBannerBeforeWhatReadingEchoes) {
  const WorkFolder folder;
  EXPECT_EQ(behind_banner(folder.run("echo ^a. > input; zarel input -preparsing").output),
            "^a_1(a,default).\n");
  EXPECT_EQ(behind_banner(folder.run("echo '{}' | zarel -postparsing").output), "{}\n");
}

TEST(CommandLine, ShowsTheFirstThreeParagraphsOfTheLicenceForVerbose) {
  const WorkFolder folder;
  const std::string notice =
      behind_banner(folder.run("zarel -silent --license missing.zrl").output);
  EXPECT_EQ(behind_banner(folder.run("zarel -license").output), notice);
  EXPECT_EQ(notice, text_of(PROJECT_FOLDER "/LICENSE") + "\n");
  std::size_t end = 0;
  for (int i = 0; i < 3; ++i) end = notice.find("\n\n", end) + 2;
  Outcome verbose = folder.run("zarel -v");
  verbose.output = behind_banner(verbose.output);
  const std::regex blank_line("\n\n");
  const std::string paragraphs = std::regex_replace(notice.substr(0, end), blank_line, "\n");
  EXPECT_EQ(verbose, (Outcome{paragraphs + "\n", "", 0}));
}

}    // namespace
}    // namespace zarel
