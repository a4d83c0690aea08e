#pragma once
// atom_finder.h - which atom of the answer set an atom of a statement is, once its variables have
// values.

#include <limits>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

class AtomFinder {
 public:
  // Both must outlive the finder.
  AtomFinder(BodyEvaluator& evaluator, const AnswerIndex& index)
      : evaluator_(evaluator), index_(index) {}

  // The atom; kNoAtom where the answer set does not have it, or "_" leaves open which one it is.
  AtomNumber one(const StoredStatement& statement, const AtomPattern& atom,
                 const Binding& binding) {
    arguments_.clear();
    for (const PatternNumber argument : atom.arguments) {
      arguments_.push_back(evaluator_.value(statement, argument, binding));
      if (arguments_.back() == kNoTerm) return kNoAtom;
    }
    return index_.find(atom.predicate, arguments_);
  }

  // All that it can be.
  std::vector<AtomNumber> all(const StoredStatement& statement, const AtomPattern& atom,
                              const Binding& binding) {
    return evaluator_.atoms_of(statement, atom, binding, std::numeric_limits<std::size_t>::max());
  }

 private:
  BodyEvaluator& evaluator_;
  const AnswerIndex& index_;
  std::vector<GroundTerm> arguments_;
};

}    // namespace dl
