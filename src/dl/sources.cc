#include "dl/sources.h"

#include <algorithm>
#include <utility>

#include "base/characters.h"

namespace dl {
namespace {

struct LineAndColumn {
  std::uint32_t line, column;
};

LineAndColumn position_of(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t line_begin = before.rfind('\n') + 1;    // 0 where there is none
  return {static_cast<std::uint32_t>(std::ranges::count(before, '\n') + 1),
          static_cast<std::uint32_t>(offset - line_begin + 1)};
}

std::uint32_t continuing_bytes(std::string_view text, std::uint32_t line, std::uint32_t column) {
  std::size_t begin = 0;
  for (std::uint32_t i = 1; i < line; ++i) begin = text.find('\n', begin) + 1;
  return static_cast<std::uint32_t>(
      std::ranges::count_if(text.substr(begin, column), zarel::continues_character));
}

}    // namespace

std::uint32_t Sources::add(std::string name, std::string text) {
  text.append(kEndMarks, '\0');
  all_.push_back({std::move(name), std::move(text)});
  return static_cast<std::uint32_t>(all_.size() - 1);
}

void Sources::release(std::uint32_t file) {
  std::string& text = all_[file].text;
  if (!zarel::has_wide_characters(text)) text = std::string();
}

FileRange Sources::range(std::uint32_t file, std::string_view stretch) const {
  const std::string_view text = all_[file].text;
  const auto begin = static_cast<std::size_t>(stretch.data() - text.data());
  std::size_t end = begin + stretch.size();
  while (zarel::continues_character(text[end])) ++end;
  const LineAndColumn first = position_of(text, begin);
  const LineAndColumn last = end > begin ? position_of(text, end - 1) : first;
  return {file, {first.line, first.column, last.line, last.column}};
}

zarel::Place Sources::place(const FileRange& where) const {
  const auto [first_line, first_column, last_line, last_column] = where.range;
  if (where.file >= all_.size()) return {};
  return {position(where.file, first_line, first_column),
          position(where.file, last_line, last_column)};
}

zarel::Place Sources::place(const zarel::SourceLocation& where) const {
  return place({where.file, {where.line, where.column, where.line, where.column}});
}

zarel::Position Sources::position(std::uint32_t file, std::uint32_t line,
                                  std::uint32_t column) const {
  const std::string& text = all_[file].text;
  const std::uint32_t continuing = text.empty() ? 0 : continuing_bytes(text, line, column);
  // A line that begins with half a character has a first one nevertheless.
  return {file, line, column, std::max(column - continuing, std::min(column, 1U))};
}

}    // namespace dl
