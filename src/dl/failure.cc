#include "dl/failure.h"

namespace dl {

std::string at_place(std::string_view file, std::size_t line, std::string_view message) {
  std::string text(file);
  text += ':';
  text += std::to_string(line);
  text += ": ";
  text += message;
  return text;
}

}    // namespace dl
