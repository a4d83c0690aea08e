#pragma once
// answer_projection.h - answer sets that differ only in what is hidden, as one.

#include <cstdint>

#include "workbench/answers/answer_consumer.h"
#include "workbench/answers/digest_set.h"

namespace workbench {

// Note [projection]
// Passes an answer set on when none before it shows the same. Of each that it passed it keeps the
// sum of its items' digests: the order of items does not matter, and a set takes 21 to 64 bytes,
// however large it is. That any two of 2^32 different sets are taken for one has a probability of
// 2^-65.
class AnswerProjection : public AnswerStage {
 public:
  // Counts in `found` what is different; `limit` is how many are wanted, 0 for all.
  AnswerProjection(AnswerConsumer& next, Found& found, std::uint64_t limit)
      : AnswerStage(next), found_(found), limit_(limit) {
    found_.different = 0;
  }

  void answer_set(AnswerSet& set) override;

 private:
  Found& found_;
  std::uint64_t limit_;
  DigestSet seen_;
};

}    // namespace workbench
