// cases_test.cc - runs every case of the files in cases/, and compares what it gives back. With
// ZAREL_REWRITE_GOLDEN=1 in the environment, what it gives back becomes what is expected.
//
//     === name of the case                     the first one of the file has its purpose above it
//     --- other.zrl                            a file for the run, and its lines; the lines in front
//     p(1).                                    of the first such mark are those of program.zrl
//     $ zrl check program.zrl other.zrl        the command, a shell's
//     ...                                      standard output, and behind it standard error
//     [1]                                      the status, when it is not 0

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

struct Case {
  std::string name;
  std::map<std::string, std::string> files;
  std::string command;
  std::string expected;
};

struct CaseFile {
  fs::path path;
  std::string purpose;
  std::vector<Case> cases;
};

std::string status_line(int status) {
  std::string line;
  if (status != 0) ((line += '[') += std::to_string(status)) += "]\n";
  return line;
}

// Goes from "===" through files to the command and what is expected of it.
CaseFile read_cases(const fs::path& path) {
  CaseFile file{path, {}, {}};
  std::ifstream in(path, std::ios::binary);
  std::string* text = &file.purpose;
  for (std::string line; std::getline(in, line);) {
    if (line.starts_with("=== ")) {
      Case& next = file.cases.emplace_back();
      next.name = line.substr(4);
      text = &next.files["program.zrl"];
    } else if (!file.cases.empty() && file.cases.back().command.empty() &&
               line.starts_with("--- ")) {
      text = &file.cases.back().files[line.substr(4)];
    } else if (!file.cases.empty() && file.cases.back().command.empty() && line.starts_with("$ ")) {
      file.cases.back().command = line.substr(2);
      text = &file.cases.back().expected;
    } else {
      (*text += line) += '\n';
    }
  }
  return file;
}

std::string written(const CaseFile& file) {
  std::string text = file.purpose;
  for (const Case& each : file.cases) {
    ((text += "=== ") += each.name) += '\n';
    text += each.files.at("program.zrl");
    for (const auto& [name, content] : each.files) {
      if (name != "program.zrl") (((text += "--- ") += name) += '\n') += content;
    }
    (((text += "$ ") += each.command) += '\n') += each.expected;
  }
  return text;
}

class Cases : public testing::TestWithParam<std::string> {};

TEST_P(Cases, give_what_is_expected) {
  CaseFile file = read_cases(fs::path(PROJECT_FOLDER "/tests/workbench/cases") / GetParam());
  ASSERT_FALSE(file.cases.empty());
  for (Case& each : file.cases) {
    const WorkFolder folder;
    for (const auto& [name, content] : each.files) folder.write(name, content);
    const Outcome outcome = folder.run(each.command);
    const std::string given = outcome.output + outcome.errors + status_line(outcome.status);
    EXPECT_EQ(given, each.expected) << each.name;
    each.expected = given;
  }
  if (std::getenv("ZAREL_REWRITE_GOLDEN") != nullptr) {    // NOLINT(concurrency-mt-unsafe)
    std::ofstream(file.path, std::ios::binary) << written(file);
  }
}

std::vector<std::string> case_files() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(PROJECT_FOLDER "/tests/workbench/cases")) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

INSTANTIATE_TEST_SUITE_P(of, Cases, testing::ValuesIn(case_files()), [](const auto& test) {
  std::string name = test.param.substr(0, test.param.find('.'));
  return name;
});

}    // namespace
}    // namespace zarel
