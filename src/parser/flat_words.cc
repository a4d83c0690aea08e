#include "parser/flat_words.h"

#include <algorithm>
#include <array>

#include "base/characters.h"
#include "parser/scanner_actions.h"

namespace zarel {
namespace {

// Words that are no names, or not only.
bool is_keyword(std::string_view word) {
  constexpr std::array<std::string_view, 4> kKeywords = {"v", "not", "non", "GLOBAL"};
  return std::find(kKeywords.begin(), kKeywords.end(), word) != kKeywords.end();
}

// The length of the plain string, of one line, that the text begins with; 0 without one.
std::size_t length_of_string(std::string_view text) {
  const std::size_t end = text.find_first_of(std::string_view("\"\n\0", 3), 1);
  if (end == std::string_view::npos || text[end] != '"' || end >= kLongestIdentifier) return 0;
  return end + 1;
}

}    // namespace

std::size_t length_of_name(std::string_view text) {
  if (text.empty() || text[0] == '_' || is_digit(text[0])) return 0;
  if (text[0] == '"') return length_of_string(text);
  std::size_t length = 0;
  while (length < text.size() && is_in_word(text[length])) ++length;
  return length <= kLongestIdentifier && !is_keyword(text.substr(0, length)) ? length : 0;
}

FlatInteger flat_integer(std::string_view text) {
  FlatInteger integer{0, 0};
  for (; integer.length < text.size() && is_digit(text[integer.length]); ++integer.length)
    integer.value = 10 * integer.value + static_cast<std::uint32_t>(text[integer.length] - '0');
  return integer.length <= kLongestNumber ? integer : FlatInteger{0, 0};
}

}    // namespace zarel
