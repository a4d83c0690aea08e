#include "dl/literal_text.h"

#include <string_view>

#include "dl/names.h"

namespace dl {
namespace {

constexpr std::string_view kGreatestInteger = "2147483647";
constexpr std::string_view kOperators[] = {"=", "!=", "<", ">", "<=", ">="};
constexpr Builtin kOpposites[] = {kUnequal, kEqual, kGreaterEqual, kLessEqual, kGreater, kLess};

template <typename... Parts>
void append(std::string& out, const Parts&... parts) {
  (out += ... += parts);
}

std::string_view operand(const OrderedBody& body, const Literal& literal, std::uint32_t position) {
  return body.statement.slice(body.statement.argument(literal, position).text);
}

// The term as an integer; what is none has no value then. See Note [hidden ranges].
std::string hidden(const Statement& statement, const Term& term) {
  const bool is_variable = term.kind == TermKind::kVariable;
  std::string text(is_variable ? "|" : "");
  text += statement.slice(term.text);
  if (is_variable) text += '|';
  return text;
}

std::string hidden(const OrderedBody& body, const Literal& literal, std::uint32_t position) {
  return hidden(body.statement, body.statement.argument(literal, position));
}

// Whether the operand may be written as the greatest integer.
bool may_be_greatest(const OrderedBody& body, const Literal& literal, std::uint32_t position) {
  const Term& term = body.statement.argument(literal, position);
  return term.kind == TermKind::kBound ||
         (term.kind == TermKind::kInteger && body.statement.slice(term.text) == kGreatestInteger);
}

void append_comparison(std::string& out, const OrderedBody& body, const Literal& literal) {
  const Builtin op = literal.negated ? kOpposites[literal.kind] : literal.kind;
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  if (may_be_greatest(body, literal, 0) || may_be_greatest(body, literal, 1)) {
    return append(out, "(", x, ",)", kOperators[op], "(", y, ",)");
  }
  append(out, x, kOperators[op], y);
}

// Nothing in the language is a negative integer, and whatever is no integer is greater than all of
// them.
void append_int(std::string& out, const OrderedBody& body, const Literal& literal, StepMode mode) {
  const std::string_view x = operand(body, literal, 0);
  if (mode == StepMode::kAssign) return append(out, x, "=0.._r");
  if (literal.negated) return append(out, x, ">_m");
  append(out, hidden(body, literal, 0), "<=_m");
}

void append_successor(std::string& out, const OrderedBody& body, const Literal& literal,
                      const Step& step) {
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  const bool computes_x = step.mode == StepMode::kAssign && step.target == 0;
  if (computes_x) return append(out, x, "=", y, "-1,0<", y, ",", hidden(body, literal, 1), "<=_m");
  append(out, y, "=", hidden(body, literal, 0), "+1,", x, "<_m");
}

// The operands that "+" and "*" compute with, a variable first where there is one: it is hidden.
struct Operands {
  std::string first;
  std::string_view second;
};

Operands operands_of(const OrderedBody& body, const Literal& literal) {
  const bool begins = body.statement.argument(literal, 0).kind == TermKind::kVariable;
  const std::uint32_t first = begins ? 0 : 1;
  return {hidden(body, literal, first), operand(body, literal, 1 - first)};
}

// See Note [no integer wraps].
void append_sum(std::string& out, const OrderedBody& body, const Literal& literal,
                const Step& step) {
  const std::string_view x = operand(body, literal, 0);
  const std::string_view y = operand(body, literal, 1);
  const std::string_view z = operand(body, literal, 2);
  if (step.mode == StepMode::kTest || step.target == 2) {
    const auto [first, second] = operands_of(body, literal);
    return append(out, z, "=", first, "+", second, ",", first, "<=_m-", second);
  }
  const std::string_view known = step.target == 0 ? y : x;
  append(out, step.target == 0 ? x : y, "=", z, "-", known, ",", known, "<=", z, ",",
         hidden(body, literal, 2), "<=_m");
}

// Every operand is an integer up to the bound: that is asked of each where the others do not tell.
// 0**Y is 1 for Y = 0 and 0 for all others, which keeps the divisor away from 0.
void append_product(std::string& out, const OrderedBody& body, const Literal& literal) {
  const auto [first, second] = operands_of(body, literal);
  append(out, operand(body, literal, 2), "=", first, "*", second, ",", first, "<=_m/(", second,
         "+0**", second, "),|", second, "|<=_m");
}

// The operands of a kFactor or kZero.
struct Factors {
  std::string_view wanted, known, product;
};

Factors factors_of(const OrderedBody& body, const Step& step) {
  const Literal& literal = body.literals[step.literal];
  return {operand(body, literal, step.target), operand(body, literal, 1 - step.target),
          operand(body, literal, 2)};
}

// Nothing is divided by 0: then the literal does not hold.
void append_factor(std::string& out, const OrderedBody& body, const Step& step) {
  const auto [wanted, known, product] = factors_of(body, step);
  const Literal& literal = body.literals[step.literal];
  append(out, product, "\\", known, "=0,", wanted, "=", product, "/", known, ",",
         hidden(body, literal, 2), "<=_m,", hidden(body, literal, 1 - step.target), "<=_m");
}

void append_zeros(std::string& out, const OrderedBody& body, const Step& step) {
  const auto [wanted, known, product] = factors_of(body, step);
  append(out, known, "=0,", product, "=0");
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

Element element_of(const Statement& statement, const Aggregate& aggregate,
                   std::string_view condition) {
  Element element;
  for (std::uint32_t i = aggregate.arguments.begin; i < aggregate.arguments.end; ++i) {
    append(element.terms, element.terms.empty() ? "" : ",",
           statement.term_text(statement.arguments[i]));
  }
  // clingo, too, would read the colon and the sign as one token.
  if (condition.starts_with('-')) element.condition = ' ';
  element.condition += condition;
  return element;
}

// Note [extrema of nothing]
// The minimum or maximum of an empty set does not exist, so no guard holds for it. clingo takes
// #sup and #inf instead; a second guard or comparison that those fail keeps them out.
void append_extremum(std::string& out, const OrderedBody& body, const Literal& literal,
                     const Element& element, StepMode mode) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
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

// "X-T,terms:condition", the differences of an average's values to a guard T.
std::string differences(const Statement& statement, const Aggregate& aggregate,
                        const Element& element, const Guard& guard) {
  std::string text(statement.term_text(statement.arguments[aggregate.arguments.begin]));
  append(text, "-", statement.term_text(guard.term), ",", element.terms, ":", element.condition);
  return text;
}

// The average compares with T as the sum of the differences to T compares with 0. There is none
// where no value is an integer. A guard T that is no integer is greater than every average, but all
// differences to it are missing: where that matters, what "T<=2147483647" says is counted, too.
void append_average(std::string& out, const OrderedBody& body, const Aggregate& aggregate,
                    const Element& element) {
  const Statement& statement = body.statement;
  const std::string left = differences(statement, aggregate, element, aggregate.left);
  const std::string guard = hidden(statement, statement.terms[aggregate.left.term]);
  if (aggregate.left.op == kGreater) {
    append(out, "1>#sum{1:", guard, "<=2147483647;", left, "}");
  } else {
    append(out, "0", kOperators[aggregate.left.op], "#sum{", left, "}");
    if (aggregate.left.op != kGreaterEqual) append(out, ",", guard, "<=2147483647");
  }
  if (aggregate.right.given) {
    const std::string right = differences(statement, aggregate, element, aggregate.right);
    const bool is_strict = aggregate.right.op == kLess;
    append(out, ",#sum{");
    if (is_strict)
      append(out, "1:", hidden(statement, statement.terms[aggregate.right.term]), "<=2147483647;");
    append(out, right, "}", is_strict ? "<1" : "<=0");
  }
  const Term& first = statement.terms[statement.arguments[aggregate.arguments.begin]];
  append(out, ",0<#count{", element.terms, ":", element.condition, ",", hidden(statement, first),
         "<=2147483647}");
}

void append_aggregate(std::string& out, const OrderedBody& body, const Literal& literal,
                      StepMode mode, std::string_view condition) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  const Element element = element_of(body.statement, aggregate, condition);
  if (literal.negated) out += "not ";
  if (aggregate.function == kAverage) return append_average(out, body, aggregate, element);
  if (aggregate.function == kMin || aggregate.function == kMax) {
    return append_extremum(out, body, literal, element, mode);
  }
  append(out, body.statement.term_text(aggregate.left.term), kOperators[aggregate.left.op],
         aggregate.function == kCount ? "#count{" : "#sum{", element.terms, ":", element.condition,
         "}");
  if (aggregate.right.given) {
    append(out, kOperators[aggregate.right.op], body.statement.term_text(aggregate.right.term));
  }
}

// Only a sum or product whose result is computed can leave 32 bits.
std::string arithmetic_overflow(const OrderedBody& body, const Literal& literal, const Step& step) {
  std::string text;
  const bool computes_result =
      step.mode == StepMode::kTest || (step.mode == StepMode::kAssign && step.target == 2);
  if (!computes_result || (literal.kind != kSum && literal.kind != kProduct)) return text;
  const auto [first, second] = operands_of(body, literal);
  append(text, "1=_o,", first, ">2147483647");
  if (literal.kind == kSum) {
    append(text, "-", second);
  } else {
    append(text, "/(", second, "+0**", second, ")");
  }
  return text;
}

// See Note [sums that could wrap]. Differences are negative, too; clasp adds up what they are
// without their sign.
std::string sum_fault(const OrderedBody& body, const Literal& literal, std::string_view condition) {
  const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
  const Element element = element_of(body.statement, aggregate, condition);
  std::string text;
  if (aggregate.function == kSumUp) {
    append(text, "2147483647<=#sum{1,_x:_u;", element.terms, ":", element.condition, "}");
  } else if (aggregate.function == kAverage) {
    append(text, "2147483647<=#sum{1,_x:_u");
    for (const Guard* guard : {&aggregate.left, &aggregate.right}) {
      if (!guard->given) continue;
      const std::string_view first =
          body.statement.term_text(body.statement.arguments[aggregate.arguments.begin]);
      append(text, ";|", first, "-", body.statement.term_text(guard->term), "|,",
             guard == &aggregate.left ? "0," : "1,", element.terms, ":", element.condition);
    }
    text += '}';
  }
  return text;
}

}    // namespace

void append_step(std::string& out, const OrderedBody& body, const Step& step,
                 std::string_view condition) {
  const Literal& literal = body.literals[step.literal];
  if (step.mode == StepMode::kRange) {
    return append(out, body.statement.slice(body.statement.variables[step.target]), "=0.._r");
  }
  if (step.mode == StepMode::kFactor) return append_factor(out, body, step);
  if (step.mode == StepMode::kZero) return append_zeros(out, body, step);
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
      return append_product(out, body, literal);
    case kFunctionTerm:
      return append_function(out, body, literal);
    case kAggregate:
      return append_aggregate(out, body, literal, step.mode, condition);
    default:
      return append_comparison(out, body, literal);
  }
}

std::string fault_of(const OrderedBody& body, const Step& step, std::string_view condition) {
  if (step.mode != StepMode::kTest && step.mode != StepMode::kAssign) return {};
  const Literal& literal = body.literals[step.literal];
  return literal.kind == kAggregate ? sum_fault(body, literal, condition)
                                    : arithmetic_overflow(body, literal, step);
}

bool has_other_ways(const OrderedBody& body, const Step& step) {
  if (step.mode != StepMode::kFactor) return false;
  const Literal& literal = body.literals[step.literal];
  const Term& known = body.statement.argument(literal, 1 - step.target);
  if (known.kind == TermKind::kInteger && body.statement.slice(known.text) != "0") return false;
  return body.integers == IntegerBound::kGiven || step.others.size() != 0;
}

void append_open_factor(std::string& out, const OrderedBody& body, const Step& step) {
  append_zeros(out, body, step);
  append(out, ",", factors_of(body, step).wanted, "=0.._r");
}

void append_factor_test(std::string& out, const OrderedBody& body, const Step& step) {
  append(out, hidden(body, body.literals[step.literal], step.target), "<=_m");
}

}    // namespace dl
