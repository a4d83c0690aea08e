#include "workbench/answers/set_heading.h"

namespace workbench {

std::string set_heading(const AnswerSet& set) {
  std::string text = set.is_improving ? "better answer set " : "answer set ";
  text += std::to_string(set.number);
  const char* separator = ", cost ";
  for (const Cost& cost : set.costs) {
    (((text += separator) += cost.weight) += " at level ") += cost.level;
    separator = ", ";
  }
  return text;
}

void append_heading(std::string& out, const AnswerSet& set) {
  ((out += "% ") += set_heading(set)) += '\n';
}

}    // namespace workbench
