#include "parser/flat_atom.h"

#include "base/characters.h"
#include "parser/flat_words.h"
#include "parser/qualified_constants.h"
#include "parser/scanner_actions.h"

namespace zarel {

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
  const auto [length, value] = flat_integer(text_.substr(begin));
  if (length == 0) return 0;
  add(FlatPart::Kind::kInteger, begin, length, value);
  return begin + length;
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
    constants_.expect(text_.substr(end + 1, local_length));
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
