#pragma once
// file_table.h - the files (and texts in memory) that were read, by number, and what of them is
// kept to tell places in characters.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "base/place.h"

namespace zarel {

// Where in a text a column in bytes is none in characters. A text of the usual kind has no such
// place, and costs nothing here.
class WideCharacters {
 public:
  // Notes the bytes of the text, which stands at this line and column, that only continue a
  // character of UTF-8. Texts come in their order, and may come again.
  void note(std::string_view text, std::uint32_t line, std::uint32_t column);

  // The column in characters of the character that the byte at this column belongs to.
  std::uint32_t character(std::uint32_t line, std::uint32_t column) const;

 private:
  void note_byte(std::uint32_t line, std::uint32_t column);

  struct Run {
    std::uint32_t line;
    std::uint32_t column;    // of the first of the bytes
    std::uint32_t before;    // such bytes in the line in front of them
    std::uint32_t count;
  };
  std::vector<Run> runs_;    // in the order of the text
};

// Whether the byte is one of UTF-8 behind the first of a character.
constexpr bool continues_character(char byte) {
  constexpr unsigned kMask = 0xC0;
  constexpr unsigned kContinuing = 0x80;
  return (static_cast<unsigned char>(byte) & kMask) == kContinuing;
}

struct ReadFile {
  std::string name;         // as messages show it
  std::string path;         // empty for a text in memory
  std::string_view text;    // that one
  WideCharacters wide = {};
};

class FileTable {
 public:
  // A file that is going to be read, or a text in memory, which has to last; returns its number,
  // from 0. The addresses of entries stay.
  std::uint32_t add(std::string_view name, std::string_view path = {}, std::string_view text = {});

  std::size_t size() const { return files_.size(); }
  const ReadFile& last() const { return files_.back(); }
  const ReadFile& operator[](std::uint32_t file) const { return files_[file]; }
  ReadFile& operator[](std::uint32_t file) { return files_[file]; }

  // The same places with their columns in characters. In a file that is none of the table's these
  // are the columns in bytes.
  Position position(const SourceLocation& location) const;
  Place place(const SourceSpan& span) const;
  Place place(const SourceLocation& location) const;    // of its one character

 private:
  std::deque<ReadFile> files_;
};

}    // namespace zarel
