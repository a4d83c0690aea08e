#pragma once
// rewrite_fixture.h - input files of a test's own, and the program that they are rewritten to.

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "driver/rewriting.h"
#include "support/run_program.h"

namespace zarel {

// Runs each test inside a fresh folder, so that messages show plain file names.
class RewriteTest : public testing::Test {
 protected:
  RewriteTest() : before_(std::filesystem::current_path()) {
    std::filesystem::current_path(folder_.path());
  }
  ~RewriteTest() override { std::filesystem::current_path(before_); }

  // Writes the texts to the files "1", "2", ... and rewrites them as one program.
  static RewrittenProgram rewritten(std::initializer_list<std::string_view> texts,
                                    const RewriteOptions& options = {}) {
    return rewrite(written(texts), options);
  }

  static std::vector<std::string> written(std::initializer_list<std::string_view> texts) {
    std::vector<std::string> files;
    for (const std::string_view text : texts) {
      files.push_back(std::to_string(files.size() + 1));
      std::filesystem::remove(files.back());    // writing over a file waits for some disks
      std::ofstream(files.back(), std::ios::binary) << text;
    }
    return files;
  }

 private:
  const WorkFolder folder_;
  std::filesystem::path before_;
};

}    // namespace zarel
