#pragma once
// relaxation.h - what of a program without an answer set stands in the way of one.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/single_search.h"
#include "dl/explain/statement_store.h"

namespace dl {

// An instance of a constraint, or a clash: an atom and its strong negation.
struct ConstraintInstance {
  std::optional<StatementNumber> statement;    // nothing for a clash
  Binding binding;                             // the outer variables' values
  // Of a clash.
  PredicateNumber predicate = 0;
  std::vector<GroundTerm> arguments;
};

// Constraints of the program, by statement; clashes by predicate.
struct ConstraintSet {
  std::vector<StatementNumber> statements;
  std::vector<PredicateNumber> clashes;    // the positive predicate of each
  bool is_empty() const { return statements.empty() && clashes.empty(); }
};

enum class ConflictKind : std::uint8_t {
  kNone,           // there is an answer set
  kConstraints,    // giving up some constraints or clashes leaves one
  kRules,          // not even without all constraints: a loop through negation
  kUnknown         // the time was over
};

// What there is to tell, in the order in which it is found: first the constraints of all, then the
// instances, which may take long. Each call may be the last one that the time allows. `is_proven` is
// false of what need not be the fewest or the smallest.
class ConflictReceiver {
 public:
  virtual ~ConflictReceiver() = default;
  virtual void kind(ConflictKind kind) = 0;
  // The fewest constraints without which there is an answer set.
  virtual void give_up(const ConstraintSet& lines, bool is_proven) = 0;
  // Constraints that do not go together, while any fewer of them do. Without these the next ones,
  // until what is left is consistent.
  virtual void conflict(const ConstraintSet& lines, bool is_proven) = 0;
  // The fewest instances of the constraints to give up: without these alone there is an answer set.
  virtual void give_up_instances(const std::vector<ConstraintInstance>& instances,
                                 bool is_proven) = 0;
  // The instances of a conflict, from 0 in the order of telling, that do not go together, while any
  // fewer do.
  virtual void instances(std::size_t conflict, const std::vector<ConstraintInstance>& instances,
                         bool is_proven) = 0;
  // Of kRules: the fewest rules without which there is an answer set, once all constraints are given
  // up, too. Without a demand only rules in loops through negation are looked at. Not called where
  // a demand leaves none without any rules.
  virtual void rules(const std::vector<StatementNumber>& rules, bool is_proven) = 0;
};

class Relaxation {
 public:
  // The sources are those of the store. All must outlive the relaxation.
  Relaxation(const StatementStore& store, GroundTerms& terms, AnswerIndex& index,
             const Options& options);

  // Why the program has no answer set, with a further constraint, ":- not a.", if one is given: text
  // of the solver's language, which is never given up. Weak constraints and the query do not count.
  // Ends early when an interruption comes. Throws Failure as search_one() does.
  void explain(ConflictReceiver& receiver, const std::string& demand = {});

 private:
  const StatementStore& store_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  const Options& options_;
};

}    // namespace dl
