#pragma once
// body_order.h - the order in which the literals of a body can be evaluated: who binds which
// variable, and whether the rule is safe. clingo finds an order of its own; this one tells which
// operand a "+" computes, finds unsafe rules by their own line, and keeps literals that share
// variables together where a long body is cut.

#include <cstdint>
#include <deque>
#include <optional>
#include <string_view>
#include <vector>

#include "dl/statement.h"

namespace dl {

enum class StepMode : std::uint8_t {
  kTest,      // the literal is evaluated; a positive atom binds its variables
  kAssign,    // a builtin computes the operand `target` (an aggregate: its guard)
  kFactor,    // "*" computes the factor `target`: see Note [open factors]
  kZero,      // "*" holds whatever its factor `target` is
  kRange      // `target` is a variable that ranges over all integers up to the bound
};

// Note [open factors]
// Z = X * Y gives Y a value where X is not 0. Where X and Z are both 0, it leaves Y open: under a
// bound Y is any integer up to it, and without one whatever the rest of the body says. So a factor
// is computed last, and the step lists the other ways in which the rest, with this literal left
// out, gives Y a value, too. Each is a body of its own; what follows is the same for all.
struct Step {
  std::uint32_t literal;    // index in the body
  StepMode mode;
  std::uint32_t target;
  Slice others{};    // of kFactor: in BodyOrder::others()
};

// Whether the program bounds its integers.
enum class IntegerBound : bool { kNone, kGiven };

// A variable that nothing binds, as messages name it, and where it is used.
struct Unbound {
  std::string_view name;
  Use use;
};

// For each variable of a statement, whether it occurs outside the braces of aggregates: those that
// do not are local.
std::vector<char> outer_variables(const Statement& statement);

class BodyOrder {
 public:
  // `outer` from outer_variables; it and the statement must outlive the order.
  BodyOrder(const Statement& statement, const std::vector<char>& outer, IntegerBound integers)
      : statement_(statement), outer_(outer), integers_(integers) {}

  // Orders the body, with `bound` telling which variables have values already; bound() tells them
  // afterwards. Returns false when some literal cannot be evaluated: unbound() is the variable that
  // nothing binds.
  bool order(const std::vector<Literal>& body, std::vector<char> bound);

  const std::vector<Step>& steps() const { return steps_; }
  const std::vector<std::vector<Step>>& others() const { return others_; }
  // Whether there are more ways to a factor than are looked at: nothing of the order is of use.
  bool is_tangled() const { return is_tangled_; }
  const std::vector<char>& bound() const { return bound_; }
  bool is_bound(const Term& term) const { return are_bound(term.uses); }
  const Unbound& unbound() const { return unbound_; }

 private:
  // How a literal can be evaluated now; nothing when it has to wait.
  struct Readiness {
    StepMode mode;
    std::uint32_t target;
  };
  using MaybeReady = std::optional<Readiness>;

  void watch_variables();
  bool are_bound(Slice uses) const;
  MaybeReady readiness(const Literal& literal);
  MaybeReady atom_readiness(const Literal& literal) const;
  MaybeReady comparison_readiness(const Literal& literal) const;
  MaybeReady operand_readiness(const Literal& literal) const;
  MaybeReady function_readiness(const Literal& literal) const;
  MaybeReady aggregate_readiness(const Literal& literal);
  bool inside_is_safe(const Aggregate& aggregate);
  void examine(std::uint32_t literal);
  void take(std::uint32_t literal, Readiness readiness);
  void bind(Slice uses);
  void bind_variable(VariableId variable);
  void settle();
  void settle_certain();
  bool take_a_product();
  bool can_be_given(VariableId variable) const;
  bool may_bind(const Literal& literal, VariableId variable) const;
  std::vector<char> related_to(VariableId factor) const;
  Slice find_others(std::uint32_t literal, std::uint32_t target);
  void explore(VariableId factor, std::vector<std::vector<Step>>& ways, unsigned& tries);
  bool take_a_range();
  void note_stuck();

  const Statement& statement_;
  const std::vector<char>& outer_;
  IntegerBound integers_;
  const std::vector<Literal>* body_ = nullptr;
  std::vector<char> bound_;
  std::vector<char> taken_;                   // by literal
  std::vector<std::uint32_t> watch_begin_;    // by variable: where its literals begin in watchers_
  std::vector<std::uint32_t> watchers_;
  std::vector<VariableId> news_;      // variables in the order in which they were bound
  std::size_t next_news_ = 0;         // the first of them whose literals have not been looked at
  std::size_t left_ = 0;              // literals not taken
  std::uint32_t range_cursor_ = 0;    // no literal before it can be given a range
  bool following_ = false;    // looking at what shares a variable, not at all literals in turn
  std::deque<std::uint32_t> atoms_;    // positive atoms that share a variable with what was taken
  std::deque<std::uint32_t> assignments_;    // that could be taken; tests go first
  std::deque<std::uint32_t> products_;       // that could compute a factor; all others go first
  std::vector<Step> steps_;
  std::vector<std::vector<Step>> others_;
  bool is_tangled_ = false;
  Unbound unbound_;
};

}    // namespace dl
