#include "workbench/answers/answer_limit.h"

namespace workbench {

void AnswerLimit::answer_set(AnswerSet& set) {
  if (passed_ == most_) return;
  if (!set.is_improving) ++passed_;
  next().answer_set(set);
}

void AnswerLimit::row(const zarel::AnswerTerms& values) {
  if (most_ != 0) next().row(values);
}

// There is nothing to count.
void AnswerLimit::truth(bool holds) {
  next().truth(holds);
}

}    // namespace workbench
