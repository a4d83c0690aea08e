#pragma once
// json_text.h - pieces of an answer as JSON, written straight into a text: an answer set of a
// million atoms is not worth a tree of objects.

#include <string>
#include <string_view>

#include "workbench/answers/answer_set.h"

namespace workbench {

// Appends a JSON string of the bytes. Those that are no UTF-8 are written as \udc80 to \udcff, a
// half of a character that no UTF-8 gives, so that they can be told and taken back.
void append_json_string(std::string& out, std::string_view bytes);

// Appends a term: an integer as a number, a constant as a string, and everything else as an object,
// {"string": ...}, {"prefix": ..., "name": ..., "address": ...}, or {"function": ..., "arguments":
// [...]}. However deep it is nested, no stack grows.
void append_json_term(std::string& out, const zarel::AnswerTerm& term);
void append_json_terms(std::string& out, const zarel::AnswerTerms& terms);    // [...]

}    // namespace workbench
