#include "parser/flat_atom.h"

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

// The same of a word or a string that is a name.
std::size_t length_of_name(std::string_view text) {
  if (text.empty() || text[0] == '_' || is_digit(text[0])) return 0;
  if (text[0] == '"') return length_of_string(text);
  std::size_t length = 0;
  while (length < text.size() && is_in_word(text[length])) ++length;
  return length <= kLongestIdentifier && !is_keyword(text.substr(0, length)) ? length : 0;
}

}    // namespace

// The place behind the term that begins there, or behind the parenthesis of a function term; 0
// without one.
std::size_t FlatAtom::read_term(std::size_t begin) {
  if (begin >= text_.size()) return 0;
  const char first = text_[begin];
  if (is_digit(first)) return read_integer(begin);
  if (first != '_') return read_name(begin);
  if (begin + 1 < text_.size() && is_in_word(text_[begin + 1])) return 0;
  is_simple_ = false;
  add(FlatPart::Kind::kAnonymous, begin, 1);
  return begin + 1;
}

std::size_t FlatAtom::read_integer(std::size_t begin) {
  std::uint32_t value = 0;
  std::size_t end = begin;
  for (; end < text_.size() && is_digit(text_[end]); ++end)
    value = 10 * value + static_cast<std::uint32_t>(text_[end] - '0');
  if (end - begin > kLongestNumber) return 0;
  add(FlatPart::Kind::kInteger, begin, end - begin, value);
  return end;
}

std::size_t FlatAtom::read_name(std::size_t begin) {
  const std::size_t length = length_of_name(text_.substr(begin));
  const std::size_t end = begin + length;
  if (length == 0) return 0;
  if (has_at(text_, end, ':')) {
    const std::size_t local_length = length_of_name(text_.substr(end + 1));
    if (local_length == 0) return 0;
    is_simple_ = false;
    add(FlatPart::Kind::kPrefix, begin, length);
    add(FlatPart::Kind::kLocal, end + 1, local_length);
    return end + 1 + local_length;
  }
  if (has_at(text_, end, '(') && text_[begin] != '"') {
    is_simple_ = false;
    ++depth_;
    add(FlatPart::Kind::kFunctor, begin, length);
    return end + 1;
  }
  const bool is_variable = is_upper_case(text_[begin]);
  add(is_variable ? FlatPart::Kind::kVariable : FlatPart::Kind::kConstant, begin, length);
  return end;
}

std::size_t FlatAtom::read(std::string_view text, std::size_t word_length) {
  if (!has_at(text, word_length, '(') || word_length > kLongestIdentifier) return 0;
  text_ = text;
  name_length_ = word_length;
  depth_ = 0;
  is_simple_ = true;
  parts_.clear();
  std::size_t position = word_length + 1;
  while (true) {
    if (has_at(text, position, ' ')) ++position;
    position = read_term(position);
    if (position == 0) return 0;
    if (parts_.back().kind == FlatPart::Kind::kFunctor) continue;
    for (; has_at(text, position, ')'); ++position, --depth_) {
      if (depth_ == 0) return position + 1;
      add(FlatPart::Kind::kFunctionEnd, position, 1);
    }
    if (!has_at(text, position, ',')) return 0;
    ++position;
  }
}

}    // namespace zarel
