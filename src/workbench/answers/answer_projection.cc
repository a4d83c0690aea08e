#include "workbench/answers/answer_projection.h"

namespace workbench {

// What the solver had found behind the last one that is wanted is not counted: how much that is
// depends on the moment.
void AnswerProjection::answer_set(AnswerSet& set) {
  if (set.is_improving) return next().answer_set(set);
  if (limit_ != 0 && found_.different == limit_) {
    --found_.answer_sets;
    return;
  }
  Digest digest;
  for (const Item& item : set.items()) {
    digest += digest_of(set.encoding(item), item.is_negated ? 1 : 0);
  }
  if (!seen_.insert(digest)) return;
  found_.different = seen_.size();
  next().answer_set(set);
}

}    // namespace workbench
