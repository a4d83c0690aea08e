#pragma once
// run_dl.h - runs the built dl on a program, in a folder of its own.

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <string_view>

#include "support/run_program.h"

namespace dl_test {

using zarel::case_name;
using zarel::joined;
using zarel::numbered;
using zarel::Outcome;
using zarel::ShellCase;
using zarel::WorkFolder;

// Runs dl on a program in the file "p" with the options.
Outcome run(std::string_view program, std::string_view options = "");

// The text that clingo is given.
std::string translation(std::string_view program, std::string_view options = "");

// The text with sorted lines and, in each answer set, sorted atoms, as clingo chooses both orders;
// for comparisons only, since separators are added.
enum class Lines { kSorted, kInOrder };
std::string sorted(std::string_view text, Lines order = Lines::kSorted);

// A row of a table: a program, its options, and what dl prints.
struct Case {
  std::string_view name, program, out, options = "";
  friend void PrintTo(const Case& test, std::ostream* stream) { *stream << test.name; }
};

// Run and compared in run_dl.cc; each file of tests instantiates them with tables of its own.
class Programs : public testing::TestWithParam<Case> {};           // answers in any order
class OrderedPrograms : public testing::TestWithParam<Case> {};    // these lines in this order
class FaultyPrograms : public testing::TestWithParam<Case> {};    // one line on standard error only
class Commands : public testing::TestWithParam<ShellCase> {};

}    // namespace dl_test
