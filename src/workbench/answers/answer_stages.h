#pragma once
// answer_stages.h - what stands between the reader of answers and their forms.

#include <memory>
#include <vector>

#include "workbench/answers/answer_consumer.h"
#include "workbench/answers/answer_options.h"

namespace workbench {

class AnswerStages {
 public:
  // Stages that the options ask for, in front of `last`; what they count goes to `found`. Both must
  // outlive this.
  AnswerStages(AnswerConsumer& last, const AnswerOptions& options, Found& found);

  AnswerConsumer& first() const { return *first_; }

 private:
  template <typename Stage, typename... Arguments>
  void put_in_front(Arguments&&... arguments);

  std::vector<std::unique_ptr<AnswerStage>> stages_;
  AnswerConsumer* first_;
};

}    // namespace workbench
