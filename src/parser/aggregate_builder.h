#pragma once
// aggregate_builder.h - what the grammar's actions on aggregates call.

#include <deque>

#include "model/clause.h"
#include "parser/term_builder.h"

namespace zarel {

class AggregateBuilder {
 public:
  AggregateBuilder(TermBuilder& terms, WrittenTree& tree) : terms_(terms), tree_(tree) {}

  // The aggregate without a guard; valid until clear().
  const AGGREGATEPREDT* bare(AggregateFunction function, TermsMark variables, Body* body);

  // With a guard to its left, to its right, or on both sides.
  ATOMT left_guarded(const TERMT& guard, BUILTIN comparison, const AGGREGATEPREDT* aggregate);
  ATOMT right_guarded(const AGGREGATEPREDT* aggregate, BUILTIN comparison, const TERMT& guard);
  ATOMT left_equal(const TERMT& guard, const AGGREGATEPREDT* aggregate);
  ATOMT right_equal(const AGGREGATEPREDT* aggregate, const TERMT& guard);
  ATOMT between(const TERMT& lower, BUILTIN lower_comparison, const AGGREGATEPREDT* aggregate,
                BUILTIN upper_comparison, const TERMT& upper);

  void clear() {
    if (!made_.empty()) drop();    // most statements have none
  }

 private:
  void drop();

  TermBuilder& terms_;
  WrittenTree& tree_;
  std::deque<AGGREGATEPREDT> made_;    // a deque: addresses stay put
};

}    // namespace zarel
