#include "output/flat_atom.h"

#include <algorithm>
#include <array>

namespace zarel {
namespace {

enum class Kind : unsigned char { kOther, kDigit, kLowerCase, kRest };

constexpr std::array<Kind, 256> kinds_of_characters() {
  std::array<Kind, 256> kinds{};
  for (unsigned char c = '0'; c <= '9'; ++c) kinds[c] = Kind::kDigit;
  for (unsigned char c = 'a'; c <= 'z'; ++c) kinds[c] = Kind::kLowerCase;
  for (unsigned char c = 'A'; c <= 'Z'; ++c) kinds[c] = Kind::kRest;
  kinds['_'] = Kind::kRest;
  return kinds;
}

constexpr std::array<Kind, 256> kKinds = kinds_of_characters();

Kind kind_of(char c) {
  return kKinds[static_cast<unsigned char>(c)];
}

std::size_t end_of_string(std::string_view text, std::size_t begin) {
  const std::size_t quote = text.find('"', begin + 1);
  return quote == std::string_view::npos || quote == begin + 1 ? begin : quote + 1;
}

// Where the term ends that begins at this place; the place itself when none does. The text may end
// with it.
std::size_t end_of_term(std::string_view text, std::size_t begin) {
  if (begin == text.size()) return begin;
  std::size_t end = begin;
  switch (kind_of(text[begin])) {
    case Kind::kLowerCase:
      while (end < text.size() && kind_of(text[end]) != Kind::kOther) ++end;
      return end;
    case Kind::kDigit:
      while (end < text.size() && kind_of(text[end]) == Kind::kDigit) ++end;
      return end;
    default:
      return text[begin] == '"' ? end_of_string(text, begin) : begin;
  }
}

bool has_at(std::string_view text, std::size_t place, char c) {
  return place < text.size() && text[place] == c;
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
