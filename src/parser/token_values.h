#pragma once
// token_values.h - the values of tokens that are no names.

#include <cstddef>
#include <cstdint>

namespace zarel {

// The text of a token, where it stands in the scanner's buffer: valid until the next token is read.
struct TokenText {
  const char* begin;
  std::size_t length;
};

// The value of a NUMBER token: nine digits at most.
struct Number {
  std::uint32_t value;
  std::uint32_t digit_count;    // leading zeros count: they matter behind a weight's full stop
};

}    // namespace zarel
