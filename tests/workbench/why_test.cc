// why_test.cc - what every explanation of the examples has to be like.

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

// The arguments of the first "zrl" that the head of an example shows, its options left out.
std::string files_of(const fs::path& example) {
  std::smatch run;
  const std::string text = text_of(example);
  if (!std::regex_search(text, run, std::regex("% Run: +zrl ([^\n]*)"))) return example.filename();
  std::istringstream words(run[1].str());
  std::string files;
  for (std::string word; words >> word;) {
    if (word.starts_with("(")) break;    // a remark
    if (!word.starts_with('-')) files += " " + word;
  }
  return files;
}

// Nothing that the rewriting made up: encodings, auxiliary and generated predicates, variables.
TEST(Explanations, OfTheExamplesShowNoGeneratedName) {
  const std::regex made_up(
      "\\ba_[0-9]+\\(|\\b(faa|aaa)[0-9]|\\bF_\\w+_[0-9]|\\b(Group|Var)[0-9]|#function_builtin|"
      "\\b[a-z]\\w*_[0-9]+\\b|Flogic|->\"");
  const WorkFolder folder;
  fs::copy(fs::path(PROJECT_FOLDER) / "examples", folder.path() / "examples");
  fs::copy(fs::path(PROJECT_FOLDER) / "library", folder.path() / "library");
  std::size_t explained = 0;
  for (const auto& entry : fs::directory_iterator(folder.path() / "examples")) {
    // In the first two the user's own text has such names; the third has classes with prefixes,
    // which answers show and statements cannot have.
    const std::string stem = entry.path().stem();
    if (entry.path().extension() != ".zrl" || stem == "bridge" || stem == "ontology" ||
        stem == "addresses")
      continue;
    const std::string files = files_of(entry.path());
    const std::string in = "cd examples; ";
    const std::string all =
        folder.run(in + "zrl -q -n 1 --format lines --no-facts" + files + " | grep -v '^%'").output;
    std::istringstream atoms(all);
    std::size_t taken = 0;
    for (std::string atom; std::getline(atoms, atom) && taken < 6; ++taken) {
      if (atom.empty() || atom.front() == '?') break;
      for (const char* const command : {"why --depth 0", "whynot"}) {
        std::string text = in + "zrl " + command + " -- '" + atom + "'" + files;
        const auto run = folder.run(text);
        EXPECT_TRUE(run.status == 0 || run.status == 10) << text << "\n" << run.errors;
        std::smatch found;
        EXPECT_FALSE(std::regex_search(run.output, found, made_up)) << text << "\n" << run.output;
        ++explained;
      }
    }
  }
  EXPECT_GT(explained, 100U);
}

}    // namespace
}    // namespace zarel
