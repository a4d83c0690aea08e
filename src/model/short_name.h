#pragma once
// short_name.h - short spellings as two words, which are compared and mixed without a loop.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zarel {

inline constexpr std::size_t kLongestShortName = 11;    // bytes

// The length and the text: equal for equal spellings alone.
using ShortName = std::array<std::uint64_t, 2>;

template <class Word>
std::uint64_t word_at(const char* text) {
  Word word = 0;
  std::memcpy(&word, text, sizeof(word));
  return word;
}

inline ShortName short_name(std::string_view spelling) {
  const char* const text = spelling.data();
  const std::size_t size = spelling.size();
  static_assert(std::endian::native == std::endian::little, "the first bytes are the low ones");
  constexpr std::size_t kInFirst = 4;    // bytes of the text beside the length
  std::uint64_t begin = 0;
  std::uint64_t rest = 0;
  if (size >= 8) {
    begin = word_at<std::uint32_t>(text);
    rest = word_at<std::uint64_t>(text + size - 8) >> 8 * (8 + kInFirst - size);
  } else if (size >= kInFirst) {
    begin = word_at<std::uint32_t>(text);
    rest = word_at<std::uint32_t>(text + size - 4) >> 8 * (4 + kInFirst - size);
  } else {
    for (std::size_t i = size; i-- != 0;) begin = begin << 8U | static_cast<unsigned char>(text[i]);
  }
  return {size | begin << 32U, rest};
}

// The steps of the finalizer of MurmurHash3 (Appleby).
inline std::uint32_t mixed(std::uint64_t first, std::uint64_t last) {
  std::uint64_t hash = first * 0xff51afd7ed558ccdU;
  hash = (hash ^ hash >> 33U ^ last) * 0xc4ceb9fe1a85ec53U;
  return static_cast<std::uint32_t>(hash ^ hash >> 33U);
}

}    // namespace zarel
