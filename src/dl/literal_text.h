#pragma once
// literal_text.h - a literal of the body as clingo reads it.

#include <string>
#include <string_view>
#include <vector>

#include "dl/body_order.h"
#include "dl/statement.h"

namespace dl {

// Note [no integer wraps]
// clingo computes with 32 bits and wraps without a word. All integers of the language lie between 0
// and the bound, so every result is computed together with a comparison of its operands that cannot
// itself leave 32 bits: X <= _m-Y for a sum and X <= _m/Y for a product, where _m is the bound, or
// 2147483647 without one. Without a bound a second rule derives _fault where that comparison
// fails, and dl ends with an error instead of an answer.
//
// Note [hidden ranges]
// From linear comparisons clingo 5.5 and later compute bounds of variables, and where both are
// known it may walk over all integers between them. That never ends if the upper one is 2147483647.
// So no comparison of ours tells an upper bound: |X| is not linear, and has no value where X is no
// integer. One of the program with 2147483647 compares tuples of one term.
//
// Note [sums that could wrap]
// The values of a #sum are added up in 32 bits, too, and what is possible counts, not only what
// holds: where all open values together are 2147483647, clingo reads guards wrongly in every answer
// set. So each sum is watched by _fault(K):-2147483647<=#sum{...;1,_x:_u}, which clingo drops while
// it grounds if so much is out of reach. Else, as _u is an external atom that is never true but
// keeps the sum open, the weights are more than clasp takes, and it gives up before it solves. Then
// the program is grounded once more to see which _fault is left. If already the facts are too much,
// _fault holds.

// The body that a step belongs to, and what has been bound when the whole body is ordered.
struct OrderedBody {
  const Statement& statement;
  const std::vector<Literal>& literals;
  const std::vector<char>& outer;
  const std::vector<char>& bound;
  IntegerBound integers;
};

// Appends the literals that the step stands for, without a separator at either end. `condition` is
// the body of an aggregate as clingo reads it.
void append_step(std::string& out, const OrderedBody& body, const Step& step,
                 std::string_view condition = {});

// The literals that hold when what the step computes leaves 32 bits or cannot be trusted, without
// what stands before the step; empty when that cannot be. What is computed inside an aggregate is
// asked for by its own steps.
std::string fault_of(const OrderedBody& body, const Step& step, std::string_view condition = {});

// Whether the step, a kFactor, is one way of several to its factor: see Note [open factors].
bool has_other_ways(const OrderedBody& body, const Step& step);

// The literals with which a kFactor lets its factor range over all integers up to the bound.
void append_open_factor(std::string& out, const OrderedBody& body, const Step& step);

// The literal that holds if the factor that another way gave is an integer.
void append_factor_test(std::string& out, const OrderedBody& body, const Step& step);

}    // namespace dl
