#include "dl/explain/body_evaluator.h"

#include <algorithm>
#include <compare>
#include <limits>
#include <type_traits>

#include "dl/explain/body_join.h"

namespace dl {
namespace {

std::strong_ordering reversed(std::strong_ordering order) {
  if (std::is_eq(order)) return order;
  return std::is_lt(order) ? std::strong_ordering::greater : std::strong_ordering::less;
}

// The sum and number of the integers that tuples begin with.
struct Total {
  std::uint64_t sum = 0;
  std::uint64_t count = 0;
};

Total total_of(const AggregateElements& elements) {
  Total total;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (!GroundTerms::is_integer(elements.first_term(i))) continue;
    total.sum += GroundTerms::value(elements.first_term(i));
    ++total.count;
  }
  return total;
}

GroundTerm extremum_of(AggregateFunction function, const AggregateElements& elements,
                       const GroundTerms& terms) {
  GroundTerm best = kNoTerm;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const GroundTerm term = elements.first_term(i);
    const bool is_better =
        best == kNoTerm || (function == kMin ? std::is_lt(terms.compare(term, best))
                                             : std::is_gt(terms.compare(term, best)));
    if (is_better) best = term;
  }
  return best;
}

// An average need not be an integer, so the sum is compared with the guard so many times.
std::strong_ordering compare_with_average(GroundTerm guard, const Total& total) {
  if (!GroundTerms::is_integer(guard)) return std::strong_ordering::greater;
  return std::uint64_t{GroundTerms::value(guard)} * total.count <=> total.sum;
}

GroundTerm integer_or_nothing(std::uint64_t value) {
  if (value > std::numeric_limits<std::int32_t>::max()) return kNoTerm;
  return GroundTerms::integer(static_cast<std::uint32_t>(value));
}

// Where the values may not be changed, a variable without one is equal to nothing.
template <typename Values>
bool matches(const GroundTerms& terms, const StoredStatement& statement, PatternNumber pattern,
             GroundTerm term, Values& values) {
  const TermPattern& each = statement.terms[pattern];
  switch (each.kind) {
    case TermPattern::Kind::kAnonymous:
      return true;
    case TermPattern::Kind::kGround:
      return each.ground == term;
    case TermPattern::Kind::kVariable:
      if constexpr (!std::is_const_v<Values>) {
        if (values[each.variable] == kNoTerm) values[each.variable] = term;
      }
      return values[each.variable] == term;
    default:
      break;
  }
  const std::span<const GroundTerm> arguments = terms.arguments(term);
  if (arguments.size() != each.arguments.size() || terms.name_of(term) != each.functor) {
    return false;
  }
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!matches(terms, statement, each.arguments[i], arguments[i], values)) return false;
  }
  return true;
}

}    // namespace

bool is_true(Builtin op, std::strong_ordering order) {
  switch (op) {
    case kEqual:
      return std::is_eq(order);
    case kUnequal:
      return std::is_neq(order);
    case kLess:
      return std::is_lt(order);
    case kGreater:
      return std::is_gt(order);
    case kLessEqual:
      return std::is_lteq(order);
    default:
      return std::is_gteq(order);
  }
}

bool BodyEvaluator::match(const StoredStatement& statement, PatternNumber pattern, GroundTerm term,
                          Binding& binding) const {
  return matches(terms_, statement, pattern, term, binding);
}

bool BodyEvaluator::match(const StoredStatement& statement, const AtomPattern& atom,
                          std::span<const GroundTerm> arguments, Binding& binding) const {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (!match(statement, atom.arguments[i], arguments[i], binding)) return false;
  }
  return true;
}

GroundTerm BodyEvaluator::value(const StoredStatement& statement, PatternNumber pattern,
                                const Binding& binding) {
  const TermPattern& each = statement.terms[pattern];
  if (each.kind == TermPattern::Kind::kGround) return each.ground;
  if (each.kind == TermPattern::Kind::kVariable) return binding[each.variable];
  if (each.kind == TermPattern::Kind::kAnonymous) return kNoTerm;
  std::vector<GroundTerm> arguments;
  arguments.reserve(each.arguments.size());
  for (const PatternNumber argument : each.arguments) {
    arguments.push_back(value(statement, argument, binding));
    if (arguments.back() == kNoTerm) return kNoTerm;
  }
  return terms_.compound(each.functor, arguments);
}

std::span<const AtomNumber> BodyEvaluator::candidates(const StoredStatement& statement,
                                                      const AtomPattern& atom,
                                                      const Binding& binding) {
  std::span<const AtomNumber> shortest = index_.atoms(atom.predicate);
  for (std::uint32_t place = 0; place < atom.arguments.size(); ++place) {
    if (shortest.size() <= 1) break;
    const GroundTerm known = value(statement, atom.arguments[place], binding);
    if (known == kNoTerm) continue;
    const std::span<const AtomNumber> list = index_.atoms_with(atom.predicate, place, known);
    if (list.size() < shortest.size()) shortest = list;
  }
  return shortest;
}

std::vector<AtomNumber> BodyEvaluator::atoms_of(const StoredStatement& statement,
                                                const AtomPattern& atom, const Binding& binding,
                                                std::size_t most) {
  std::vector<AtomNumber> found;
  for (const AtomNumber candidate : candidates(statement, atom, binding)) {
    if (found.size() == most) break;
    Binding tried = binding;
    if (match(statement, atom, index_.arguments(candidate), tried)) found.push_back(candidate);
  }
  return found;
}

bool BodyEvaluator::atom_holds(const StoredStatement& statement, const AtomPattern& atom,
                               const Binding& binding) {
  std::vector<GroundTerm> arguments;
  arguments.reserve(atom.arguments.size());
  for (const PatternNumber argument : atom.arguments) {
    arguments.push_back(value(statement, argument, binding));
    if (arguments.back() == kNoTerm) return any_holds(statement, atom, binding);
  }
  return index_.find(atom.predicate, arguments) != kNoAtom;
}

// Of an atom with "_", whose variables have values.
bool BodyEvaluator::any_holds(const StoredStatement& statement, const AtomPattern& atom,
                              const Binding& binding) {
  const auto is_such = [&](AtomNumber candidate) {
    const std::span<const GroundTerm> arguments = index_.arguments(candidate);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
      if (!matches(terms_, statement, atom.arguments[i], arguments[i], binding)) return false;
    }
    return true;
  };
  return std::ranges::any_of(candidates(statement, atom, binding), is_such);
}

std::optional<bool> BodyEvaluator::holds(const StoredStatement& statement,
                                         const StoredLiteral& literal, const Binding& binding) {
  const auto has_value = [&binding](VariableId variable) { return binding[variable] != kNoTerm; };
  if (!std::ranges::all_of(literal.variables, has_value)) return std::nullopt;
  std::optional<bool> result;
  if (literal.kind == kAtom) {
    result = atom_holds(statement, literal.atom, binding);
  } else if (literal.kind == kAggregate) {
    result = aggregate_holds(statement, literal, binding);
  } else {
    result = builtin_holds(statement, literal, binding);
  }
  if (result && literal.negated) result = !*result;
  return result;
}

std::optional<bool> BodyEvaluator::builtin_holds(const StoredStatement& statement,
                                                 const StoredLiteral& literal,
                                                 const Binding& binding) {
  const std::size_t count = literal.operands.size();
  std::vector<GroundTerm> values;
  values.reserve(count);
  for (const PatternNumber operand : literal.operands) {
    values.push_back(value(statement, operand, binding));
  }
  if (kind_of(literal.kind).is_comparison) {
    return is_true(literal.kind, terms_.compare(values[0], values[1]));
  }
  if (literal.kind == kFunctionTerm) {
    if (count == 2) return values[0] == values[1];
    return values[0] == terms_.compound(terms_.name_of(values[1]), std::span(values).subspan(2));
  }
  const std::uint64_t greatest =
      static_cast<std::uint64_t>(store_.bound().value_or(std::numeric_limits<std::int32_t>::max()));
  for (const GroundTerm each : values) {
    if (!GroundTerms::is_integer(each) || GroundTerms::value(each) > greatest) return false;
  }
  const auto number = [&values](std::size_t i) {
    return std::uint64_t{GroundTerms::value(values[i])};
  };
  if (literal.kind == kSuccessor) return number(0) + 1 == number(1);
  if (literal.kind == kSum) return number(0) + number(1) == number(2);
  if (literal.kind == kProduct) return number(0) * number(1) == number(2);
  return true;    // #int
}

std::optional<bool> BodyEvaluator::aggregate_holds(const StoredStatement& statement,
                                                   const StoredLiteral& literal,
                                                   const Binding& binding) {
  const StoredAggregate& aggregate = statement.aggregates[literal.aggregate];
  for (const StoredGuard* guard : {&aggregate.left, &aggregate.right}) {
    if (guard->given && value(statement, guard->term, binding) == kNoTerm) return std::nullopt;
  }
  return guards_hold(statement, aggregate,
                     elements(statement, aggregate, binding, Ways::kForgotten), binding);
}

AggregateElements BodyEvaluator::elements(const StoredStatement& statement,
                                          const StoredAggregate& aggregate, const Binding& binding,
                                          Ways ways) {
  AggregateElements elements(aggregate.terms.size(), binding, ways);
  Binding inside = binding;
  std::vector<GroundTerm> tuple;
  BodyJoin join(*this, terms_, index_, store_, statement, aggregate.body, inside, attempts_);
  join.run([&](const Binding& each) {
    tuple.clear();
    for (const PatternNumber term : aggregate.terms) tuple.push_back(value(statement, term, each));
    elements.add(tuple, each);
    return true;
  });
  if (aggregate.function == kCount) {
    elements.value = integer_or_nothing(elements.size());
  } else if (aggregate.function == kSumUp) {
    elements.value = integer_or_nothing(total_of(elements).sum);
  } else if (aggregate.function != kAverage) {
    elements.value = extremum_of(aggregate.function, elements, terms_);
  }
  return elements;
}

bool BodyEvaluator::guards_hold(const StoredStatement& statement, const StoredAggregate& aggregate,
                                const AggregateElements& elements, const Binding& binding) {
  const Total total = total_of(elements);
  const bool is_average = aggregate.function == kAverage;
  if (is_average ? total.count == 0 : elements.value == kNoTerm) return false;
  // The order of the guard's term and the value, or the other way round.
  const auto order = [&](const StoredGuard& guard) {
    const GroundTerm term = value(statement, guard.term, binding);
    return is_average ? compare_with_average(term, total) : terms_.compare(term, elements.value);
  };
  for (const StoredGuard* guard : {&aggregate.left, &aggregate.right}) {
    if (guard->given && value(statement, guard->term, binding) == kNoTerm) return false;
  }
  if (aggregate.left.given && !is_true(aggregate.left.op, order(aggregate.left))) return false;
  return !aggregate.right.given || is_true(aggregate.right.op, reversed(order(aggregate.right)));
}

bool BodyEvaluator::each(const StoredStatement& statement, const Binding& start,
                         LeftOut is_left_out, const TakeBinding& take) {
  Binding binding = start;
  binding.resize(statement.variables.size(), kNoTerm);
  BodyJoin join(*this, terms_, index_, store_, statement, statement.body, binding, attempts_);
  join.leave_out(is_left_out);
  const bool leaves_out = std::ranges::find(is_left_out, 1) != is_left_out.end();
  if (leaves_out) join.set_open_operands(OpenOperands::kUnknown);
  join.limit(most_attempts_);
  found_atoms_.assign(statement.body.size(), kNoAtom);
  join.note_atoms(found_atoms_);
  const bool goes_on = join.run(take);
  was_cut_ = join.was_cut();
  return goes_on || was_cut_;
}

bool BodyEvaluator::each_of(const StoredStatement& statement,
                            std::span<const std::uint32_t> literals, OpenOperands open,
                            Binding& binding, const TakeBinding& take) {
  BodyJoin join(*this, terms_, index_, store_, statement, statement.body, binding, attempts_);
  join.look_at(literals);
  join.set_open_operands(open);
  join.limit(most_attempts_);
  const bool goes_on = join.run(take);
  was_cut_ = join.was_cut();
  return goes_on || was_cut_;
}

}    // namespace dl
