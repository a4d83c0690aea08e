#include "solver/literal_text.h"

#include <string_view>

#include "solver/names.h"

namespace dl {
namespace {

constexpr std::string_view kOperators[] = {"=", "!=", "<", ">", "<=", ">="};
constexpr Builtin kOpposites[] = {kUnequal, kEqual, kGreaterEqual, kLessEqual, kGreater, kLess};

template <typename... Parts>
void append(std::string& out, const Parts&... parts) {
  (out += ... += parts);
}

std::string_view operand(const OrderedBody& body, const Literal& literal, std::uint32_t position) {
  return body.statement.slice(body.statement.argument(literal, position).text);
}

void append_comparison(std::string& out, const OrderedBody& body, const Literal& literal) {
  const Builtin op = literal.negated ? kOpposites[literal.kind] : literal.kind;
  append(out, operand(body, literal, 0), kOperators[op], operand(body, literal, 1));
}

// Nothing in the language is a negative integer, and whatever is no integer is greater than all of
// them.
void append_int(std::string& out, const OrderedBody& body, const Literal& literal, StepMode mode) {
  const std::string_view x = operand(body, literal, 0);
  if (mode == StepMode::kAssign) return append(out, x, "=0.._r");
  append(out, x, literal.negated ? ">_m" : "<=_m");
}

void append_successor(std::string& out, const OrderedBody& body, const Literal& literal,
                      const Step& step) {
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  const bool computes_x = step.mode == StepMode::kAssign && step.target == 0;
  if (computes_x) return append(out, x, "=", y, "-1,0<", y, ",", y, "<=_m");
  append(out, y, "=", x, "+1,", x, "<_m");
}

// See Note [no integer wraps].
void append_sum(std::string& out, const OrderedBody& body, const Literal& literal,
                const Step& step) {
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  const std::string_view z = operand(body, literal, 2);
  if (step.mode == StepMode::kTest || step.target == 2) {
    return append(out, z, "=", x, "+", y, ",", x, "<=_m-", y);
  }
  const std::string_view known = step.target == 0 ? y : x;
  append(out, step.target == 0 ? x : y, "=", z, "-", known, ",", known, "<=", z, ",", z, "<=_m");
}

// 0**X is 1 for X = 0 and 0 for all others, which keeps divisors away from 0 and tells the two
// cases apart: a factor of 0 leaves the other open.
void append_product(std::string& out, const OrderedBody& body, const Literal& literal,
                    const Step& step) {
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  const std::string_view z = operand(body, literal, 2);
  if (step.mode == StepMode::kAssign && step.target != 2) {
    const std::string_view known = step.target == 0 ? y : x;
    const std::string_view wanted = step.target == 0 ? x : y;
    std::string quotient;
    append(quotient, "(1-0**", known, ")*(", z, "/(", known, "+0**", known, "))");
    append(out, wanted, "=", quotient, "..", quotient, "+0**", known, "*_r,");
  }
  append(out, z, "=", x, "*", y, ",", x, "<=_m/(", y, "+0**", y, ")");
}

void append_function(std::string& out, const OrderedBody& body, const Literal& literal) {
  append(out, operand(body, literal, 0), "=", operand(body, literal, 1));
  for (std::uint32_t i = 2; i < literal.arguments.size(); ++i) {
    append(out, i == 2 ? "(" : ",", operand(body, literal, i));
  }
  if (literal.arguments.size() > 2) out += ')';
}

// An aggregate's "terms:condition" in parts, since #avg writes them in several forms.
struct Element {
  std::string terms;
  std::string condition;
};

Element element_of(const OrderedBody& body, const Aggregate& aggregate) {
  const Statement& statement = body.statement;
  Element element;
  for (std::uint32_t i = aggregate.arguments.begin; i < aggregate.arguments.end; ++i) {
    append(element.terms, element.terms.empty() ? "" : ",",
           statement.term_text(statement.arguments[i]));
  }
  BodyOrder order(statement, body.outer);
  order.order(aggregate.body, body.bound);
  const OrderedBody inside{statement, aggregate.body, body.outer, order.bound()};
  for (const Step& step : order.steps()) {
    if (!element.condition.empty()) element.condition += ',';
    append_step(element.condition, inside, step);
  }
  // clingo, too, would read the colon and the sign as one token.
  if (element.condition.starts_with('-')) element.condition.insert(0, 1, ' ');
  return element;
}

// Note [extrema of nothing]
// The minimum or maximum of an empty set does not exist, so no guard holds for it. clingo takes
// #sup and #inf instead; a second guard or comparison that those fail keeps them out.
void append_extremum(std::string& out, const OrderedBody& body, const Literal& literal,
                     StepMode mode) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  const Element element = element_of(body, aggregate);
  const bool is_min = aggregate.function == kMin;
  const std::string_view guard = body.statement.term_text(aggregate.left.term);
  const bool ascends = aggregate.left.op == kLess || aggregate.left.op == kLessEqual;
  if (!is_min && (aggregate.left.op == kGreater || aggregate.left.op == kGreaterEqual)) {
    const std::string_view op = aggregate.left.op == kGreater ? "<" : "<=";
    return append(out, "#inf<#max{", element.terms, ":", element.condition, "}", op, guard);
  }
  append(out, guard, kOperators[aggregate.left.op], is_min ? "#min{" : "#max{", element.terms, ":",
         element.condition, "}");
  if (aggregate.right.given) {
    append(out, kOperators[aggregate.right.op], body.statement.term_text(aggregate.right.term));
  } else if (is_min && ascends) {
    out += "<#sup";
  } else if (mode == StepMode::kAssign) {
    append(out, ",", guard, is_min ? "<#sup" : ">#inf");
  }
}

// The average compares with T as the sum of the differences to T compares with 0; of an empty set
// there is none.
void append_average(std::string& out, const OrderedBody& body, const Literal& literal) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  const Element element = element_of(body, aggregate);
  const std::string_view first =
      body.statement.term_text(body.statement.arguments[aggregate.arguments.begin]);
  append(out, "0", kOperators[aggregate.left.op], "#sum{", first, "-",
         body.statement.term_text(aggregate.left.term), ",", element.terms, ":", element.condition,
         "}");
  if (aggregate.right.given) {
    append(out, ",#sum{", first, "-", body.statement.term_text(aggregate.right.term), ",",
           element.terms, ":", element.condition, "}", kOperators[aggregate.right.op], "0");
  }
  append(out, ",0<#count{", element.terms, ":", element.condition, "}");
}

void append_aggregate(std::string& out, const OrderedBody& body, const Literal& literal,
                      StepMode mode) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  if (literal.negated) out += "not ";
  if (aggregate.function == kAverage) return append_average(out, body, literal);
  if (aggregate.function == kMin || aggregate.function == kMax) {
    return append_extremum(out, body, literal, mode);
  }
  const Element element = element_of(body, aggregate);
  append(out, body.statement.term_text(aggregate.left.term), kOperators[aggregate.left.op],
         aggregate.function == kCount ? "#count{" : "#sum{", element.terms, ":", element.condition,
         "}");
  if (aggregate.right.given) {
    append(out, kOperators[aggregate.right.op], body.statement.term_text(aggregate.right.term));
  }
}

// Only a sum or product whose result is computed can leave 32 bits. A text compares as greater than
// every integer, so the operand is first held against the greatest integer.
std::string arithmetic_overflow(const OrderedBody& body, const Literal& literal, const Step& step) {
  std::string text;
  const bool computes_result =
      step.mode == StepMode::kTest || (step.mode == StepMode::kAssign && step.target == 2);
  if (!computes_result || (literal.kind != kSum && literal.kind != kProduct)) return text;
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  append(text, "1=_o,", x, "<=2147483647,", x, ">2147483647");
  if (literal.kind == kSum) {
    append(text, "-", y);
  } else {
    append(text, "/(", y, "+0**", y, ")");
  }
  return text;
}

// clingo's comparisons of a sum are exact; a sum whose value is taken wraps when all it adds is
// known before the search. The element -1 makes the greatest integer itself a good sum.
std::string aggregate_overflow(const OrderedBody& body, const Literal& literal) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  std::string text;
  if (aggregate.function != kSumUp || aggregate.left.op != kEqual) return text;
  const Element element = element_of(body, aggregate);
  append(text, "2147483647<=#sum{-1;", element.terms, ":", element.condition, "}");
  return text;
}

}    // namespace

void append_step(std::string& out, const OrderedBody& body, const Step& step) {
  const Literal& literal = body.literals[step.literal];
  if (step.mode == StepMode::kRange) {
    return append(out, body.statement.slice(body.statement.variables[step.target]), "=0.._r");
  }
  switch (literal.kind) {
    case kAtom:
      if (literal.negated) out += "not ";
      out += body.statement.term_text(literal.term);
      return;
    case kInt:
      return append_int(out, body, literal, step.mode);
    case kSuccessor:
      return append_successor(out, body, literal, step);
    case kSum:
      return append_sum(out, body, literal, step);
    case kProduct:
      return append_product(out, body, literal, step);
    case kFunctionTerm:
      return append_function(out, body, literal);
    case kAggregate:
      return append_aggregate(out, body, literal, step.mode);
    default:
      return append_comparison(out, body, literal);
  }
}

std::string overflow_of(const OrderedBody& body, const Step& step) {
  if (step.mode == StepMode::kRange) return {};
  const Literal& literal = body.literals[step.literal];
  return literal.kind == kAggregate ? aggregate_overflow(body, literal)
                                    : arithmetic_overflow(body, literal, step);
}

std::string_view ranging_variable(const OrderedBody& body, const Step& step) {
  if (step.mode == StepMode::kRange) return body.statement.spelling(step.target);
  const Literal& literal = body.literals[step.literal];
  if (literal.kind != kAggregate) return {};
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  BodyOrder order(body.statement, body.outer);
  order.order(aggregate.body, body.bound);
  for (const Step& inner : order.steps()) {
    if (inner.mode == StepMode::kRange) return body.statement.spelling(inner.target);
  }
  return {};
}

}    // namespace dl
