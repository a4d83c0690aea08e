#include "run_dl.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <vector>

namespace dl_test {

Directory::Directory() {
  std::string path = (std::filesystem::temp_directory_path() / "dl-test-XXXXXX").string();
  if (::mkdtemp(path.data()) == nullptr) throw std::runtime_error("no temporary directory");
  path_ = path;
}

Directory::~Directory() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

void Directory::write(const std::string& name, std::string_view text) const {
  std::ofstream file(path_ + "/" + name, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void Directory::write_script(const std::string& name, std::string_view text) const {
  write(name, "#!/bin/sh\n" + std::string(text));
  ::chmod((path_ + "/" + name).c_str(), 0755);
}

std::string Directory::read(const std::string& name) const {
  std::ifstream file(path_ + "/" + name, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

Outcome Directory::run(const std::string& arguments) const {
  const std::string command =
      "cd '" + path_ + "' && { '" DL_PROGRAM "' " + arguments + " ; } >out 2>err </dev/null";
  const int status = std::system(command.c_str());
  Outcome outcome;
  outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  outcome.out = read("out");
  outcome.err = read("err");
  return outcome;
}

Outcome run(std::string_view program, const std::string& options) {
  const Directory directory;
  directory.write("p", program);
  return directory.run("p " + options);
}

namespace {

// The pieces between separators that stand outside strings.
std::vector<std::string> split(const std::string& text, std::string_view separator) {
  std::vector<std::string> pieces(1);
  bool in_string = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '"') in_string = !in_string;
    if (!in_string && text.compare(i, separator.size(), separator) == 0) {
      pieces.emplace_back();
      i += separator.size() - 1;
    } else {
      pieces.back() += text[i];
    }
  }
  return pieces;
}

std::string sorted_atoms(const std::string& line) {
  const std::size_t open = line.find('{');
  if (open == std::string::npos || line.back() != '}') return line;
  std::vector<std::string> atoms = split(line.substr(open + 1, line.size() - open - 2), ", ");
  std::ranges::sort(atoms);
  std::string sorted = line.substr(0, open + 1);
  for (std::size_t i = 0; i < atoms.size(); ++i) sorted += (i == 0 ? "" : ", ") + atoms[i];
  return sorted + "}";
}

}    // namespace

std::string sorted(std::string_view text) {
  std::vector<std::string> lines = split(std::string(text), "\n");
  lines.pop_back();
  for (std::string& line : lines) line = sorted_atoms(line);
  std::ranges::sort(lines);
  std::string result;
  for (const std::string& line : lines) result += line + "\n";
  return result;
}

TEST_P(Programs, GiveTheExpectedAnswers) {
  const Case& test = GetParam();
  const Outcome outcome = run(test.program, std::string(test.options));
  EXPECT_EQ(sorted(outcome.out), sorted(test.out));
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_P(FaultyPrograms, AreReported) {
  const ErrorCase& test = GetParam();
  const Outcome outcome = run(test.program, std::string(test.options));
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, std::string(test.err) + "\n");
  EXPECT_EQ(outcome.status, 1);
}

}    // namespace dl_test
