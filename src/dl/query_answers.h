#pragma once
// query_answers.h - what holds for a query, printed as values.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "dl/program_parts.h"

namespace dl {

// The lines that answer a query with variables: one "a, b" for each answer, sorted. `line` is
// clingo's line of consequences.
std::string query_answers(std::string_view line);

// Whether the query's atom is among the consequences, for a query without variables.
bool query_holds(std::string_view line);

// The place of an integer that left 32 bits: derived in this line, or, when the line lists what
// holds in all answer sets, not known to be absent from each.
std::optional<std::size_t> query_fault(std::string_view line, bool holds_in_all,
                                       std::size_t places);

}    // namespace dl
