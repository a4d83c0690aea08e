#pragma once
// csv_text.h - pieces of an answer as CSV (RFC 4180).

#include <string>
#include <string_view>

#include "output/answer_terms.h"

namespace workbench {

inline constexpr std::string_view kCsvLineEnd = "\r\n";

// Appends a field, in quotes where it has to be; the empty text always is, so that it differs from
// a field without a value.
void append_csv_field(std::string& out, std::string_view text);

// Appends a field for each term, with commas between, and returns how many: strings as what is
// between their quotes, everything else as the user writes it.
std::size_t append_csv_terms(std::string& out, const zarel::AnswerTerms& terms);
void append_csv_term(std::string& out, const zarel::AnswerTerm& term);

}    // namespace workbench
