#pragma once
// answer_set_reader.h - reads the solver's output and tells a sink of the answers, or prints them
// in the user's words.

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string_view>

#include "base/place.h"
#include "model/namespaces.h"
#include "output/answer_sink.h"

namespace zarel {

// Asked where an open file ends: waits a moment when more may be written to it, and tells whether
// to look again.
using HasGrown = std::function<bool()>;

// Whether the program's query has named variables. The solver's text does not tell: `true` answers
// a query without them, and is a value for one with them.
enum class QueryForm : std::uint8_t { kOpen, kGround };

struct ReadingOptions {
  const NamespaceTable* namespaces = nullptr;    // that qualified constants are of; null: none are
  QueryForm query = QueryForm::kOpen;
};

// Reads answer sets, lists of terms and best-model blocks until the end of an open file or pipe of
// which nothing was read through its buffer, and tells the sink of each. Advances
// the run's parser_line by the lines read; the caller sets it before. Returns 0; after a
// "syntax error" 1 and after "memory exhausted" 2, reported with output_yyerror, the sink having
// been told what was read before. An input that cannot be read at all is reported as "can't open
// input" and throws the run's end with status 0. A later failure of the scanner prints its line and
// throws the run's end with status 2; a sink that loses something throws it with status 1. What the
// sink itself throws ends the reading and goes on to the caller.
int read_answer_sets(std::FILE* in, AnswerSink& sink, const ReadingOptions& options = {},
                     HasGrown grown = {});

// The same for text in memory. A reading keeps nothing behind, and shares nothing with another one
// but its sink and the run.
int read_answer_sets(std::string_view text, AnswerSink& sink, const ReadingOptions& options = {});

// The same for a sink that prints each item to standard_output(), complete ones only, as
// display_settings() and the name spaces of the current run say.
int read_answer_sets(std::FILE* in, HasGrown grown = {});
int read_answer_sets(std::string_view text);

// Reports the message to the run. Counts nothing.
void output_yyerror(std::string_view message);
void output_yyerror(std::string_view message, const Place& place);

}    // namespace zarel
