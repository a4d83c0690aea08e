#pragma once
// answer_limit.h - the first answer sets alone, of those that are counted.

#include <cstdint>

#include "workbench/answers/answer_consumer.h"

namespace workbench {

class AnswerLimit : public AnswerStage {
 public:
  AnswerLimit(AnswerConsumer& next, std::uint64_t most) : AnswerStage(next), most_(most) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override;

 private:
  std::uint64_t most_;    // 0: nothing is shown, no rows of queries either
  std::uint64_t passed_ = 0;
};

}    // namespace workbench
