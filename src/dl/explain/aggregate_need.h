#pragma once
// aggregate_need.h - how many of the elements of an aggregate have to be there for its guards.
//
// Note [needs]
// What holds in the answer set and goes on holding when fewer elements are there needs none of them.
// So "3 <= #count" needs any three elements, and "50 < #sum" as many as add up to 51. An upper guard
// of these, though it needs nothing to hold, tells of all elements, and is explained by all, as "="
// is. Only where these cannot be proved first, because a rule of theirs rests on the aggregate, less
// must do: what the lower guard needs, and of an extremum one element, since that of nothing does
// not exist. An average can rise and fall with each of its elements and always needs all.

#include <cstdint>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

// So much weight, of tuples that weigh something each.
struct Need {
  std::uint64_t weight = 0;
  std::vector<std::uint32_t> weights;    // by tuple
};

enum class NeedKind : std::uint8_t {
  kTold,    // what the guards tell of
  kLeast    // what they cannot do without
};

// The values of the guards' terms; kNoTerm where there is none.
struct GuardValues {
  GroundTerm left = kNoTerm;
  GroundTerm right = kNoTerm;
};

GuardValues guard_values(BodyEvaluator& evaluator, const StoredStatement& statement,
                         const StoredAggregate& aggregate, const Binding& binding);

// Of an aggregate that holds.
Need need_of(NeedKind kind, const StoredAggregate& aggregate, const GuardValues& guards,
             const AggregateElements& elements, const GroundTerms& terms);

// The tuples: those that weigh most first, else in their order.
std::vector<std::uint32_t> heaviest_first(const Need& need);

// Whether both kinds are the same for such an aggregate.
bool has_one_need(const StoredAggregate& aggregate);

}    // namespace dl
