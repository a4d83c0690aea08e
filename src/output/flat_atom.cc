#include "output/flat_atom.h"

#include "base/characters.h"

namespace zarel {
namespace {

std::size_t end_of_string(std::string_view text, std::size_t begin) {
  const std::size_t quote = text.find('"', begin + 1);
  return quote == std::string_view::npos || quote == begin + 1 ? begin : quote + 1;
}

// Where the term ends that begins at this place; the place itself when none does. The text may end
// with it.
std::size_t end_of_term(std::string_view text, std::size_t begin) {
  if (begin == text.size()) return begin;
  if (text[begin] == '"') return end_of_string(text, begin);
  std::size_t end = begin;
  if (is_lower_case(text[begin])) {
    while (end < text.size() && is_in_word(text[end])) ++end;
  } else {
    while (end < text.size() && is_digit(text[end])) ++end;
  }
  return end;
}

}    // namespace

std::size_t length_with_terms(std::string_view text, std::size_t word_length) {
  if (!has_at(text, word_length, '(')) return word_length;
  std::size_t count = 0;
  std::size_t end = word_length;
  do {
    const std::size_t begin = end + 1;
    end = end_of_term(text, begin);
    if (end == begin) return word_length;
    ++count;
  } while (has_at(text, end, ','));
  return count >= 2 && has_at(text, end, ')') ? end + 1 : word_length;
}

FlatAtom split_flat_atom(std::string_view text) {
  const std::size_t word_end = text.find('(');
  const std::size_t first_end = end_of_term(text, word_end + 1);
  return {word_end, first_end, end_of_term(text, first_end + 1)};
}

}    // namespace zarel
