#pragma once
// run_dl.h - runs the built dl on a program, in a directory of its own.

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

namespace dl_test {

struct Outcome {
  std::string out;
  std::string err;
  int status = -1;    // as a shell gives it: 128 and more for a signal
};

// A directory that is removed with everything in it.
class Directory {
 public:
  Directory();
  ~Directory();
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  const std::string& path() const { return path_; }
  void write(const std::string& name, std::string_view text) const;
  void write_script(const std::string& name,
                    std::string_view text) const;    // a shell script that can be run
  std::string read(const std::string& name) const;
  // Runs dl here with the arguments, which the shell reads; they may end in redirections.
  Outcome run(const std::string& arguments) const;

 private:
  std::string path_;
};

// Runs dl on a program in the file "p" with the options.
Outcome run(std::string_view program, const std::string& options = "");

// The lines in sorted order, and the atoms of each answer set: clingo chooses both orders.
std::string sorted(std::string_view text);

// A row of a table: a program, its options, and what dl prints, in whatever order.
struct Case {
  std::string_view name;
  std::string_view program;
  std::string_view out;
  std::string_view options = "";
  friend void PrintTo(const Case& test, std::ostream* stream) { *stream << test.name; }
};

// A row that ends in an error: nothing on standard output, one line on standard error, status 1.
struct ErrorCase {
  std::string_view name;
  std::string_view program;
  std::string_view err;
  std::string_view options = "";
  friend void PrintTo(const ErrorCase& test, std::ostream* stream) { *stream << test.name; }
};

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

// Run and compared in run_dl.cc; each file of tests instantiates them with tables of its own.
class Programs : public testing::TestWithParam<Case> {};
class FaultyPrograms : public testing::TestWithParam<ErrorCase> {};

}    // namespace dl_test
