#pragma once
// answer_text.h - reads ground atoms as dl prints them.

#include <string_view>
#include <vector>

#include "dl/explain/answer_index.h"
#include "dl/explain/ground_terms.h"

namespace dl {

// Adds the atoms of "{a, -b(c,\"x\")}" to the index. The text is one that dl has printed.
void add_answer_set(std::string_view text, GroundTerms& terms, AnswerIndex& index);

// Reads one ground term of such a text.
GroundTerm read_ground_term(std::string_view text, GroundTerms& terms);

}    // namespace dl
