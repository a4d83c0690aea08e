#pragma once
// answer_sorter.h - the items of an answer set in an order that its reader expects.

#include "workbench/answers/answer_consumer.h"

namespace workbench {

// Atoms come first, by relation, number of arguments, sign, frame space and values; memberships by
// class and object; subclasses; and objects by name, frame space, attribute and value. Integers are
// in front of constants, strings and function terms, each among themselves by value or byte-wise.
class AnswerSorter : public AnswerStage {
 public:
  using AnswerStage::AnswerStage;

  void answer_set(AnswerSet& set) override;
};

// Less than 0, 0, or more, in the order of values.
int compare_values(const zarel::AnswerTerms& left, const zarel::AnswerTerms& right);

}    // namespace workbench
