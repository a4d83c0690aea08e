#include "parser/flat_fact.h"

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

// The length of the term that the text begins with; 0 without one.
std::size_t length_of_term(std::string_view text) {
  if (text.empty()) return 0;
  if (text[0] == '"') return length_of_string(text);
  std::size_t length = 0;
  if (is_digit(text[0])) {
    while (length < text.size() && is_digit(text[length])) ++length;
    return length <= kLongestNumber ? length : 0;
  }
  if (text[0] == '_') return 0;
  while (length < text.size() && is_in_word(text[length])) ++length;
  return length <= kLongestIdentifier && !is_keyword(text.substr(0, length)) ? length : 0;
}

}    // namespace

std::size_t length_of_flat_fact(std::string_view text, std::size_t word_length) {
  if (!has_at(text, word_length, '(') || word_length > kLongestIdentifier) return 0;
  std::size_t end = word_length;
  do {
    std::size_t begin = end + 1;
    if (has_at(text, begin, ' ')) ++begin;
    const std::size_t length = length_of_term(text.substr(std::min(begin, text.size())));
    if (length == 0) return 0;
    end = begin + length;
  } while (has_at(text, end, ','));
  return has_at(text, end, ')') && has_at(text, end + 1, '.') ? end + 2 : 0;
}

std::string_view FlatFact::next() {
  while (!rest_.empty() && !is_in_word(rest_[0]) && rest_[0] != '"') {
    rest_.remove_prefix(1);
  }
  if (rest_.empty()) return rest_;
  std::size_t length = 1;
  if (rest_[0] == '"') {
    length = rest_.find('"', 1) + 1;
  } else {
    while (is_in_word(rest_[length])) ++length;
  }
  const std::string_view part = rest_.substr(0, length);
  rest_.remove_prefix(length);
  return part;
}

}    // namespace zarel
