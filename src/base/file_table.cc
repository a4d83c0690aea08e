#include "base/file_table.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "base/characters.h"

namespace zarel {
namespace {

constexpr std::uint32_t kStretch = 64;    // bytes

std::uint32_t count(std::uint64_t bytes) {
  return static_cast<std::uint32_t>(std::popcount(bytes));
}

}    // namespace

void WideCharacters::note(std::string_view text, std::uint32_t line, std::uint32_t column) {
  if (!has_wide_characters(text)) return;
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
  if (stretches_.empty() || stretches_.back().line < line) {
    stretches_.push_back({line, column, 0, 1});
    return;
  }
  Stretch& last = stretches_.back();
  if (line < last.line || column < last.column) return;    // it came before
  const std::uint32_t distance = column - last.column;
  if (distance < kStretch) {
    last.bytes |= std::uint64_t{1} << distance;
  } else {
    stretches_.push_back({line, column, last.before + count(last.bytes), 1});
  }
}

std::uint32_t WideCharacters::character(std::uint32_t line, std::uint32_t column) const {
  const auto behind = std::upper_bound(
      stretches_.begin(), stretches_.end(), std::pair(line, column),
      [](const std::pair<std::uint32_t, std::uint32_t>& wanted, const Stretch& stretch) {
        return wanted < std::pair(stretch.line, stretch.column);
      });
  if (behind == stretches_.begin()) return column;
  const Stretch& stretch = *(behind - 1);
  if (stretch.line != line) return column;
  const std::uint32_t distance = std::min(column - stretch.column, kStretch - 1);
  const std::uint64_t up_to_there = ~std::uint64_t{0} >> (kStretch - 1 - distance);
  const std::uint32_t passed = stretch.before + count(stretch.bytes & up_to_there);
  return column > passed ? column - passed : 1;    // a line may begin in the middle of a character
}

std::uint32_t FileTable::add(std::string_view name, std::string_view path, std::string_view text) {
  files_.push_back({std::string(name), std::string(path), text});
  return static_cast<std::uint32_t>(files_.size() - 1);
}

Position FileTable::position(const SourceLocation& location) const {
  const auto [line, column, file] = location;
  const bool is_known = file < files_.size();
  return {file, line, column, is_known ? files_[file].wide.character(line, column) : column};
}

Place FileTable::place(const SourceSpan& span) const {
  const SourceRange& range = span.range;
  return {position(span.first()), position({range.last_line, range.last_column, span.file})};
}

Place FileTable::place(const SourceLocation& location) const {
  const Position only = position(location);
  return {only, only};
}

}    // namespace zarel
