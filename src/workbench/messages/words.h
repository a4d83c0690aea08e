#pragma once
// words.h - numbers with their nouns, as messages tell them.

#include <cstddef>
#include <string>
#include <string_view>

namespace workbench {

// "1 argument", "2 arguments".
inline std::string counted(std::size_t number, std::string_view noun) {
  std::string text = std::to_string(number);
  (text += ' ') += noun;
  if (number != 1) text += 's';
  return text;
}

}    // namespace workbench
