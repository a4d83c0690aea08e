#include "workbench/answers/set_heading.h"

#include "workbench/answers/found.h"

namespace workbench {

void append_heading(std::string& out, const AnswerSet& set) {
  (out += "% answer set ") += std::to_string(set.number);
  if (!set.costs.empty()) {
    std::vector<std::pair<std::string, std::string>> costs;
    for (const Cost& cost : set.costs) costs.emplace_back(cost.weight, cost.level);
    (out += ", ") += cost_in_words(costs);
  }
  out += '\n';
}

}    // namespace workbench
