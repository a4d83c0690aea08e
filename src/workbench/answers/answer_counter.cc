#include "workbench/answers/answer_counter.h"

#include "workbench/progress/run_progress.h"

namespace workbench {

void AnswerCounter::answer_set(AnswerSet& set) {
  if (set.is_improving) return next().answer_set(set);
  note_found(++found_.answer_sets);
  if (!set.costs.empty()) {
    found_.costs.clear();
    for (const Cost& cost : set.costs) found_.costs.emplace_back(cost.weight, cost.level);
  }
  next().answer_set(set);
}

void AnswerCounter::row(const zarel::AnswerTerms& values) {
  ++found_.rows;
  next().row(values);
}

void AnswerCounter::truth(bool holds) {
  found_.truth = holds;
  next().truth(holds);
}

}    // namespace workbench
