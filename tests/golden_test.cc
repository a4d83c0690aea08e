// golden_test.cc - runs every case under golden/ with the real programs and compares all that it
// gives back.
//
// A case is a folder. `why` says in a line what it guards; `args` is the command line behind
// "zarel" (shell words); the other files are copied to where it runs. Expected are `stdout`,
// `stderr` (both empty when there is no such file), `status` (0 when there is none), and `source`,
// the file ".source", where the case has it. With ZAREL_REWRITE_GOLDEN=1 in the environment, what a
// case gives back becomes what it expects.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

struct CaseOutcome {
  Outcome run;
  std::string source;
};

CaseOutcome run_case(const fs::path& golden_case) {
  const WorkFolder folder(golden_case);
  for (const char* name : {"stdout", "stderr", "status", "source", "why"}) {
    fs::remove(folder.path() / name);
  }
  Outcome run = run_zarel(folder.path(), first_line_of(golden_case / "args"));
  return {std::move(run), text_of(folder.path() / ".source")};
}

void write_expectation(const fs::path& path, const std::string& text, const std::string& usual) {
  if (text == usual) {
    fs::remove(path);
  } else {
    std::ofstream(path, std::ios::binary) << text;
  }
}

class GoldenCase : public testing::Test {
 public:
  explicit GoldenCase(fs::path folder) : folder_(std::move(folder)) {}

  void TestBody() override {
    const CaseOutcome outcome = run_case(folder_);
    if (is_rewriting()) return rewrite(outcome);
    EXPECT_EQ(outcome.run.output, text_of(folder_ / "stdout"));
    EXPECT_EQ(outcome.run.errors, text_of(folder_ / "stderr"));
    EXPECT_EQ(outcome.run.status,
              fs::exists(folder_ / "status") ? text_of(folder_ / "status") : "0\n");
    if (!fs::exists(folder_ / "source")) return;
    EXPECT_EQ(outcome.source, text_of(folder_ / "source"));
  }

 private:
  void rewrite(const CaseOutcome& outcome) const {
    write_expectation(folder_ / "stdout", outcome.run.output, "");
    write_expectation(folder_ / "stderr", outcome.run.errors, "");
    write_expectation(folder_ / "status", outcome.run.status, "0\n");
    if (fs::exists(folder_ / "source")) write_expectation(folder_ / "source", outcome.source, "");
  }

  fs::path folder_;
};

// AREA/NAME, from every folder that holds an `args`.
std::vector<fs::path> golden_cases() {
  std::vector<fs::path> cases;
  for (const auto& entry : fs::recursive_directory_iterator(GOLDEN_FOLDER)) {
    if (entry.path().filename() == "args") cases.push_back(entry.path().parent_path());
  }
  std::sort(cases.begin(), cases.end());
  return cases;
}

}    // namespace
}    // namespace zarel

int main(int argument_count, char** arguments) {
  testing::InitGoogleTest(&argument_count, arguments);
  for (const std::filesystem::path& folder : zarel::golden_cases()) {
    const std::string area = "Golden_" + folder.parent_path().filename().string();
    testing::RegisterTest(area.c_str(), folder.filename().c_str(), nullptr, nullptr, __FILE__,
                          __LINE__, [folder]() -> zarel::GoldenCase* {
                            return new zarel::GoldenCase(folder);
                          });    // the framework owns it
  }
  return RUN_ALL_TESTS();
}
