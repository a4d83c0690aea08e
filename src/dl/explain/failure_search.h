#pragma once
// failure_search.h - why an atom is not in an answer set.

#include <cstdint>
#include <string>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

enum class LiteralState : std::uint8_t {
  kHolds,
  kFails,
  kOpen    // not looked at: it needs a value that a failing literal would have to give
};

// The instance of a rule that comes nearest to giving the atom.
struct FailedRule {
  StatementNumber statement = 0;
  std::uint32_t head = 0;
  Binding binding;                       // of what has a value
  std::vector<LiteralState> literals;    // by literal of the body
  std::vector<GroundTerm> values;        // by literal: of an aggregate, where it has one
  // The body holds, but these other atoms of the head do, too; none where the body fails.
  std::vector<AtomNumber> other_heads;
  std::uint64_t bindings = 0;    // that come as near, this one included
  bool was_cut = false;          // more bindings were possible than are looked at
};

struct MissingAtom {
  std::vector<FailedRule> rules;    // each rule that could give the atom, in the order of writing
  // Rules whose head has the predicate, but cannot be this atom: other constants stand there.
  std::vector<HeadUse> other_rules;
  bool has_other_facts = false;            // of the predicate
  std::vector<PredicateNumber> similar;    // where nothing gives the predicate: the nearest
  AtomNumber contrary = kNoAtom;           // holds: the atom with the other sign
};

class FailureSearch {
 public:
  // All must outlive the search.
  FailureSearch(GroundTerms& terms, AnswerIndex& index, const StatementStore& store)
      : terms_(terms), index_(index), store_(store), evaluator_(terms, index, store) {}

  // Why the atom, which is not in the answer set, is not. An argument that is kNoTerm may be any
  // term: of the atom no instance is in the answer set, and of each rule the instance is told that
  // comes nearest to giving one.
  MissingAtom explain(PredicateNumber predicate, const std::vector<GroundTerm>& arguments);
  // The instance with these values, kNoTerm for others, of a body that does not hold with them.
  FailedRule explain_body(StatementNumber statement, const Binding& start);

 private:
  bool can_give(const HeadUse& use, const std::vector<GroundTerm>& arguments, Binding& binding);
  void find_nearest(FailedRule& rule, std::uint64_t& effort);
  std::uint64_t effort() const;
  std::vector<AtomNumber> other_heads(const FailedRule& rule);
  std::vector<PredicateNumber> similar(PredicateNumber predicate) const;

  GroundTerms& terms_;
  AnswerIndex& index_;
  const StatementStore& store_;
  BodyEvaluator evaluator_;
};

}    // namespace dl
