#pragma once
// text_range.h - where a text stands, by its beginning.

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "base/place.h"

namespace zarel {

// The text is not empty, and may go over several lines.
inline SourceRange range_of_text(std::uint32_t line, std::uint32_t column, std::string_view text) {
  const std::size_t last_line = text.rfind('\n');
  const auto size = static_cast<std::uint32_t>(text.size());
  if (last_line == std::string_view::npos) return {line, column, line, column + size - 1};
  const auto line_ends = static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
  return {line, column, line + line_ends, size - static_cast<std::uint32_t>(last_line) - 1};
}

}    // namespace zarel
