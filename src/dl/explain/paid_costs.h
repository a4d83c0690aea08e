#pragma once
// paid_costs.h - what an answer set pays for, and what not paying for it would cost.

#include <cstdint>
#include <optional>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/single_search.h"

namespace dl {

// An instance of a weak constraint that the answer set violates, and that costs something.
struct PaidInstance {
  StatementNumber statement = 0;
  Binding binding;    // of the outer variables
  std::int64_t weight = 0;
  std::int64_t level = 0;
};

// All of them: the highest level first, in each the greatest weight first, and then in the order of
// writing.
std::vector<PaidInstance> paid_instances(BodyEvaluator& evaluator, const StatementStore& store);

// The best answer set among those that do not pay for an instance.
struct Avoidance {
  SearchOutcome outcome = SearchOutcome::kCut;
  Costs costs;
  std::string answer;    // "{a, b}"
};

// Forbids the instance and solves once more, for any best answer set. Of the options it looks at
// what search_one() does. An interruption ends it. Throws Failure as that does.
Avoidance avoid(const StatementStore& store, GroundTerms& terms, const PaidInstance& instance,
                const Options& options);

}    // namespace dl
