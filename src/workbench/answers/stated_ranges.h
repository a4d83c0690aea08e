#pragma once
// stated_ranges.h - leaves out what the program states by ranges, such as p(1..3): facts for who
// wrote them, though the solver gets a rule.

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "workbench/answers/answer_consumer.h"
#include "workbench/answers/answer_options.h"

namespace workbench {

class StatedRanges : public AnswerStage {
 public:
  StatedRanges(AnswerConsumer& next, const std::vector<StatedRange>& ranges);

  void answer_set(AnswerSet& set) override;

 private:
  using Bounds = std::vector<std::pair<std::uint64_t, std::uint64_t>>;

  bool states(const AnswerSet& set, const Item& item) const;

  std::unordered_map<std::string, Bounds> bounds_;    // by relation@space
};

}    // namespace workbench
