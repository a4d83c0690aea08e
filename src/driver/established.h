#pragma once
// established.h - ways to tell of an error, kept for those who know the system by these names. The
// program does not call them.

#include <string_view>

namespace zarel {

// Writes one line, the place (or "Internal parser invocation: " outside parsing), the message and a
// full stop, to standard_error(). Does not count the error. Returns 0.
int yyerror(std::string_view message);

// Reports a broken invariant in two lines and ends the run with status 99.
[[noreturn]] void InternalError(std::string_view text);

}    // namespace zarel
