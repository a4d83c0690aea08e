#pragma once
// one_item.h - the items of answer sets, one by one.

#include <functional>

#include "workbench/answers/answer_consumer.h"

namespace workbench {

class OneItem : public AnswerConsumer {
 public:
  using Take = std::function<void(const AnswerSet&, const Item&)>;
  explicit OneItem(const Take& take) : take_(take) {}    // which outlives it

  void answer_set(AnswerSet& set) override {
    for (const Item& item : set.items()) take_(set, item);
  }
  void row(const zarel::AnswerTerms& /*values*/) override {}
  void truth(bool /*holds*/) override {}
  void flush() override {}
  void finish(const RunEnding& /*ending*/) override {}

 private:
  const Take& take_;
};

}    // namespace workbench
