#pragma once
// characters.h - the characters of a text in UTF-8 as a terminal shows them.

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

// One character of a text; `is_shown` is false for what must not reach a terminal as it is: bytes
// that are no UTF-8, control characters, and those that turn the direction of writing.
struct Character {
  std::size_t bytes = 1;
  unsigned width = 1;    // in columns: 0 for combining characters, 2 for East Asian wide ones
  bool is_shown = false;
  char32_t code = 0;    // of valid UTF-8
};

// The character that begins at a byte of the text, which is in it.
Character character_at(std::string_view text, std::size_t place);

// What is drawn instead of a character that is not shown; its width is 1.
inline constexpr std::string_view kReplacement = "\xEF\xBF\xBD";    // U+FFFD

// A text of one line for a terminal: without what is not shown, and without its middle when it
// takes more columns than that.
std::string shown_text(std::string_view text, std::size_t columns);

// Appends the text as a terminal may get it, and returns the columns that it takes there.
std::size_t append_shown(std::string& out, std::string_view text);

}    // namespace workbench
