#include "dl/explain/aggregate_need.h"

#include <algorithm>
#include <numeric>

namespace dl {
namespace {

// A guard, read from the aggregate: aggregate op value.
struct Limit {
  Builtin op = kEqual;
  GroundTerm value = kNoTerm;
};

Builtin turned(Builtin op) {
  switch (op) {
    case kLess:
      return kGreater;
    case kLessEqual:
      return kGreaterEqual;
    case kGreater:
      return kLess;
    case kGreaterEqual:
      return kLessEqual;
    default:
      return op;
  }
}

bool is_lower(Builtin op) {
  return op == kGreater || op == kGreaterEqual;
}

bool is_upper(Builtin op) {
  return op == kLess || op == kLessEqual;
}

// Whether more elements can only help the guard.
bool is_helped(AggregateFunction function, Builtin op) {
  if (function == kMin) return is_upper(op);
  return function != kAverage && is_lower(op);
}

// Whether the value of one element passes the guard.
bool passes(const Limit& limit, GroundTerm value, const GroundTerms& terms) {
  return is_true(limit.op, terms.compare(value, limit.value));
}

std::vector<Limit> limits_of(const StoredAggregate& aggregate, const GuardValues& guards) {
  std::vector<Limit> limits;
  if (aggregate.left.given) limits.push_back({turned(aggregate.left.op), guards.left});
  if (aggregate.right.given) limits.push_back({aggregate.right.op, guards.right});
  return limits;
}

Need all_of(const AggregateElements& elements) {
  return {elements.size(), std::vector<std::uint32_t>(elements.size(), 1)};
}

std::uint32_t summand(GroundTerm term) {
  return GroundTerms::is_integer(term) ? GroundTerms::value(term) : 0;
}

// The least value that the lower guards, "=" among them, let pass.
std::uint64_t least_total(const std::vector<Limit>& limits) {
  std::uint64_t least = 0;
  for (const Limit& limit : limits) {
    if (is_upper(limit.op) || !GroundTerms::is_integer(limit.value)) continue;
    const std::uint64_t value = GroundTerms::value(limit.value);
    least = std::max(least, limit.op == kGreater ? value + 1 : value);
  }
  return least;
}

Need total_need(AggregateFunction function, const std::vector<Limit>& limits,
                const AggregateElements& elements) {
  Need need{least_total(limits), {}};
  need.weights.reserve(elements.size());
  for (std::size_t i = 0; i < elements.size(); ++i) {
    need.weights.push_back(function == kCount ? 1 : summand(elements.first_term(i)));
  }
  return need;
}

// One element will do that passes all guards which more elements help.
Need extremum_need(AggregateFunction function, const std::vector<Limit>& limits,
                   const AggregateElements& elements, const GroundTerms& terms) {
  Need need{1, {}};
  need.weights.reserve(elements.size());
  for (std::size_t i = 0; i < elements.size(); ++i) {
    bool is_enough = true;
    for (const Limit& limit : limits) {
      const bool counts = limit.op == kEqual || is_helped(function, limit.op);
      if (counts && !passes(limit, elements.first_term(i), terms)) is_enough = false;
    }
    need.weights.push_back(is_enough ? 1 : 0);
  }
  return need;
}

bool is_helped(const StoredAggregate& aggregate) {
  const auto helps = [&aggregate](const StoredGuard& guard, Builtin op) {
    return !guard.given || is_helped(aggregate.function, op);
  };
  return helps(aggregate.left, turned(aggregate.left.op)) &&
         helps(aggregate.right, aggregate.right.op);
}

}    // namespace

GuardValues guard_values(BodyEvaluator& evaluator, const StoredStatement& statement,
                         const StoredAggregate& aggregate, const Binding& binding) {
  const auto value = [&](const StoredGuard& guard) {
    return guard.given ? evaluator.value(statement, guard.term, binding) : kNoTerm;
  };
  return {value(aggregate.left), value(aggregate.right)};
}

std::vector<std::uint32_t> heaviest_first(const Need& need) {
  std::vector<std::uint32_t> tuples(need.weights.size());
  std::iota(tuples.begin(), tuples.end(), 0u);
  std::ranges::stable_sort(tuples, std::ranges::greater(),
                           [&need](std::uint32_t tuple) { return need.weights[tuple]; });
  return tuples;
}

bool has_one_need(const StoredAggregate& aggregate) {
  return aggregate.function == kAverage || is_helped(aggregate);
}

Need need_of(NeedKind kind, const StoredAggregate& aggregate, const GuardValues& guards,
             const AggregateElements& elements, const GroundTerms& terms) {
  if (aggregate.function == kAverage) return all_of(elements);
  if (kind == NeedKind::kTold && !is_helped(aggregate)) return all_of(elements);
  const std::vector<Limit> limits = limits_of(aggregate, guards);
  if (aggregate.function == kCount || aggregate.function == kSumUp) {
    return total_need(aggregate.function, limits, elements);
  }
  return extremum_need(aggregate.function, limits, elements, terms);
}

}    // namespace dl
