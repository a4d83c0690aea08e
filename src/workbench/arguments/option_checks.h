#pragma once
// option_checks.h - what values of options have to be, and how the command line says that one is
// not.

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

// Thrown for what is wrong with the command line: one line.
struct WrongUsage {
  std::string text;
};

inline constexpr std::uint64_t kGreatestInteger = 2147483647;
inline constexpr std::uint64_t kGreatestCount = 1'000'000'000'000'000'000;

CLI::Validator whole_number(std::uint64_t least, std::uint64_t most);
CLI::Validator seconds();
CLI::Validator one_of(std::vector<std::string> words);

std::string listed(const std::vector<std::string>& words);    // "a, b, c"
// With "; did you mean ...?" behind it, unless nothing is meant.
std::string with_hint(std::string text, std::string_view meant);

}    // namespace workbench
