#pragma once
// characters.h - the characters of words and numbers, the same in programs and in answer sets.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zarel {

constexpr bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

constexpr bool is_lower_case(char c) {
  return c >= 'a' && c <= 'z';
}

constexpr bool is_upper_case(char c) {
  return c >= 'A' && c <= 'Z';
}

// A table: this is asked for nearly every character of a large input.
inline constexpr std::array<bool, 256> kIsInWord = [] {
  std::array<bool, 256> is_in_word{};
  for (unsigned char c = 0; c < 128; ++c) {
    const char character = static_cast<char>(c);
    is_in_word[c] = is_digit(character) || is_lower_case(character) || is_upper_case(character) ||
                    character == '_';
  }
  return is_in_word;
}();

// Whether a word may go on with the character: letters, digits and "_".
constexpr bool is_in_word(char c) {
  return kIsInWord[static_cast<unsigned char>(c)];
}

// Whether the byte is one of UTF-8 behind the first of a character.
constexpr bool continues_character(char byte) {
  constexpr unsigned kMask = 0xC0;
  constexpr unsigned kContinuing = 0x80;
  return (static_cast<unsigned char>(byte) & kMask) == kContinuing;
}

// Whether any character takes more than a byte. Eight bytes at a time: every string, comment and
// flat fact is looked at.
inline bool has_wide_characters(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t word = 0;
  while (text.size() >= sizeof word) {
    std::memcpy(&word, text.data(), sizeof word);
    if ((word & kHighBits) != 0) return true;
    text.remove_prefix(sizeof word);
  }
  word = 0;
  if (!text.empty()) std::memcpy(&word, text.data(), text.size());
  return (word & kHighBits) != 0;
}

// Whether the character stands at this place, which may be behind the text's end.
constexpr bool has_at(std::string_view text, std::size_t place, char c) {
  return place < text.size() && text[place] == c;
}

}    // namespace zarel
