#pragma once
// text.h - a text while it is put together out of many small pieces.

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace zarel {

// Characters are added at the end. A program's text is a few bytes at a time: here such a piece
// costs a comparison and a copy, in a std::string several times that.
class Text {
 public:
  Text() = default;
  explicit Text(std::string_view beginning) { *this += beginning; }

  Text& operator+=(char character) {
    *room_for(1) = character;
    ++size_;
    return *this;
  }
  Text& operator+=(std::string_view piece) {
    if (piece.empty()) return *this;
    copy(room_for(piece.size()), piece);
    size_ += piece.size();
    return *this;
  }
  // The first characters of a field of that size, which is copied whole: their number, which
  // changes from one to the next, costs no jump.
  template <std::size_t kField>
  void add_from_field(const char* field, std::size_t size) {
    std::memcpy(room_for(kField), field, kField);
    size_ += size;
  }
  template <class Integer>
  void add_number(Integer number) {
    constexpr std::size_t kLongest = 24;
    char* const begin = room_for(kLongest);
    size_ += static_cast<std::size_t>(std::to_chars(begin, begin + kLongest, number).ptr - begin);
  }

  std::size_t size() const { return size_; }
  std::string_view view() const { return {memory_.data(), size_}; }    // until something is added
  std::string str() const { return std::string(view()); }
  void clear() { size_ = 0; }

 private:
  // Of up to sixteen bytes, the first and the last words cover all: a call would take longer.
  static void copy(char* to, std::string_view piece) {
    const std::size_t size = piece.size();
    if (size > 16) {
      std::memcpy(to, piece.data(), size);
    } else if (size >= 8) {
      copy_ends<std::uint64_t>(to, piece);
    } else if (size >= 4) {
      copy_ends<std::uint32_t>(to, piece);
    } else {
      for (const char character : piece) *to++ = character;
    }
  }

  template <class Word>
  static void copy_ends(char* to, std::string_view piece) {
    const std::size_t last = piece.size() - sizeof(Word);
    Word word;
    std::memcpy(&word, piece.data(), sizeof(word));
    std::memcpy(to, &word, sizeof(word));
    std::memcpy(&word, piece.data() + last, sizeof(word));
    std::memcpy(to + last, &word, sizeof(word));
  }

  // The end of the text, with room for that many bytes behind it.
  char* room_for(std::size_t size) {
    if (memory_.size() - size_ < size) [[unlikely]]
      grow(size);
    return memory_.data() + size_;
  }

  [[gnu::noinline]] void grow(std::size_t size) {
    constexpr std::size_t kUsual = 128;    // bytes of a line
    memory_.resize(std::max(kUsual, 2 * (size_ + size)));
  }

  std::string memory_;    // the text, and room behind it
  std::size_t size_ = 0;
};

}    // namespace zarel
