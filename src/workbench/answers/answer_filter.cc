#include "workbench/answers/answer_filter.h"

#include "model/generic_encoding.h"

namespace workbench {

// Atoms of the service space are those of the system.
bool AnswerFilter::shows(const AnswerSet& set, const Item& item) const {
  if (item.kind != ItemKind::kAtom) return true;
  const zarel::AnswerAtom atom = set.atom(item);
  if (atom.space == zarel::kServiceSpace) return false;
  return relations_.empty() || relations_.contains(atom.relation.text());
}

void AnswerFilter::answer_set(AnswerSet& set) {
  set.keep_if([this, &set](const Item& item) { return shows(set, item); });
  next().answer_set(set);
}

}    // namespace workbench
