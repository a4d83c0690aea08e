#pragma once
// place.h - where in the input something stands: as small as a clause can carry it, as the parsers
// hand it on, and as a message tells it.

#include <cstdint>

namespace zarel {

inline constexpr std::uint32_t kNoFile = 0xFFFFFFFF;

// The beginning of something. The line is the true one, counting every line end; the number that
// the established messages show leaves out those inside strings and verbatim sections.
struct SourceLocation {
  std::uint32_t line = 0;          // from 1; 0 for the file as a whole
  std::uint32_t column = 0;        // in bytes, from 1
  std::uint32_t file = kNoFile;    // in the table of files
};

// From the first byte to the last, in the file that is being parsed. Parsers hand on millions.
struct SourceRange {
  std::uint32_t first_line;
  std::uint32_t first_column;
  std::uint32_t last_line;
  std::uint32_t last_column;
};

// From the beginning of the one to the end of the other.
constexpr SourceRange joined(const SourceRange& first, const SourceRange& last) {
  return {first.first_line, first.first_column, last.last_line, last.last_column};
}

// A range in one of the files that were read.
struct SourceSpan {
  std::uint32_t file = kNoFile;
  SourceRange range = {};

  SourceLocation first() const { return {range.first_line, range.first_column, file}; }
};

// One character of a file; a column in bytes and the same column in characters, from 1.
struct Position {
  std::uint32_t file = kNoFile;
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::uint32_t character = 0;

  friend bool operator==(const Position&, const Position&) = default;
};

// From the first character to the last one, which may be in another file; of an empty text, and at
// a file's end, both are the character that would follow.
struct Place {
  Position first;
  Position last;

  bool is_known() const { return first.file != kNoFile; }
  friend bool operator==(const Place&, const Place&) = default;
};

}    // namespace zarel
