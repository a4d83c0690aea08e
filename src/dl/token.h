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

// The name or operator of a builtin, as it is written.
struct Operator {
  const char* text;
  std::uint32_t line;
  std::uint16_t length;
  std::uint16_t kind;    // a Builtin

  std::string_view view() const { return {text, length}; }
};

inline Operator operator_of(const Token& token, int kind) {
  return {token.text, token.line, static_cast<std::uint16_t>(token.length),
          static_cast<std::uint16_t>(kind)};
}

}    // namespace dl
