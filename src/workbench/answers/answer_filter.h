#pragma once
// answer_filter.h - which items of an answer set are shown.

#include <set>
#include <string>
#include <vector>

#include "workbench/answers/answer_consumer.h"

namespace workbench {

class AnswerFilter : public AnswerStage {
 public:
  // Shows the atoms of the named relations, all when there are none; and all frames.
  AnswerFilter(AnswerConsumer& next, const std::vector<std::string>& relations)
      : AnswerStage(next), relations_(relations.begin(), relations.end()) {}

  void answer_set(AnswerSet& set) override;

 private:
  bool shows(const AnswerSet& set, const Item& item) const;

  std::set<std::string, std::less<>> relations_;
};

}    // namespace workbench
