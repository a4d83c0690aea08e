#pragma once
// body_join.h - goes through the ways in which a body holds, one literal after the other.
//
// Note [order of a join]
// The next literal is the one with the fewest candidates for the values that are there: a test, a
// computed value, then the atom with the shortest list at one of its places. Looking at all that is
// left each time would be quadratic in a long body: there the order is fixed before, by variables
// alone.

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

class BodyJoin {
 public:
  // All must outlive the join. The binding is changed, and at the end what it was; attempts are
  // added to those made before.
  BodyJoin(BodyEvaluator& evaluator, GroundTerms& terms, AnswerIndex& index,
           const StatementStore& store, const StoredStatement& statement,
           const std::vector<StoredLiteral>& body, Binding& binding, std::uint64_t& attempts)
      : evaluator_(evaluator),
        terms_(terms),
        index_(index),
        store_(store),
        statement_(statement),
        body_(body),
        binding_(binding),
        attempts_(attempts) {}

  // Without a call of these all literals are looked at.
  void leave_out(std::span<const char> literals) { is_left_out_ = literals; }
  void look_at(std::span<const std::uint32_t> literals) { chosen_ = literals; }
  void set_open_operands(OpenOperands open) { open_operands_ = open; }
  void limit(std::uint64_t most_attempts) { most_attempts_ = most_attempts; }
  // Has the atoms of positive literals noted by literal, see BodyEvaluator::found_atoms().
  void note_atoms(std::span<AtomNumber> found) { found_ = found; }

  // Calls `take` with each way. Returns false when it did, or the limit was met.
  bool run(const TakeBinding& take);
  bool was_cut() const { return was_cut_; }

 private:
  // How a literal can be evaluated now, the best first. An open operand is given all values, and the
  // literal waits; an open factor is one that a product of 0 leaves open.
  enum class Way : std::uint8_t {
    kTest,
    kAssign,
    kAtom,
    kIntegers,
    kOpenFactor,
    kOpenOperand,
    kNone
  };
  struct Choice {
    std::size_t position = 0;    // in open_
    Way way = Way::kNone;
    std::uint64_t candidates = 1;
    std::span<const AtomNumber> atoms;    // of kAtom
  };
  // A literal that is being evaluated, and what of it was tried.
  struct Level {
    std::uint32_t literal = 0;
    Choice choice;
    std::uint64_t next = 0;                    // candidate
    std::size_t trail = 0;                     // where its variables are in trail_
    std::set<std::vector<GroundTerm>> seen;    // of an atom with "_": the values that it gave
  };

  void prepare();
  void plan();
  Way way_of(const StoredLiteral& literal) const;
  Way comparison_way(const StoredLiteral& literal) const;
  Way operand_way(const StoredLiteral& literal) const;
  Way function_way(const StoredLiteral& literal) const;
  Way aggregate_way(const StoredLiteral& literal) const;
  bool is_known(PatternNumber pattern) const;
  bool are_known(const std::vector<VariableId>& variables) const;
  bool is_variable(PatternNumber pattern) const {
    return statement_.terms[pattern].kind == TermPattern::Kind::kVariable;
  }
  Choice choice_at(std::size_t position);
  Choice next_choice();
  bool enter();
  void leave();
  void note_variables(const StoredLiteral& literal);
  void undo(const Level& level);
  bool advance(Level& level);
  bool attempt(Level& level, std::uint64_t candidate);
  bool attempt_atom(Level& level, AtomNumber atom);
  void note(const Level& level, AtomNumber atom) {
    if (!found_.empty()) found_[level.literal] = atom;
  }
  bool assign(const StoredLiteral& literal);
  bool assign_operand(const StoredLiteral& literal);
  bool assign_function(const StoredLiteral& literal);
  bool assign_aggregate(const StoredLiteral& literal);
  bool give_open_operand(const StoredLiteral& literal, std::uint64_t value);
  bool match(PatternNumber pattern, GroundTerm term) {
    return evaluator_.match(statement_, pattern, term, binding_);
  }
  std::uint64_t integers() const;    // how many there are up to the bound; 0 without one

  BodyEvaluator& evaluator_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  const StatementStore& store_;
  const StoredStatement& statement_;
  const std::vector<StoredLiteral>& body_;
  Binding& binding_;
  std::uint64_t& attempts_;
  std::span<const char> is_left_out_;
  std::span<AtomNumber> found_;
  std::optional<std::span<const std::uint32_t>> chosen_;
  OpenOperands open_operands_ = OpenOperands::kRange;
  std::uint64_t most_attempts_ = 0;    // 0: no limit
  std::uint64_t first_attempt_ = 0;
  bool was_cut_ = false;
  std::vector<std::uint32_t> open_;    // literals that are to be evaluated
  bool is_planned_ = false;            // open_ has the next one at its end
  std::vector<Level> levels_;
  std::vector<VariableId> trail_;    // what the literals of the levels can bind
};

}    // namespace dl
