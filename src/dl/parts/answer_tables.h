#pragma once
// answer_tables.h - what reading the answers needs to know of a program, as a text: whoever joins
// the parts of a search needs neither the program nor its translation.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/options.h"
#include "dl/translate.h"

namespace dl {

struct AnswerTables {
  Translated program;    // of which the answer reader looks at `sources` and `parts`
  Reasoning reasoning = Reasoning::kCautious;
  std::vector<std::string> host;    // lines that the host alone understands
};

std::string text_of(const AnswerTables& tables);
// Nothing for what is no such text.
std::optional<AnswerTables> read_tables(std::string_view text);

}    // namespace dl
