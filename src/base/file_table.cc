#include "base/file_table.h"

#include <algorithm>
#include <utility>

namespace zarel {
namespace {

bool continues_character(char byte) {
  constexpr unsigned kMask = 0xC0;
  constexpr unsigned kContinuing = 0x80;
  return (static_cast<unsigned char>(byte) & kMask) == kContinuing;
}

bool is_wide(char byte) {
  constexpr unsigned char kFirstWide = 0x80;
  return static_cast<unsigned char>(byte) >= kFirstWide;
}

}    // namespace

void WideCharacters::note(std::string_view text, std::uint32_t line, std::uint32_t column) {
  if (std::none_of(text.begin(), text.end(), is_wide)) return;
  for (const char byte : text) {
    if (continues_character(byte)) note_byte(line, column);
    ++column;
    if (byte == '\n') {
      ++line;
      column = 1;
    }
  }
}

void WideCharacters::note_byte(std::uint32_t line, std::uint32_t column) {
  if (runs_.empty() || runs_.back().line != line) {
    runs_.push_back({line, column, 0, 1});
    return;
  }
  Run& last = runs_.back();
  if (last.column + last.count == column) {
    ++last.count;
  } else {
    runs_.push_back({line, column, last.before + last.count, 1});
  }
}

std::uint32_t WideCharacters::character(std::uint32_t line, std::uint32_t column) const {
  const auto behind =
      std::upper_bound(runs_.begin(), runs_.end(), std::pair(line, column),
                       [](const std::pair<std::uint32_t, std::uint32_t>& wanted, const Run& run) {
                         return wanted < std::pair(run.line, run.column);
                       });
  if (behind == runs_.begin()) return column;
  const Run& run = *(behind - 1);
  if (run.line != line) return column;
  return column - run.before - std::min(run.count, column - run.column + 1);
}

std::uint32_t FileTable::add(std::string_view name) {
  files_.push_back({std::string(name), {}});
  return static_cast<std::uint32_t>(files_.size() - 1);
}

Position FileTable::position(const SourceLocation& location) const {
  const auto [line, column, file] = location;
  const bool is_known = file < files_.size();
  return {file, line, column, is_known ? files_[file].wide.character(line, column) : column};
}

Place FileTable::place(std::uint32_t file, const SourceRange& range) const {
  return {position({range.first_line, range.first_column, file}),
          position({range.last_line, range.last_column, file})};
}

Place FileTable::place(const SourceLocation& location) const {
  const Position only = position(location);
  return {only, only};
}

}    // namespace zarel
