#pragma once
// syntax_error.h - what a builder finds in place of the grammar, told in the grammar's words.

#include <string>
#include <string_view>

#include "model/report.h"

namespace zarel {

inline constexpr std::string_view kSyntaxError = "syntax error";    // as the parser itself says it

// The action that asked for what failed ends with YYERROR then, unless reading is to go on behind
// the statement: what was read is a whole statement.
inline void report_syntax_error() {
  report(Code::kSyntaxError, std::string(kSyntaxError));
}

}    // namespace zarel
