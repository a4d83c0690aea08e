#include "parser/aggregate_builder.h"

#include "functions/function_terms.h"

namespace zarel {
namespace {

bool is_inclusive(BUILTIN comparison) {
  return comparison == BUILTIN::kLessOrEqual || comparison == BUILTIN::kGreaterOrEqual;
}

bool is_less(BUILTIN comparison) {
  return comparison == BUILTIN::kLess || comparison == BUILTIN::kLessOrEqual;
}

}    // namespace

const AGGREGATEPREDT* AggregateBuilder::bare(AggregateFunction function, TermsMark variables,
                                             Body* body) {
  AGGREGATEPREDT bare{};
  bare.function = function;
  bare.terms = program_storage().store(terms_.take(variables));
  if (tree_.is_open()) {
    tree_.end_body();
    tree_.node(WrittenKind::kAggregate, bare.terms.size() + 1,
               static_cast<std::uint32_t>(function));
  }
  rewriteFunctionsInBody(*body);
  bare.body = store(*body);
  return &made_.emplace_back(bare);
}

void AggregateBuilder::drop() {
  made_.clear();
}

// A guard to the left with ">" or ">=" also gets the lower bound 0; its mirror image to the right
// does not.
ATOMT AggregateBuilder::left_guarded(const TERMT& guard, BUILTIN comparison,
                                     const AGGREGATEPREDT* aggregate) {
  if (tree_.is_open()) tree_.guarded(1, comparison, comparison);
  const auto written = standardizeGuard(guard, is_inclusive(comparison));
  if (is_less(comparison)) {
    return newAggregate(written, standardizeGuard(TERMT::integer(2147483647), false), *aggregate,
                        true, false, false);
  }
  return newAggregate(standardizeGuard(TERMT::integer(0), true), written, *aggregate, true, true,
                      false);
}

ATOMT AggregateBuilder::right_guarded(const AGGREGATEPREDT* aggregate, BUILTIN comparison,
                                      const TERMT& guard) {
  if (tree_.is_open()) tree_.guarded(1, comparison, comparison);
  const auto written = standardizeGuard(guard, is_inclusive(comparison));
  if (is_less(comparison)) {
    return newAggregate(standardizeGuard(TERMT::integer(0), false), written, *aggregate, false,
                        true, false);
  }
  return newAggregate(written, standardizeGuard(TERMT::integer(0), true), *aggregate, true, false,
                      false);
}

ATOMT AggregateBuilder::left_equal(const TERMT& guard, const AGGREGATEPREDT* aggregate) {
  if (tree_.is_open()) tree_.guarded(1, BUILTIN::kEqual, BUILTIN::kEqual);
  return newAggregate(standardizeGuard(guard, true), standardizeGuard(guard, false), *aggregate,
                      true, false, true);
}

ATOMT AggregateBuilder::right_equal(const AGGREGATEPREDT* aggregate, const TERMT& guard) {
  if (tree_.is_open()) tree_.guarded(1, BUILTIN::kEqual, BUILTIN::kEqual);
  return newAggregate(standardizeGuard(guard, false), standardizeGuard(guard, true), *aggregate,
                      false, true, true);
}

ATOMT AggregateBuilder::between(const TERMT& lower, BUILTIN lower_comparison,
                                const AGGREGATEPREDT* aggregate, BUILTIN upper_comparison,
                                const TERMT& upper) {
  if (tree_.is_open()) tree_.guarded(2, lower_comparison, upper_comparison);
  return newAggregate(standardizeGuard(lower, is_inclusive(lower_comparison)),
                      standardizeGuard(upper, is_inclusive(upper_comparison)), *aggregate, true,
                      true, false);
}

}    // namespace zarel
