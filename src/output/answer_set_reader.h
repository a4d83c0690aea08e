#pragma once
// answer_set_reader.h - reads the solver's output and prints it in the user's words.

#include <cstdio>
#include <functional>
#include <string_view>

namespace zarel {

// Asked where an open file ends: waits a moment when more may be written to it, and tells whether
// to look again.
using HasGrown = std::function<bool()>;

// Reads answer sets, lists of terms and best-model blocks until the end of an open file or pipe of
// which nothing was read through its buffer, and prints each to standard_output() once it is
// complete, as display_settings() say. Advances the run's parser_line by the lines read; the
// caller sets it before. Returns 0; after a "syntax error" 1 and after "memory exhausted" 2,
// reported with output_yyerror, what was complete before having been printed. An input that cannot
// be read at all is reported as "can't open input" and throws the run's end with status 0. A later
// failure of the scanner prints its line and throws the run's end with status 2; an output that
// cannot be written throws it with status 1.
int read_answer_sets(std::FILE* in, HasGrown grown = {});

// The same for text in memory. A reading keeps nothing behind, and shares nothing with another one
// but the run.
int read_answer_sets(std::string_view text);

// Reports the message to the run. Counts nothing.
void output_yyerror(std::string_view message);

}    // namespace zarel
