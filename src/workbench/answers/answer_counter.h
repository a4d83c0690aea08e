#pragma once
// answer_counter.h - counts answers on their way.

#include "workbench/answers/answer_consumer.h"

namespace workbench {

class AnswerCounter : public AnswerStage {
 public:
  AnswerCounter(AnswerConsumer& next, Found& found) : AnswerStage(next), found_(found) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override;

 private:
  Found& found_;
};

}    // namespace workbench
