#pragma once
// sources.h - the texts of a program, by number, and what stands where in them.

#include <climits>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/place.h"

namespace dl {

// A place as it is kept: its columns in bytes alone.
struct FileRange {
  std::uint32_t file = zarel::kNoFile;
  zarel::SourceRange range{};
};

// The scanner counts in int, and two end marks belong to a text.
inline constexpr std::size_t kLongestText = INT_MAX - 2;

// NUL bytes, which the scanner wants behind a text.
inline constexpr std::size_t kEndMarks = 2;

class Sources {
 public:
  // Adds a text with its end marks. Returns its number, from 0.
  std::uint32_t add(std::string name, std::string text);

  std::size_t size() const { return all_.size(); }
  const std::string& name(std::uint32_t file) const { return all_[file].name; }
  std::string& text(std::uint32_t file) { return all_[file].text; }
  const std::string& text(std::uint32_t file) const { return all_[file].text; }

  // The text has been read for the last time. Only one in which columns in bytes and in characters
  // differ is kept.
  void release(std::uint32_t file);

  // Of a stretch of the text, which has not been released.
  FileRange range(std::uint32_t file, std::string_view stretch) const;

  // With columns in characters, for which a text that was kept is walked through.
  zarel::Place place(const FileRange& range) const;
  zarel::Place place(const zarel::SourceLocation& location) const;    // of its one character

 private:
  struct Source {
    std::string name;
    std::string text;
  };
  zarel::Position position(std::uint32_t file, std::uint32_t line, std::uint32_t column) const;

  std::vector<Source> all_;
};

}    // namespace dl
