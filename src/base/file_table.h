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

  // The bytes among 64 that continue a character, from the first such byte on.
  struct Stretch {
    std::uint32_t line;
    std::uint32_t column;    // of that byte
    std::uint32_t before;    // such bytes in the line in front of it
    std::uint64_t bytes;     // bit i: the byte i columns on
  };
  std::vector<Stretch> stretches_;    // in the order of the text
};

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
