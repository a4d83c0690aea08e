#include "dl/explain/body_join.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <utility>

namespace dl {
namespace {

constexpr std::size_t kLongBody = 24;    // see Note [order of a join]
constexpr GroundTerm kSomeValue = 0;     // while a plan is made

bool has_anonymous(const StoredStatement& statement, PatternNumber pattern) {
  const TermPattern& term = statement.terms[pattern];
  if (term.kind == TermPattern::Kind::kAnonymous) return true;
  return std::ranges::any_of(term.arguments, [&statement](PatternNumber argument) {
    return has_anonymous(statement, argument);
  });
}

bool has_anonymous(const StoredStatement& statement, const AtomPattern& atom) {
  return std::ranges::any_of(atom.arguments, [&statement](PatternNumber argument) {
    return has_anonymous(statement, argument);
  });
}

}    // namespace

std::uint64_t BodyJoin::integers() const {
  return store_.bound() ? static_cast<std::uint64_t>(*store_.bound()) + 1 : 0;
}

bool BodyJoin::are_known(const std::vector<VariableId>& variables) const {
  return std::ranges::all_of(variables,
                             [this](VariableId variable) { return binding_[variable] != kNoTerm; });
}

bool BodyJoin::is_known(PatternNumber pattern) const {
  const TermPattern& term = statement_.terms[pattern];
  if (term.kind == TermPattern::Kind::kVariable) return binding_[term.variable] != kNoTerm;
  if (term.kind == TermPattern::Kind::kAnonymous) return false;
  return std::ranges::all_of(term.arguments,
                             [this](PatternNumber argument) { return is_known(argument); });
}

BodyJoin::Way BodyJoin::way_of(const StoredLiteral& literal) const {
  if (literal.kind == kAggregate) return aggregate_way(literal);
  if (are_known(literal.variables)) return Way::kTest;
  if (literal.kind == kAtom) return literal.negated ? Way::kNone : Way::kAtom;
  if (kind_of(literal.kind).is_comparison) return comparison_way(literal);
  if (literal.negated) return Way::kNone;
  if (literal.kind == kFunctionTerm) return function_way(literal);
  if (literal.kind == kInt) return is_variable(literal.operands[0]) ? Way::kIntegers : Way::kNone;
  return operand_way(literal);
}

BodyJoin::Way BodyJoin::comparison_way(const StoredLiteral& literal) const {
  if (literal.kind != (literal.negated ? kUnequal : kEqual)) return Way::kNone;
  const bool is_one_known = is_known(literal.operands[0]) || is_known(literal.operands[1]);
  return is_one_known ? Way::kAssign : Way::kNone;
}

BodyJoin::Way BodyJoin::function_way(const StoredLiteral& literal) const {
  if (is_known(literal.operands[0])) return Way::kAssign;
  const auto are_arguments_known =
      std::all_of(literal.operands.begin() + 2, literal.operands.end(),
                  [this](PatternNumber operand) { return is_known(operand); });
  return are_arguments_known ? Way::kAssign : Way::kNone;
}

// An unknown factor is computed unless the product and the other factor are 0.
BodyJoin::Way BodyJoin::operand_way(const StoredLiteral& literal) const {
  std::size_t unknown = 0;
  std::size_t target = 0;
  for (std::size_t i = 0; i < literal.operands.size(); ++i) {
    if (is_known(literal.operands[i])) continue;
    if (!is_variable(literal.operands[i])) return Way::kNone;
    ++unknown;
    target = i;
  }
  if (unknown > 1) {
    return open_operands_ == OpenOperands::kRange ? Way::kOpenOperand : Way::kNone;
  }
  if (literal.kind != kProduct || target == 2) return Way::kAssign;
  const auto is_zero = [this](PatternNumber operand) {
    const GroundTerm value = evaluator_.value(statement_, operand, binding_);
    return value == kSomeValue || value == GroundTerms::integer(0);
  };
  return is_zero(literal.operands[1 - target]) ? Way::kOpenFactor : Way::kAssign;
}

BodyJoin::Way BodyJoin::aggregate_way(const StoredLiteral& literal) const {
  if (!are_known(literal.variables)) return Way::kNone;
  const StoredAggregate& aggregate = statement_.aggregates[literal.aggregate];
  const auto is_fine = [this](const StoredGuard& guard) {
    return !guard.given || is_known(guard.term);
  };
  if (is_fine(aggregate.left) && is_fine(aggregate.right)) return Way::kTest;
  const bool assigns = aggregate.left.op == kEqual && is_variable(aggregate.left.term) &&
                       !literal.negated && aggregate.function != kAverage;
  return assigns ? Way::kAssign : Way::kNone;
}

void BodyJoin::prepare() {
  first_attempt_ = attempts_;
  open_.clear();
  if (chosen_) {
    open_.assign(chosen_->begin(), chosen_->end());
  } else {
    for (std::uint32_t i = 0; i < body_.size(); ++i) {
      if (is_left_out_.empty() || is_left_out_[i] == 0) open_.push_back(i);
    }
  }
  is_planned_ = open_.size() > kLongBody;
  if (is_planned_) plan();
}

// Takes what can be evaluated at once, else an atom that shares a variable with what was taken, else
// the next atom, else an open operand. What can never be evaluated stays out.
void BodyJoin::plan() {
  const Binding before = binding_;
  std::vector<std::vector<std::uint32_t>> watchers(binding_.size());
  for (const std::uint32_t literal : open_) {
    const auto watch = [&](VariableId variable) { watchers[variable].push_back(literal); };
    std::ranges::for_each(body_[literal].variables, watch);
    if (body_[literal].kind != kAggregate) continue;
    const StoredGuard& guard = statement_.aggregates[body_[literal].aggregate].left;
    if (guard.given && is_variable(guard.term)) watch(statement_.terms[guard.term].variable);
  }
  std::vector<std::uint32_t> order;
  std::vector<char> is_taken(body_.size(), 1);
  for (const std::uint32_t literal : open_) is_taken[literal] = 0;
  std::deque<std::uint32_t> ready;
  std::deque<std::uint32_t> atoms;
  const auto examine = [&](std::uint32_t literal, std::deque<std::uint32_t>& shared) {
    if (is_taken[literal] != 0) return;
    const Way way = way_of(body_[literal]);
    if (way <= Way::kAssign) ready.push_back(literal);
    if (way == Way::kAtom) shared.push_back(literal);
  };
  const auto take = [&](std::uint32_t literal) {
    is_taken[literal] = 1;
    order.push_back(literal);
    const std::size_t begin = trail_.size();
    note_variables(body_[literal]);
    for (std::size_t i = begin; i < trail_.size(); ++i) binding_[trail_[i]] = kSomeValue;
    for (std::size_t i = begin; i < trail_.size(); ++i) {
      for (const std::uint32_t watcher : watchers[trail_[i]]) examine(watcher, atoms);
    }
    trail_.resize(begin);
  };
  std::deque<std::uint32_t> all_atoms;
  for (const std::uint32_t literal : open_) examine(literal, all_atoms);
  std::deque<std::uint32_t> rest(open_.begin(), open_.end());
  const auto take_first = [&](std::deque<std::uint32_t>& list, Way worst) {
    while (!list.empty()) {
      const std::uint32_t literal = list.front();
      list.pop_front();
      if (is_taken[literal] != 0 || way_of(body_[literal]) > worst) continue;
      take(literal);
      return true;
    }
    return false;
  };
  while (take_first(ready, Way::kAssign) || take_first(atoms, Way::kAtom) ||
         take_first(all_atoms, Way::kAtom) || take_first(rest, Way::kOpenOperand)) {
  }
  open_.assign(order.rbegin(), order.rend());
  binding_ = before;
}

BodyJoin::Choice BodyJoin::choice_at(std::size_t position) {
  const StoredLiteral& literal = body_[open_[position]];
  Choice choice;
  choice.position = position;
  choice.way = way_of(literal);
  if (choice.way == Way::kAtom) {
    choice.atoms = evaluator_.candidates(statement_, literal.atom, binding_);
    choice.candidates = choice.atoms.size();
  } else if (choice.way > Way::kAtom) {
    choice.candidates = integers();
  }
  return choice;
}

BodyJoin::Choice BodyJoin::next_choice() {
  if (open_.empty()) return {};
  if (is_planned_) return choice_at(open_.size() - 1);
  Choice best;
  for (std::size_t position = 0; position < open_.size(); ++position) {
    const Choice choice = choice_at(position);
    if (choice.way == Way::kNone) continue;
    const bool is_better =
        std::pair(choice.way, choice.candidates) < std::pair(best.way, best.candidates);
    if (is_better) best = choice;
    if (best.way <= Way::kAssign) break;
  }
  return best;
}

// What the literal could bind.
void BodyJoin::note_variables(const StoredLiteral& literal) {
  const auto note = [this](VariableId variable) {
    if (binding_[variable] == kNoTerm) trail_.push_back(variable);
  };
  if (literal.kind == kAggregate) {
    const StoredGuard& guard = statement_.aggregates[literal.aggregate].left;
    if (guard.given && is_variable(guard.term)) note(statement_.terms[guard.term].variable);
  } else {
    std::ranges::for_each(literal.variables, note);
  }
}

// Begins with the next literal; false when nothing is left that can be evaluated.
bool BodyJoin::enter() {
  const Choice choice = next_choice();
  if (choice.way == Way::kNone) return false;
  Level level;
  level.literal = open_[choice.position];
  level.choice = choice;
  level.trail = trail_.size();
  note_variables(body_[level.literal]);
  if (choice.way != Way::kOpenOperand) {
    std::swap(open_[choice.position], open_.back());
    open_.pop_back();
  }
  levels_.push_back(std::move(level));
  return true;
}

void BodyJoin::undo(const Level& level) {
  for (std::size_t i = level.trail; i < trail_.size(); ++i) binding_[trail_[i]] = kNoTerm;
}

void BodyJoin::leave() {
  const Level& level = levels_.back();
  undo(level);
  note(level, kNoAtom);    // it may be a test the next time
  trail_.resize(level.trail);
  if (level.choice.way != Way::kOpenOperand) {
    open_.push_back(level.literal);
    std::swap(open_[level.choice.position], open_.back());
  }
  levels_.pop_back();
}

// Goes to the next candidate with which the literal holds.
bool BodyJoin::advance(Level& level) {
  while (!was_cut_ && level.next < level.choice.candidates) {
    undo(level);
    evaluator_.interruption_.step();
    was_cut_ = ++attempts_ - first_attempt_ > most_attempts_ && most_attempts_ != 0;
    if (!was_cut_ && attempt(level, level.next++)) return true;
  }
  return false;
}

bool BodyJoin::attempt(Level& level, std::uint64_t candidate) {
  const StoredLiteral& literal = body_[level.literal];
  switch (level.choice.way) {
    case Way::kTest:
      return evaluator_.holds(statement_, literal, binding_).value_or(false);
    case Way::kAssign:
      return assign(literal);
    case Way::kAtom:
      return attempt_atom(level, level.choice.atoms[candidate]);
    case Way::kIntegers:
      return match(literal.operands[0],
                   GroundTerms::integer(static_cast<std::uint32_t>(candidate)));
    default:
      return give_open_operand(literal, candidate);
  }
}

// Atoms that differ where "_" stands give the same values.
bool BodyJoin::attempt_atom(Level& level, AtomNumber atom) {
  const AtomPattern& pattern = body_[level.literal].atom;
  if (!evaluator_.match(statement_, pattern, index_.arguments(atom), binding_)) return false;
  if (!has_anonymous(statement_, pattern)) {
    note(level, atom);
    return true;
  }
  std::vector<GroundTerm> values;
  for (std::size_t i = level.trail; i < trail_.size(); ++i) values.push_back(binding_[trail_[i]]);
  return level.seen.insert(std::move(values)).second;
}

bool BodyJoin::assign(const StoredLiteral& literal) {
  if (literal.kind == kAggregate) return assign_aggregate(literal);
  if (literal.kind == kFunctionTerm) return assign_function(literal);
  if (!kind_of(literal.kind).is_comparison) return assign_operand(literal);
  const std::size_t known = is_known(literal.operands[0]) ? 0 : 1;
  return match(literal.operands[1 - known],
               evaluator_.value(statement_, literal.operands[known], binding_));
}

bool BodyJoin::assign_aggregate(const StoredLiteral& literal) {
  const StoredAggregate& aggregate = statement_.aggregates[literal.aggregate];
  const AggregateElements elements =
      evaluator_.elements(statement_, aggregate, binding_, Ways::kForgotten);
  return elements.value != kNoTerm && match(aggregate.left.term, elements.value) &&
         evaluator_.guards_hold(statement_, aggregate, elements, binding_);
}

bool BodyJoin::assign_function(const StoredLiteral& literal) {
  const GroundTerm functor = evaluator_.value(statement_, literal.operands[1], binding_);
  const std::span<const PatternNumber> operands = std::span(literal.operands).subspan(2);
  if (!is_known(literal.operands[0])) {
    std::vector<GroundTerm> arguments;
    for (const PatternNumber operand : operands) {
      arguments.push_back(evaluator_.value(statement_, operand, binding_));
    }
    const GroundTerm term =
        arguments.empty() ? functor : terms_.compound(terms_.name_of(functor), arguments);
    return match(literal.operands[0], term);
  }
  const GroundTerm term = evaluator_.value(statement_, literal.operands[0], binding_);
  const std::span<const GroundTerm> arguments = terms_.arguments(term);
  if (arguments.size() != operands.size() || GroundTerms::is_integer(term)) return false;
  if (terms_.name_of(term) != terms_.name_of(functor)) return false;
  for (std::size_t i = 0; i < operands.size(); ++i) {
    if (!match(operands[i], arguments[i])) return false;
  }
  return true;
}

// Computes the one operand that is unknown, and then looks whether the literal holds.
bool BodyJoin::assign_operand(const StoredLiteral& literal) {
  std::int64_t numbers[3] = {};
  std::size_t target = 0;
  for (std::size_t i = 0; i < literal.operands.size(); ++i) {
    const GroundTerm value = evaluator_.value(statement_, literal.operands[i], binding_);
    if (value == kNoTerm) {
      target = i;
    } else if (!GroundTerms::is_integer(value)) {
      return false;
    } else {
      numbers[i] = GroundTerms::value(value);
    }
  }
  const auto [x, y, z] = numbers;
  std::int64_t result = 0;
  if (literal.kind == kSuccessor) {
    result = target == 1 ? x + 1 : y - 1;
  } else if (literal.kind == kSum) {
    result = target == 2 ? x + y : z - (target == 0 ? y : x);
  } else if (target == 2) {
    if (y != 0 && x > std::numeric_limits<std::int32_t>::max() / y) return false;
    result = x * y;
  } else {
    result = z / (target == 0 ? y : x);
  }
  if (result < 0 || result > std::numeric_limits<std::int32_t>::max()) return false;
  return match(literal.operands[target],
               GroundTerms::integer(static_cast<std::uint32_t>(result))) &&
         evaluator_.holds(statement_, literal, binding_).value_or(false);
}

// An open factor is the one that is left; of open operands the first takes the value, and the
// literal is looked at again.
bool BodyJoin::give_open_operand(const StoredLiteral& literal, std::uint64_t value) {
  const GroundTerm term = GroundTerms::integer(static_cast<std::uint32_t>(value));
  for (const PatternNumber operand : literal.operands) {
    if (is_known(operand)) continue;
    if (!match(operand, term)) return false;
    return !are_known(literal.variables) ||
           evaluator_.holds(statement_, literal, binding_).value_or(false);
  }
  return false;
}

bool BodyJoin::run(const TakeBinding& take) {
  prepare();
  bool goes_on = true;
  if (!enter()) goes_on = take(binding_);
  while (goes_on && !levels_.empty()) {
    if (!advance(levels_.back())) {
      leave();
    } else if (!enter()) {
      goes_on = take(binding_);
    }
  }
  while (!levels_.empty()) leave();
  return goes_on && !was_cut_;
}

}    // namespace dl
