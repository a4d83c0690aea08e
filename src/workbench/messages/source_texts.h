#pragma once
// source_texts.h - the lines of the files that were read, for messages that show them.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/file_table.h"

namespace workbench {

// A file is read again when its first line is asked for, and kept from then on; a text in memory is
// looked at where it is. A file that is gone, or was a pipe, has no lines.
class SourceTexts {
 public:
  explicit SourceTexts(const zarel::FileTable& files) : files_(files) {}

  std::string_view name(std::uint32_t file) const { return files_[file].name; }
  std::string_view path(std::uint32_t file) const { return files_[file].path; }
  std::string_view text(std::uint32_t file);    // all of it

  // A line, from 1, without its end ("\n"; a "\r" in front of that stays). Empty when there is none.
  std::string_view line(std::uint32_t file, std::uint32_t line);

  // The column in characters as an editor counts: a byte order mark in front is none.
  std::uint32_t column(const zarel::Position& position);

  // Whether there is that line; one behind the last line end counts.
  bool has_line(std::uint32_t file, std::uint32_t line);

  // Where in the text a byte of a line stands; the text's end when there is no such line.
  std::size_t offset(std::uint32_t file, std::uint32_t line, std::uint32_t column);

 private:
  struct Loaded {
    std::string text;    // of a file
    std::string_view view;
    std::vector<std::size_t> begins;    // of lines
  };
  Loaded& loaded(std::uint32_t file);

  const zarel::FileTable& files_;
  std::unordered_map<std::uint32_t, Loaded> loaded_;
};

}    // namespace workbench
