#pragma once
// scanner_input.h - what the generated scanner calls to read on, and to give up.

#include <cstdio>
#include <string_view>

#include "output/answer_set_reader.h"

namespace zarel {

// A new file is the input, nothing of which was read. Where it ends, `grown` is asked.
void begin_input(HasGrown grown);

// Reads what is there, waiting only when there is nothing, into `room` bytes at `into`; completed
// items are printed before, and when they cannot be, that ends the run with status 1. `held` is the
// length of the unfinished token in front of `into`. Returns the number of bytes, 0 at the end of
// the input. A failed read ends the run; when it is the first, as one of which nothing can be
// opened.
int read_piece(std::FILE* in, char* into, int room, int held);

// Makes the text what the scanner reads on from. One too long for it ends the run.
void scan_text(std::string_view text);

// Prints what is complete, then the message as a line on standard_error(), and ends the run with
// status 2.
[[noreturn]] void end_scanning(const char* message);

}    // namespace zarel
