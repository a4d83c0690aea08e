#pragma once
// parse.h - reads a program, with the files it includes. The generated scanner and parser are
// behind this.

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "solver/statement_builder.h"
#include "solver/translator.h"

namespace dl {

// Hands every statement of the text to the receiver. `text` ends in two NUL bytes, which the
// scanner uses. Returns false after a mistake, which is the last one of `builder`.
bool parse_text(std::string& text, StatementBuilder& builder);

// Reads the files in order, each with what it includes behind it: the order of statements means
// nothing. A file is read once, however often and under whatever name it is included. Throws
// Failure at the first mistake. Calls `before_plain` before the first statement of a program that
// is known to be plain: see Note [reading along].
void read_program(const std::vector<std::string>& files, Translator& translator,
                  const std::function<void()>& before_plain);

}    // namespace dl
