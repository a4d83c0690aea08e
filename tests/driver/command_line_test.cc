// command_line_test.cc - banner, usage, licence: the texts that hold the date of the build.

#include <regex>

#include "shell_fixture.h"

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

struct Case {
  std::string_view name, command, output, errors, status;
  friend void PrintTo(const Case& test, std::ostream* out) { *out << test.name; }
};

class BehindTheBanner : public ShellTest, public testing::WithParamInterface<Case> {};

TEST_P(BehindTheBanner, ComesWhatTheArgumentsAskFor) {
  write(".source", "old");
  write(".legend", "old");
  const Outcome outcome = run(std::string(GetParam().command));
  EXPECT_EQ(behind_banner(outcome.output), GetParam().output);
  EXPECT_EQ(outcome.errors, GetParam().errors);
  EXPECT_EQ(outcome.status, GetParam().status);
  EXPECT_EQ(text(".source") + text(".legend"), "");    // every run starts them anew
}

const std::string kLongUsage = std::string(kUsage).append(kHelp);
const Case kCases[] = {
    {"no_argument", "zarel", kMore, kUsage, "255\n"},
    {"options_without_a_file", "zarel -preparsing -uri", kMore, kUsage, "255\n"},
    {"help", "zarel -help", kLongUsage, "", "0\n"},
    {"short_help", "zarel -h -nonsense", kLongUsage, "", "0\n"},
    {"silent_help", "zarel -silent missing.zrl --help", kLongUsage, "", "0\n"},
    {"unknown_option", "zarel -silent missing.zrl -vv -help", kMore, kUsage, "255\n"},
    {"two_dashes_and_v", "zarel --v", kMore, kUsage, "255\n"},
    {"two_dashes_and_h", "zarel --h", kMore, kUsage, "255\n"},
    {"lone_dash", "zarel -silent - < /dev/null", kMore, kUsage, "255\n"},
    {"more_than_the_exact_word", "zarel -silent=1", kMore, kUsage, "255\n"},
    {"linked_templates_are_no_prefix", "zarel -linktemplates=1", kMore, kUsage, "255\n"},
    {"both_spellings_of_linked_templates", "zarel -linktemplates --linktemplates", kMore, kUsage,
     "255\n"},
    {"open_list", "zarel -silent a.zrl '-solverparams={-n=3'", kMore, kUsage, "255\n"},
    {"open_list_of_two_words", "zarel '-solverparams={-n=3' -help", kMore, kUsage, "255\n"},
    {"list_that_is_closed_too_early", "zarel '-solverparams={a}b'", kMore, kUsage, "255\n"},
    {"only_a_closing_brace", "zarel '}'", kMore, kUsage, "255\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, BehindTheBanner, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(ShellTest, ShowsTheNameAsTheUserCalledTheProgram) {
  const Outcome outcome = run("'" ZAREL "'");
  EXPECT_TRUE(outcome.errors.starts_with("usage:  " ZAREL " {FRONTEND}")) << outcome.errors;
}

TEST_F(ShellTest, PutsTheBannerBeforeWhatReadingEchoes) {
  write("input.zrl", "^a.\n");
  EXPECT_EQ(behind_banner(run("zarel input.zrl -preparsing").output), "^a_1(a,default).\n");
  EXPECT_EQ(behind_banner(run("echo '{}' | zarel -postparsing").output), "{}\n");
}

TEST_F(ShellTest, ShowsTheFirstThreeParagraphsOfTheLicenceForVerbose) {
  std::string notice = behind_banner(run("zarel -silent --license missing.zrl").output);
  EXPECT_EQ(behind_banner(run("zarel -license").output), notice);
  std::string paragraphs;
  for (int i = 0; i < 3; ++i) {
    const std::size_t end = notice.find("\n\n");
    ASSERT_NE(end, std::string::npos);
    paragraphs += notice.substr(0, end + 1);
    notice.erase(0, end + 2);
  }
  const Outcome verbose = run("zarel -v");
  const std::string shown = behind_banner(verbose.output);
  // The line end of the third paragraph, and one more.
  EXPECT_TRUE(shown == paragraphs + "\n" || shown == paragraphs) << shown;
  EXPECT_EQ(verbose.status, "0\n");
  EXPECT_EQ(verbose.errors, "");
}

}    // namespace
}    // namespace zarel
