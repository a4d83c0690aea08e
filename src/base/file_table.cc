#include "base/file_table.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zarel {
namespace {

// Eight bytes at a time: every string, comment and flat fact is looked at.
bool has_wide(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::uint64_t word = 0;
  while (text.size() >= sizeof word) {
    std::memcpy(&word, text.data(), sizeof word);
    if ((word & kHighBits) != 0) return true;
    text.remove_prefix(sizeof word);
  }
  word = 0;
  text.copy(reinterpret_cast<char*>(&word), sizeof word);
  return (word & kHighBits) != 0;
}

}    // namespace

void WideCharacters::note(std::string_view text, std::uint32_t line, std::uint32_t column) {
  if (!has_wide(text)) return;
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
  if (runs_.empty() || runs_.back().line < line) {
    runs_.push_back({line, column, 0, 1});
    return;
  }
  Run& last = runs_.back();
  if (line < last.line || column < last.column + last.count) return;    // it came before
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
  const std::uint32_t passed = run.before + std::min(run.count, column - run.column + 1);
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
