#pragma once
// reading_errors.h - how a reading reports that it cannot go on; output_yyerror, which does so too,
// is in answer_set_reader.h. What is complete was printed before.

namespace zarel {

void count_line();    // one more, of which messages show the number

// The input cannot be read at all: ends the run with status 0.
[[noreturn]] void end_unread();

// Answers are lost on their way out: ends the run with status 1.
[[noreturn]] void end_unwritten();

// The scanner gives up: reports its message, and ends the run with
// status 2.
[[noreturn]] void end_unscanned(const char* message);

}    // namespace zarel
