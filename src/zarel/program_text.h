#pragma once
// program_text.h - clauses and queries as lines of text.

#include <cstddef>
#include <ostream>
#include <span>

#include "model/clause.h"
#include "model/program.h"

namespace zarel {

// Every clause on a line of its own. Returns the length of the text.
std::size_t write_clauses(std::ostream& out, std::span<const CLAUSET> clauses);

// Every query of the program: its literals, "?", a line end. Returns the length of the text.
std::size_t write_queries(std::ostream& out);

// The clauses that the user's statements became, and those that template expansion added behind
// them.
std::span<const CLAUSET> written_clauses();
std::span<const CLAUSET> generated_clauses();

}    // namespace zarel
