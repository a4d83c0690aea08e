// examples_test.cc - runs every program of examples/ as its header tells users to, with the real
// solver, and compares what it prints.
//
// NAME.zrl is run as "zarel -silent OPTIONS NAME.zrl", OPTIONS being the line of NAME.options where
// there is one, and has to print NAME.expected. NAME.VARIANT.options with NAME.VARIANT.expected
// run the same program with other options. The answer sets may come in any order, the atoms in one
// may not: lines are sorted before they are compared.
// Templates of the library are at ../templates, as they are for users.
// With ZAREL_REWRITE_GOLDEN=1 in the environment, what an example prints becomes its expectation.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

constexpr char kExamples[] = EXAMPLES_FOLDER;

fs::path example_file(const std::string& name, const std::string& ending) {
  return fs::path(kExamples) / (name + ending);
}

// The name of a variant begins with that of its program.
std::string program_of(const std::string& name) {
  return name.substr(0, name.find('.'));
}

// A vector, not a text: a line that is printed twice has to be expected twice.
std::vector<std::string> sorted_lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  std::sort(lines.begin(), lines.end());
  return lines;
}

class Example : public testing::Test {
 public:
  explicit Example(std::string name) : name_(std::move(name)) {}

  void TestBody() override {
    const fs::path expected = example_file(name_, ".expected");
    ASSERT_TRUE(is_rewriting() || fs::exists(expected)) << name_ << " has no expected output";
    const Outcome outcome = run();
    ASSERT_EQ(outcome.errors, "");
    ASSERT_EQ(outcome.status, "0\n");
    if (is_rewriting()) {
      std::ofstream(expected, std::ios::binary) << outcome.output;
    } else {
      EXPECT_EQ(sorted_lines(outcome.output), sorted_lines(text_of(expected)));
    }
  }

 private:
  Outcome run() const {
    const WorkFolder folder({kExamples, TEMPLATES_FOLDER});
    const std::string options = first_line_of(example_file(name_, ".options"));
    return run_zarel(folder.path() / fs::path(kExamples).filename(),
                     "-silent " + options + " " + program_of(name_) + ".zrl");
  }

  std::string name_;
};

// Every name with options or an expectation, and every program that has neither.
std::set<std::string> example_names() {
  std::set<std::string> names;
  std::set<std::string> programs;
  for (const auto& entry : fs::directory_iterator(kExamples)) {
    const std::string ending = entry.path().extension().string();
    const std::string stem = entry.path().stem().string();
    if (ending == ".zrl") programs.insert(stem);
    if (ending == ".options" || ending == ".expected") names.insert(stem);
  }
  for (const std::string& name : names) programs.erase(program_of(name));
  names.merge(programs);
  return names;
}

std::string test_name_of(std::string name) {
  std::replace(name.begin(), name.end(), '.', '_');
  return name;
}

}    // namespace
}    // namespace zarel

int main(int argument_count, char** arguments) {
  testing::InitGoogleTest(&argument_count, arguments);
  for (const std::string& name : zarel::example_names()) {
    testing::RegisterTest(
        "Examples", zarel::test_name_of(name).c_str(), nullptr, nullptr, __FILE__, __LINE__,
        [name]() -> zarel::Example* { return new zarel::Example(name); });    // the framework's
  }
  return RUN_ALL_TESTS();
}
