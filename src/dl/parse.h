#pragma once
// parse.h - reads one text. The generated scanner and parser are behind this.

#include <string>

#include "dl/statement_builder.h"

namespace dl {

// Hands every statement of the text to the builder's receiver. `text` ends in two NUL bytes and is
// afterwards what it was. Returns false after a mistake, which is that of `builder`.
bool parse_text(std::string& text, StatementBuilder& builder);

// Does the same for parts of one text, each of whole lines and statements, from the front to the
// back. Behind a part, at least two bytes follow.
class PartParser {
 public:
  PartParser(std::string& text, StatementBuilder& builder);
  bool parse(std::size_t begin, std::size_t end);

 private:
  std::string& text_;
  StatementBuilder& builder_;
};

}    // namespace dl
