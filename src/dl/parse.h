#pragma once
// parse.h - reads one text. The generated scanner and parser are behind this.

#include <string>

#include "dl/statement_builder.h"

namespace dl {

// Hands every statement of the text to the builder's receiver. `text` ends in two NUL bytes and is
// afterwards what it was. Returns false after a mistake, which is that of `builder`.
bool parse_text(std::string& text, StatementBuilder& builder);

}    // namespace dl
