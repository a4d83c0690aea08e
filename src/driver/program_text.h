#pragma once
// program_text.h - clauses and queries as lines of text.

#include <ostream>
#include <span>

#include "model/clause.h"
#include "model/program.h"

namespace zarel {

// Every clause on a line of its own. With a copy, the same text goes there too: it is made once.
void write_clauses(std::ostream& out, std::span<const CLAUSET> clauses,
                   std::ostream* copy = nullptr);

// Every query of the program: its literals, "?", a line end.
void write_queries(std::ostream& out);

// The clauses that the user's statements became, and those that template expansion added behind
// them.
std::span<const CLAUSET> written_clauses();
std::span<const CLAUSET> generated_clauses();

}    // namespace zarel
