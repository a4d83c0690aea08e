#pragma once
// body_evaluator.h - for which values of its variables a body holds in an answer set.

#include <compare>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "dl/explain/aggregate_elements.h"
#include "dl/explain/interrupted.h"
#include "dl/explain/statement_store.h"

namespace dl {

// The values of a statement's variables, by VariableId; kNoTerm where there is none.
using Binding = std::vector<GroundTerm>;

// Takes a binding, which is changed afterwards; false ends the search.
using TakeBinding = std::function<bool(const Binding&)>;

// Whether the comparison is true of two terms in that order.
bool is_true(Builtin comparison, std::strong_ordering order);

// What an operand that nothing binds ranges over.
enum class OpenOperands : bool { kUnknown, kRange };

class BodyEvaluator {
 public:
  // All must outlive the evaluator. An interruption that comes later ends any of its functions,
  // which throw Interrupted.
  BodyEvaluator(GroundTerms& terms, AnswerIndex& index, const StatementStore& store)
      : terms_(terms), index_(index), store_(store) {}

  // Which literals of the body are looked at: all but those of which `is_left_out` (by literal) is
  // true; empty for all.
  using LeftOut = std::span<const char>;

  // From now on a call of each() ends behind so many attempts to match, those for aggregates
  // included, 0: never; was_cut() tells of the last call, attempts() of all that were made.
  void limit(std::uint64_t most_attempts) { most_attempts_ = most_attempts; }
  bool was_cut() const { return was_cut_; }
  std::uint64_t attempts() const { return attempts_; }

  // Calls `take` with each binding of the outer variables with which the literals hold, beginning
  // with those that `start` has. Variables that only literals bind that were left out have kNoTerm;
  // so do those of a literal that cannot be evaluated for lack of them, which is then left out, too.
  // Where nothing is left out, an operand that nothing else binds ranges over the integers up to the
  // bound. A binding is told once. Returns false when `take` did.
  bool each(const StoredStatement& statement, const Binding& start, LeftOut is_left_out,
            const TakeBinding& take);
  // For the binding that each() tells: by literal of the body, the atom that it is; kNoAtom where
  // that was not looked at, or "_" leaves it open.
  std::span<const AtomNumber> found_atoms() const { return found_atoms_; }
  // The same of these literals of the body alone: few of a long body take no longer than few of a
  // short one. The binding has a place for each variable; it is changed, and at the end what it was.
  bool each_of(const StoredStatement& statement, std::span<const std::uint32_t> literals,
               OpenOperands open, Binding& binding, const TakeBinding& take);

  // A list with all atoms of the answer set that the atom can be with these values, and others.
  std::span<const AtomNumber> candidates(const StoredStatement& statement, const AtomPattern& atom,
                                         const Binding& binding);

  // Whether the literal holds; nothing when a variable that it needs has no value.
  std::optional<bool> holds(const StoredStatement& statement, const StoredLiteral& literal,
                            const Binding& binding);

  // The atoms of the answer set that the atom is with such values; several only where it has "_" or
  // variables without a value. `most` bounds them.
  std::vector<AtomNumber> atoms_of(const StoredStatement& statement, const AtomPattern& atom,
                                   const Binding& binding, std::size_t most);

  // The elements of the aggregate, whose outer variables have values.
  AggregateElements elements(const StoredStatement& statement, const StoredAggregate& aggregate,
                             const Binding& binding, Ways ways);

  // Whether the guards hold for these elements. Variables of guards without a value make it false.
  bool guards_hold(const StoredStatement& statement, const StoredAggregate& aggregate,
                   const AggregateElements& elements, const Binding& binding);

  // Makes the pattern equal to the term by giving values to variables that have none. Returns false
  // when that cannot be; then the binding may have been changed.
  bool match(const StoredStatement& statement, PatternNumber pattern, GroundTerm term,
             Binding& binding) const;
  bool match(const StoredStatement& statement, const AtomPattern& atom,
             std::span<const GroundTerm> arguments, Binding& binding) const;
  // The term that the pattern is with these values; kNoTerm when one is missing.
  GroundTerm value(const StoredStatement& statement, PatternNumber pattern, const Binding& binding);

 private:
  bool atom_holds(const StoredStatement& statement, const AtomPattern& atom,
                  const Binding& binding);
  bool any_holds(const StoredStatement& statement, const AtomPattern& atom, const Binding& binding);
  std::optional<bool> builtin_holds(const StoredStatement& statement, const StoredLiteral& literal,
                                    const Binding& binding);
  std::optional<bool> aggregate_holds(const StoredStatement& statement,
                                      const StoredLiteral& literal, const Binding& binding);

  friend class BodyJoin;
  GroundTerms& terms_;
  AnswerIndex& index_;
  const StatementStore& store_;
  InterruptionCheck interruption_;
  std::uint64_t most_attempts_ = 0;
  std::uint64_t attempts_ = 0;
  bool was_cut_ = false;
  std::vector<AtomNumber> found_atoms_;
};

}    // namespace dl
