#pragma once
// paid_costs.h - what an answer set pays for, and what not paying for it would cost.

#include <cstdint>
#include <optional>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/single_search.h"

namespace dl {

// An instance of a weak constraint that the answer set violates.
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

// Forbids the instance and solves once more. `bound`, `seed` and the like are those of the options.
Avoidance avoid(const StatementStore& store, GroundTerms& terms, const PaidInstance& instance,
                const Options& options);

}    // namespace dl
