// catalogue_test.cc - the pages of the catalogue: each wrong example gives the page's code, each
// mended one no message; docs/messages.md is made of them.

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <set>

#include "base/diagnostic.h"
#include "support/run_program.h"
#include "workbench/pages/pages.h"

namespace workbench {
namespace {

using zarel::Outcome;
using zarel::WorkFolder;

// Standard error of the example, with a warning that is off by default switched on.
Outcome run_example(const Page& page, std::string_view example) {
  const WorkFolder folder;
  std::string command = page.kind == ExampleKind::kRun ? "zrl run" : "zrl check";
  if (!page.is_on) (command += " -W ") += page.code;
  if (page.kind == ExampleKind::kCommand) {
    folder.write("example.sh", example);
    command = "sh example.sh";
  } else {
    folder.write("example.zrl", example);
    command += " example.zrl";
  }
  return folder.run(command);
}

// Notes of a run as a whole, such as the number of answer sets, have no code.
bool has_message(const std::string& errors) {
  return errors.find("error: ") != std::string::npos ||
         errors.find("warning: ") != std::string::npos ||
         errors.find("note: ") != std::string::npos;
}

TEST(Pages, HaveExamplesThatGiveTheirCodes) {
  for (const Page& page : pages()) {
    if (page.kind == ExampleKind::kNone) continue;
    const std::string code = " [" + std::string(page.code) + "]\n";
    EXPECT_NE(run_example(page, page.wrong).errors.find(code), std::string::npos) << page.code;
    const Outcome mended = run_example(page, page.mended);
    EXPECT_FALSE(has_message(mended.errors)) << page.code << '\n' << mended.errors;
    const bool may_find_none = page.kind == ExampleKind::kRun && mended.status == 10;
    EXPECT_TRUE(mended.status == 0 || may_find_none) << page.code << ' ' << mended.status;
  }
}

TEST(Pages, AreWholeAndOfOneForm) {
  std::set<std::string_view> codes;
  for (const Page& page : pages()) {
    EXPECT_TRUE(codes.insert(page.code).second) << page.code;
    EXPECT_FALSE(page.title.empty() || page.title.ends_with('.')) << page.code;
    EXPECT_TRUE(page.meaning.ends_with(".\n")) << page.code;
    EXPECT_LE(page.title.size(), 80U) << page.code;
    for (std::string_view rest = page.meaning; !rest.empty();) {
      const std::size_t length = std::min(rest.find('\n'), rest.size() - 1);
      EXPECT_LE(length, 80U) << page.code;
      rest.remove_prefix(length + 1);
    }
    EXPECT_EQ(page.kind == ExampleKind::kNone, page.wrong.empty()) << page.code;
    EXPECT_EQ(page.wrong.empty(), page.mended.empty()) << page.code;
  }
}

// What the library finds and zrl never shows: zrl has checks of its own in place of the first, the
// grammar lets nothing through that gives the next two, then come those of the command line of dl,
// and what zrl says as a note of the run.
const std::set<std::string_view> kWithoutPage = {"unsafe-rule",    "role-clash",   "marker-clash",
                                                 "unknown-option", "option-value", "no-input-file",
                                                 "no-answer-set",  "search-cut",   "unproven-best"};

TEST(Pages, AreThereForAllThatIsFound) {
  if (syntax_pages().empty() || solver_pages().empty()) GTEST_SKIP() << "pages are being written";
  for (const zarel::DiagnosticKind& kind : zarel::all_kinds()) {
    EXPECT_NE(page_of(kind.name) != nullptr, kWithoutPage.contains(kind.name)) << kind.name;
  }
}

// scripts/messages_page writes it.
TEST(Pages, MakeTheDocumentation) {
  const Outcome outcome = WorkFolder().run("zrl explain --markdown");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, zarel::text_of(PROJECT_FOLDER "/docs/messages.md"));
}

}    // namespace
}    // namespace workbench
