#pragma once
// token.h - what the scanner hands to the grammar. Plain data, so that it can live in the parser's
// union.

#include <cstdint>
#include <string_view>

namespace dl {

struct Token {
  const char* text;    // into the text of the file, which outlives the parse
  std::uint32_t length;
  std::uint32_t line;

  std::string_view view() const { return {text, length}; }
};

}    // namespace dl
