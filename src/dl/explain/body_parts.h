#pragma once
// body_parts.h - how the literals of a body hang together by variables that have no value yet.

#include <cstdint>
#include <span>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

using LiteralNumber = std::uint32_t;    // an index in StoredStatement::body

// Literals that share open variables, directly or through each other. Which values the variables of
// one part have is nothing to the other parts.
struct BodyPart {
  std::vector<LiteralNumber> literals;
  std::vector<VariableId> variables;    // the open ones, each once
  bool floats = true;    // has open variables, and no literal has a variable with a value
};

// An order in which literals can be evaluated.
struct SafeOrder {
  std::vector<LiteralNumber> literals;
  bool ranges = false;    // operands that nothing binds range over the integers
};

class BodyParts {
 public:
  // Open are the outer variables to which `start` gives no value. The statement must outlive this.
  BodyParts(const StoredStatement& statement, const Binding& start);

  // Each open variable of the literal once.
  std::span<const VariableId> open_variables(LiteralNumber literal) const;
  // In the order of their first literals, which keep their order.
  std::vector<BodyPart> split(std::span<const LiteralNumber> literals);
  // Tests and what computes a value as soon as it can be, then atoms that share a variable with what
  // stands before, else as written.
  SafeOrder safe_order(const BodyPart& part);

 private:
  class Order;
  void add_variables(const StoredLiteral& item, const Binding& start);

  const StoredStatement& statement_;
  std::vector<std::uint32_t> begin_;    // by literal: of its variables
  std::vector<VariableId> variables_;
  std::vector<char> is_anchored_;         // by literal: has a variable with a value
  std::vector<std::uint32_t> numbers_;    // by variable, in what is being looked at
};

}    // namespace dl
