// golden_test.cc - runs every case under golden/, and every program of examples/ as its header
// tells users to, with the real programs, and compares what they give back. With
// ZAREL_REWRITE_GOLDEN=1 in the environment, what they give back becomes what is expected.
//
// A case is a folder. `why` says in a line what it guards; `args` is the command line behind
// "zarel" (shell words); the other files are copied to where it runs. Expected are `stdout`,
// `stderr` (both empty when there is no such file), `status` (0 when there is none), and `source`,
// the file ".source", where the case has it.
//
// An example NAME.zrl is run as "zarel -silent OPTIONS NAME.zrl", OPTIONS being the line of
// NAME.options where there is one, and has to print NAME.expected. NAME.VARIANT.options with
// NAME.VARIANT.expected run the same program with other options. The answer sets may come in any
// order, the atoms in one may not: lines are sorted before they are compared. Templates of the
// library are at ../library, as they are for users.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

bool is_rewriting() {
  return std::getenv("ZAREL_REWRITE_GOLDEN") != nullptr;    // NOLINT(concurrency-mt-unsafe)
}

// The first line, without its end.
std::string first_line_of(const fs::path& path) {
  const std::string text = text_of(path);
  return text.substr(0, std::min(text.find('\n'), text.size()));
}

// The usual text, where there is one, stands in no file.
void compare(const fs::path& expected, const std::string& text,
             const std::optional<std::string>& usual) {
  if (!is_rewriting()) {
    EXPECT_EQ(text, fs::exists(expected) ? text_of(expected) : usual.value_or(""));
  } else if (text == usual) {
    fs::remove(expected);
  } else {
    std::ofstream(expected, std::ios::binary) << text;
  }
}

void check_case(const fs::path& golden) {
  const WorkFolder folder;
  fs::copy(golden, folder.path(), fs::copy_options::recursive);
  for (const char* name : {"stdout", "stderr", "status", "source", "why"}) {
    fs::remove(folder.path() / name);
  }
  const Outcome outcome = folder.run("zarel " + first_line_of(golden / "args"));
  compare(golden / "stdout", outcome.output, "");
  compare(golden / "stderr", outcome.errors, "");
  compare(golden / "status", std::to_string(outcome.status) + "\n", "0\n");
  if (fs::exists(golden / "source"))
    compare(golden / "source", folder.read(".source"), std::nullopt);
}

// A vector, not a text: a line that is printed twice has to be expected twice.
std::vector<std::string> sorted_lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  std::ranges::sort(lines);
  return lines;
}

fs::path example_file(const std::string& name, const std::string& ending) {
  return fs::path(PROJECT_FOLDER "/examples") / (name + ending);
}

// The name of a variant begins with that of its program.
std::string program_of(const std::string& name) {
  return name.substr(0, name.find('.'));
}

void check_example(const std::string& name) {
  const WorkFolder folder;
  fs::copy(PROJECT_FOLDER "/examples", folder.path() / "examples", fs::copy_options::recursive);
  fs::copy(PROJECT_FOLDER "/library", folder.path() / "library", fs::copy_options::recursive);
  const fs::path expected = example_file(name, ".expected");
  const Outcome outcome =
      folder.run("cd examples; zarel -silent " + first_line_of(example_file(name, ".options")) +
                 " " + program_of(name) + ".zrl");
  ASSERT_EQ(outcome, (Outcome{outcome.output, "", 0}));
  if (is_rewriting()) std::ofstream(expected, std::ios::binary) << outcome.output;
  ASSERT_TRUE(fs::exists(expected)) << name << " has no expected output";
  EXPECT_EQ(sorted_lines(outcome.output), sorted_lines(text_of(expected)));
}

// Every name with options or an expectation, and every program that has neither.
std::set<std::string> example_names() {
  std::set<std::string> names;
  std::set<std::string> programs;
  for (const auto& entry : fs::directory_iterator(PROJECT_FOLDER "/examples")) {
    const std::string ending = entry.path().extension().string();
    const std::string stem = entry.path().stem().string();
    if (ending == ".zrl") programs.insert(stem);
    if (ending == ".options" || ending == ".expected") names.insert(stem);
  }
  for (const std::string& name : names) programs.erase(program_of(name));
  names.merge(programs);
  return names;
}

class Check : public testing::Test {
 public:
  explicit Check(std::function<void()> body) : body_(std::move(body)) {}
  void TestBody() override { body_(); }

 private:
  std::function<void()> body_;
};

void register_check(const std::string& area, std::string name, const std::function<void()>& body) {
  std::ranges::replace(name, '.', '_');
  testing::RegisterTest(area.c_str(), name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                        [body]() -> Check* { return new Check(body); });    // the framework's
}

}    // namespace
}    // namespace zarel

int main(int argument_count, char** arguments) {
  testing::InitGoogleTest(&argument_count, arguments);
  for (const std::string& name : zarel::example_names()) {
    zarel::register_check("Examples", name, [name] { zarel::check_example(name); });
  }
  std::set<std::filesystem::path> cases;    // AREA/NAME, every folder that holds an `args`
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(PROJECT_FOLDER "/tests/golden")) {
    if (entry.path().filename() == "args") cases.insert(entry.path().parent_path());
  }
  for (const std::filesystem::path& folder : cases) {
    zarel::register_check("Golden_" + folder.parent_path().filename().string(),
                          folder.filename().string(), [folder] { zarel::check_case(folder); });
  }
  return RUN_ALL_TESTS();
}
