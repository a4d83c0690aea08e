#pragma once
// flat_words.h - the words, strings and numbers of what is read as one token. See Note [flat facts].

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zarel {

// The length of the word or plain string, of one line, that is a name and begins the text; 0
// without one.
std::size_t length_of_name(std::string_view text);

// The same of a number, and its value; length 0 without one.
struct FlatInteger {
  std::size_t length;
  std::uint32_t value;
};
FlatInteger flat_integer(std::string_view text);

}    // namespace zarel
