#pragma once
// words.h - small pieces of text: numbers with their nouns, and lines without their margins.

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

// "1 argument", "2 arguments".
inline std::string counted(std::size_t number, std::string_view noun) {
  std::string text = std::to_string(number);
  (text += ' ') += noun;
  if (number != 1) text += 's';
  return text;
}

// Without the blanks in front and behind.
inline std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

}    // namespace workbench
