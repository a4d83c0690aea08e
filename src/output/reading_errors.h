#pragma once
// reading_errors.h - how a reading reports that it cannot go on; output_yyerror, which does so too,
// is in answer_set_reader.h. What is complete was printed before.

#include <cstddef>
#include <cstdio>
#include <string_view>

#include "base/place.h"

namespace zarel {

void count_line();    // one more, of which messages show the number

// The input cannot be read at all: ends the run with status 0.
[[noreturn]] void end_unread();

// Answers are lost on their way out: ends the run with status 1.
[[noreturn]] void end_unwritten();

// The scanner gives up: reports its message, and ends the run with
// status 2.
[[noreturn]] void end_unscanned(const char* message, const Place& place);

// The place of these bytes of the solver's output, counted from 0, which is read again up to there.
// Not known in a file that has no beginning to go back to.
Place place_in_text(std::string_view text, std::size_t first, std::size_t last);
Place place_in_file(std::FILE* file, std::size_t first, std::size_t last);

}    // namespace zarel
