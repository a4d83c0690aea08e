#pragma once
// literal_text.h - a literal of the body as clingo reads it.

#include <string>
#include <string_view>
#include <vector>

#include "solver/body_order.h"
#include "solver/statement.h"

namespace dl {

// Note [no integer wraps]
// clingo computes with 32 bits and wraps without a word. All integers of the language lie between 0
// and the bound, so every result is computed together with a comparison of its operands that cannot
// itself leave 32 bits: X <= _m-Y for a sum and X <= _m/Y for a product, where _m is the bound, or
// 2147483647 without one. Without a bound a second rule derives _overflow where that comparison
// fails, and dl ends with an error instead of an answer.

// The body that a step belongs to, and what has been bound when the whole body is ordered.
struct OrderedBody {
  const Statement& statement;
  const std::vector<Literal>& literals;
  const std::vector<char>& outer;
  const std::vector<char>& bound;
};

// Appends the literals that the step stands for, without a separator at either end.
void append_step(std::string& out, const OrderedBody& body, const Step& step);

// The literals that hold when what the step computes leaves 32 bits, without what stands before the
// step; empty when it cannot. What is computed inside an aggregate is asked for by its own steps.
std::string overflow_of(const OrderedBody& body, const Step& step);

// The variable that the step lets range over all integers up to the bound, inside an aggregate too;
// empty if none.
std::string_view ranging_variable(const OrderedBody& body, const Step& step);

}    // namespace dl
