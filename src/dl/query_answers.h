#pragma once
// query_answers.h - what holds for a query, as values and as text.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/program_parts.h"

namespace dl {

// The values of an answer, as the input spells them.
using QueryRow = std::vector<std::string>;

// What answers a query with variables, sorted. `line` is clingo's line of consequences.
std::vector<QueryRow> query_rows(std::string_view line);

// The rows as lines, "a, b".
std::string query_text(const std::vector<QueryRow>& rows);

// Whether the query's atom is among the consequences, for a query without variables.
bool query_holds(std::string_view line);

// The place of an integer that left 32 bits: derived in this line, or, when the line lists what
// holds in all answer sets, not known to be absent from each.
std::optional<std::size_t> query_fault(std::string_view line, bool holds_in_all,
                                       std::size_t places);

}    // namespace dl
