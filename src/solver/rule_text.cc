#include "solver/rule_text.h"

#include <algorithm>
#include <utility>

namespace dl {
namespace {

// Where clingo's quadratic time begins to show, and the length of a piece; both measured.
constexpr std::size_t kLongBody = 200;
constexpr std::size_t kPiece = 8;

}    // namespace

std::string helper_atom(const Statement& statement, std::string name,
                        std::span<const VariableId> variables) {
  char separator = '(';
  for (const VariableId variable : variables) {
    if (variable == kUnnamed) continue;
    name += std::exchange(separator, ',');
    name += statement.slice(statement.variables[variable]);
  }
  if (separator == ',') name += ')';
  return name;
}

std::string unsafe_message(std::string_view variable) {
  std::string text = "unsafe rule: no positive literal of the body binds the variable ";
  text += variable;
  return text;
}

// Cuts one ordered body. See Note [long bodies].
class RuleWriter::Pieces {
 public:
  Pieces(const OrderedBody& body, const std::vector<Step>& steps, const std::vector<char>& kept)
      : body_(body), carried_(body.bound.size(), 0), last_use_(body.bound.size(), 0) {
    for (std::uint32_t i = 0; i < steps.size(); ++i) {
      each_variable(steps[i], [&](VariableId variable) { last_use_[variable] = i; });
    }
    for (std::size_t variable = 0; variable < kept.size(); ++variable) {
      if (kept[variable]) last_use_[variable] = static_cast<std::uint32_t>(steps.size());
    }
  }

  void note(const Step& step) {
    each_variable(step, [&](VariableId variable) {
      if (std::exchange(carried_[variable], 1) == 0) live_.push_back(variable);
    });
  }

  // The helper atom after step `position`: its arguments are what later steps use.
  std::string helper(std::uint32_t number, std::uint32_t position) {
    std::erase_if(live_, [&](VariableId variable) { return last_use_[variable] <= position; });
    return helper_atom(body_.statement, "_h" + std::to_string(number), live_);
  }

 private:
  // Variables local to an aggregate are no business of the body.
  template <typename Visit>
  void each_variable(const Step& step, Visit&& visit) const {
    const auto each = [&](Slice uses) {
      for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
        const VariableId variable = body_.statement.uses[i];
        if (variable != kUnnamed && body_.outer[variable]) visit(variable);
      }
    };
    if (step.mode == StepMode::kRange) return visit(step.target);
    const Literal& literal = body_.literals[step.literal];
    each(literal.uses);
    if (literal.kind == kAggregate) each(body_.statement.aggregates[literal.aggregate].uses);
  }

  const OrderedBody& body_;
  std::vector<char> carried_;
  std::vector<std::uint32_t> last_use_;
  std::vector<VariableId> live_;
};

std::string RuleWriter::prepare(const Statement& statement, Place place,
                                const std::vector<char>& kept) {
  ranging_ = {};
  body_.clear();
  if (statement.atoms_only && statement.body.size() <= kLongBody)
    return prepare_atoms(statement, kept);
  const std::vector<char> outer = outer_variables(statement);
  BodyOrder order(statement, outer);
  if (!order.order(statement.body, std::vector<char>(outer.size(), 0))) {
    return unsafe_message(order.unbound_variable());
  }
  for (std::size_t variable = 0; variable < kept.size(); ++variable) {
    if (kept[variable] && !order.bound()[variable]) {
      return unsafe_message(statement.spelling(static_cast<VariableId>(variable)));
    }
  }
  write_steps({statement, statement.body, outer, order.bound()}, order.steps(), kept, place);
  return {};
}

void RuleWriter::write_steps(const OrderedBody& body, const std::vector<Step>& steps,
                             const std::vector<char>& kept, Place place) {
  const bool is_long = steps.size() > kLongBody;
  Pieces pieces(body, steps, kept);
  for (std::uint32_t i = 0; i < steps.size(); ++i) {
    if (ranging_.empty()) ranging_ = dl::ranging_variable(body, steps[i]);
    write_overflows(body, steps[i], place);
    if (!body_.empty()) body_ += ',';
    append_step(body_, body, steps[i]);
    if (!is_long) continue;
    pieces.note(steps[i]);
    if (i % kPiece == kPiece - 1) cut(body_, pieces.helper(++helpers_, i), place);
  }
}

// What has been collected becomes the body of the helper, which begins the next piece.
void RuleWriter::cut(std::string& body, std::string helper, Place place) {
  (((out_.text += helper) += ":-") += body) += '.';
  out_.end_line(place);
  body = std::move(helper);
}

// The usual rule: its literals are atoms, and their text is copied as it is.
std::string RuleWriter::prepare_atoms(const Statement& statement, const std::vector<char>& kept) {
  marks_.assign(statement.variables.size(), 0);
  for (const Literal& literal : statement.body) {
    if (literal.negated) continue;
    for (std::uint32_t i = literal.uses.begin; i < literal.uses.end; ++i) {
      if (statement.uses[i] != kUnnamed) marks_[statement.uses[i]] = 1;
    }
  }
  const auto unsafe = [&](std::size_t variable) {
    return unsafe_message(statement.spelling(static_cast<VariableId>(variable)));
  };
  for (const Literal& literal : statement.body) {
    if (!body_.empty()) body_ += ',';
    if (literal.negated) body_ += "not ";
    body_ += statement.term_text(literal.term);
    if (!literal.negated) continue;
    for (std::uint32_t i = literal.uses.begin; i < literal.uses.end; ++i) {
      const VariableId variable = statement.uses[i];
      if (variable != kUnnamed && !marks_[variable]) return unsafe(variable);
    }
  }
  for (std::size_t variable = 0; variable < kept.size(); ++variable) {
    if (kept[variable] && !marks_[variable]) return unsafe(variable);
  }
  return {};
}

// See Note [no integer wraps]: the same body up to the step, and the step's operands out of range.
void RuleWriter::write_overflows(const OrderedBody& body, const Step& step, Place place) {
  const Literal& literal = body.literals[step.literal];
  if (step.mode != StepMode::kRange && literal.kind == kAggregate) {
    write_inner_overflows(body, body.statement.aggregates[literal.aggregate], place);
  }
  write_overflow(body_, overflow_of(body, step), place);
}

// What stands before a step inside is cut like a long body, or the rules would repeat it
// quadratically. Each helper keeps the variables of the rule that it has seen: that they have the
// same values there and in the rule is what joins the two.
void RuleWriter::write_inner_overflows(const OrderedBody& body, const Aggregate& aggregate,
                                       Place place) {
  const auto computes = [](const Literal& literal) {
    return literal.kind == kSum || literal.kind == kProduct;
  };
  if (std::ranges::none_of(aggregate.body, computes)) return;
  BodyOrder order(body.statement, body.outer);
  order.order(aggregate.body, body.bound);
  const OrderedBody inside{body.statement, aggregate.body, body.outer, order.bound()};
  const std::vector<char> all(body.outer.size(), 1);
  const OrderedBody carried{body.statement, aggregate.body, all, order.bound()};
  const std::vector<Step>& steps = order.steps();
  Pieces pieces(carried, steps, body.outer);
  const std::string outside = body_.empty() ? body_ : body_ + ',';
  std::string before = outside;
  for (std::uint32_t i = 0; i < steps.size(); ++i) {
    write_overflow(before, overflow_of(inside, steps[i]), place);
    append_step(before, inside, steps[i]);
    pieces.note(steps[i]);
    if (steps.size() > kLongBody && i % kPiece == kPiece - 1) {
      cut(before, pieces.helper(++helpers_, i), place);
      before.insert(0, outside);
    }
    before += ',';
  }
}

// `before` ends with its comma, or lacks it as a body does.
void RuleWriter::write_overflow(const std::string& before, const std::string& overflow,
                                Place place) {
  if (overflow.empty()) return;
  out_.text += "_overflow(" + std::to_string(overflow_places_.size()) + "):-" + before;
  if (!before.empty() && before.back() != ',') out_.text += ',';
  (out_.text += overflow) += '.';
  out_.end_line(place);
  overflow_places_.push_back(place);
}

}    // namespace dl
