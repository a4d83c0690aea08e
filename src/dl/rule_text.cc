#include "dl/rule_text.h"

#include <algorithm>
#include <utility>

namespace dl {
namespace {

// Where clingo's quadratic time begins to show, and the length of a piece; both measured.
constexpr std::size_t kLongBody = 200;
constexpr std::size_t kPiece = 8;

// The marks, and the variables of the aggregate's terms among them.
std::vector<char> with_terms(const Statement& statement, const Aggregate& aggregate,
                             std::vector<char> marks) {
  for (std::uint32_t i = aggregate.arguments.begin; i < aggregate.arguments.end; ++i) {
    for (const Use& use : statement.uses_of(statement.terms[statement.arguments[i]])) {
      if (use.variable != kUnnamed) marks[use.variable] = 1;
    }
  }
  return marks;
}

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

Mistake unsafe_mistake(std::string_view variable, std::string_view at) {
  std::string text = "unsafe rule: no positive literal of the body binds the variable ";
  text += variable;
  return {zarel::Code::kUnsafeRule, std::move(text), at, {}, 0, std::string(variable)};
}

Mistake unsafe_mistake(const Statement& statement, VariableId variable) {
  return unsafe_mistake(statement.spelling(variable), first_use(statement, variable));
}

std::string_view first_use(const Statement& statement, VariableId variable) {
  return statement.written_use(*std::ranges::find(statement.uses, variable, &Use::variable));
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
        const VariableId variable = body_.statement.uses[i].variable;
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

MaybeMistake RuleWriter::prepare(const Statement& statement, const StatementPlace& place,
                                 const std::vector<char>& kept) {
  ranging_ = kUnnamed;
  is_cut_ = false;
  place_ = place;
  body_.clear();
  if (statement.atoms_only && statement.body.size() <= kLongBody)
    return prepare_atoms(statement, kept);
  const std::vector<char> outer = outer_variables(statement);
  BodyOrder order(statement, outer, integers());
  const bool is_safe = order.order(statement.body, std::vector<char>(outer.size(), 0));
  if (order.is_tangled()) {
    return Mistake{
        zarel::Code::kTangledProducts,
        "too many products with an unknown factor depend on each other; #maxint or -N= helps",
        statement.written};
  }
  if (!is_safe) {
    return unsafe_mistake(order.unbound().name, statement.written_use(order.unbound().use));
  }
  for (VariableId variable = 0; variable < kept.size(); ++variable) {
    if (kept[variable] && !order.bound()[variable]) return unsafe_mistake(statement, variable);
  }
  write_steps({statement, statement.body, outer, order.bound(), integers()}, order, kept);
  return {};
}

IntegerBound RuleWriter::integers() const {
  return parts_.traits.has_bound ? IntegerBound::kGiven : IntegerBound::kNone;
}

void RuleWriter::write_steps(const OrderedBody& body, const BodyOrder& order,
                             const std::vector<char>& kept) {
  const std::vector<Step>& steps = order.steps();
  const bool is_long = steps.size() > kLongBody;
  Pieces pieces(body, steps, kept);
  for (std::uint32_t i = 0; i < steps.size(); ++i) {
    pieces.note(steps[i]);
    if (has_other_ways(body, steps[i])) {
      std::string helper = pieces.helper(++helpers_, i);
      write_ways(body_, body, order, steps[i], helper);
      body_ = std::move(helper);
      continue;
    }
    add_step(body_, body, steps[i]);
    if (is_long && i % kPiece == kPiece - 1) cut(body_, pieces.helper(++helpers_, i));
  }
}

// Appends the step to the text of a body, and writes the rules that watch its integers.
void RuleWriter::add_step(std::string& text, const OrderedBody& body, const Step& step) {
  const Literal& literal = body.literals[step.literal];
  std::string condition;
  FaultKind kind = FaultKind::kOverflow;
  const FileRange range = place_.range;
  note_range(step);
  if (step.mode != StepMode::kRange && literal.kind == kAggregate) {
    const Aggregate& aggregate = body.statement.aggregates[literal.aggregate];
    kind = FaultKind::kSum;
    place_.range.range = aggregate.range;
    const std::uint32_t helpers = helpers_;
    condition = write_inside(text, body, aggregate);
    // A helper in it need not have all variables, and was not worth a count.
    if (helpers == helpers_) count_elements(text, body.statement, aggregate, condition);
  }
  write_fault(kind, text, fault_of(body, step, condition), place_);
  place_.range = range;
  if (!text.empty()) text += ',';
  append_step(text, body, step, condition);
}

void RuleWriter::note_range(const Step& step) {
  if (step.mode == StepMode::kRange && ranging_ == kUnnamed) ranging_ = step.target;
}

// Each way to a factor is a rule of the helper, which goes on for all of them.
void RuleWriter::write_ways(const std::string& before, const OrderedBody& body,
                            const BodyOrder& order, const Step& step, const std::string& helper) {
  std::string text = before;
  add_step(text, body, step);
  cut(text, helper);
  if (body.integers == IntegerBound::kGiven) {
    text = before;
    if (!text.empty()) text += ',';
    append_open_factor(text, body, step);
    cut(text, helper);
  }
  for (std::uint32_t i = step.others.begin; i < step.others.end; ++i) {
    text = before;
    for (const Step& other : order.others()[i]) add_step(text, body, other);
    text += ',';
    append_factor_test(text, body, step);
    cut(text, helper);
  }
}

// What has been collected becomes the body of the helper, which begins the next piece.
void RuleWriter::cut(std::string& body, std::string helper) {
  is_cut_ = true;
  (((out_.text += helper) += ":-") += body) += '.';
  out_.end_line(place_.location);
  body = std::move(helper);
}

// The usual rule: its literals are atoms, and their text is copied as it is.
MaybeMistake RuleWriter::prepare_atoms(const Statement& statement, const std::vector<char>& kept) {
  marks_.assign(statement.variables.size(), 0);
  for (const Literal& literal : statement.body) {
    if (literal.negated) continue;
    for (std::uint32_t i = literal.uses.begin; i < literal.uses.end; ++i) {
      const VariableId variable = statement.uses[i].variable;
      if (variable != kUnnamed) marks_[variable] = 1;
    }
  }
  for (const Literal& literal : statement.body) {
    if (!body_.empty()) body_ += ',';
    if (literal.negated) body_ += "not ";
    body_ += statement.term_text(literal.term);
    if (!literal.negated) continue;
    for (std::uint32_t i = literal.uses.begin; i < literal.uses.end; ++i) {
      const auto [variable, offset] = statement.uses[i];
      if (variable == kUnnamed || marks_[variable]) continue;
      return unsafe_mistake(statement.spelling(variable), statement.written_use(statement.uses[i]));
    }
  }
  for (VariableId variable = 0; variable < kept.size(); ++variable) {
    if (kept[variable] && !marks_[variable]) return unsafe_mistake(statement, variable);
  }
  return {};
}

// The body of an aggregate, and rules that watch its integers. What stands before a step inside is
// cut like a long body, or these rules would repeat it quadratically. Each helper keeps the
// variables of the rule that it has seen: that they have the same values there and in the rule is
// what joins the two. Where a factor has several ways, a helper takes the place of all up to it in
// the aggregate, too.
std::string RuleWriter::write_inside(const std::string& before, const OrderedBody& body,
                                     const Aggregate& aggregate) {
  const Statement& statement = body.statement;
  BodyOrder order(statement, body.outer, body.integers);
  order.order(aggregate.body, body.bound);
  const std::vector<Step>& steps = order.steps();
  const OrderedBody inside{statement, aggregate.body, body.outer, order.bound(), body.integers};
  const std::vector<char> all(body.outer.size(), 1);
  const OrderedBody carried{statement, aggregate.body, all, order.bound(), body.integers};
  const bool has_ways =
      std::ranges::any_of(steps, [&](const Step& step) { return has_other_ways(inside, step); });
  Pieces pieces(carried, steps,
                has_ways ? with_terms(statement, aggregate, body.outer) : body.outer);
  const auto computes = [](const Literal& literal) {
    return literal.kind == kSum || literal.kind == kProduct;
  };
  const bool is_watched = std::ranges::any_of(aggregate.body, computes);
  const std::string outside = before.empty() ? before : before + ',';
  std::string watched = before;
  std::string condition;
  for (std::uint32_t i = 0; i < steps.size(); ++i) {
    pieces.note(steps[i]);
    if (has_other_ways(inside, steps[i])) {
      condition = pieces.helper(++helpers_, i);
      write_ways(watched, inside, order, steps[i], condition);
      watched = outside + condition;
      continue;
    }
    note_range(steps[i]);
    if (is_watched) add_step(watched, inside, steps[i]);
    if (!condition.empty()) condition += ',';
    append_step(condition, inside, steps[i]);
    if (is_watched && steps.size() > kLongBody && i % kPiece == kPiece - 1) {
      cut(watched, pieces.helper(++helpers_, i));
      watched.insert(0, outside);
    }
  }
  return condition;
}

void RuleWriter::count(const Statement& statement, const std::vector<char>& variables,
                       const std::string& body) {
  out_.text += "_i(" + std::to_string(parts_.counted.size());
  for (VariableId variable = 0; variable < variables.size(); ++variable) {
    if (variables[variable]) (out_.text += ',') += statement.slice(statement.variables[variable]);
  }
  ((out_.text += "):-") += body) += '.';
  out_.end_line(place_.location);
  parts_.counted.push_back(place_.location);
}

// A body that was cut has the variables alone that the rule still needs.
void RuleWriter::count_body(const Statement& statement, const std::vector<char>& kept) {
  if (counts_) count(statement, is_cut_ ? kept : outer_variables(statement), body_);
}

// clingo keeps the elements by the variables that the aggregate uses.
void RuleWriter::count_elements(const std::string& before, const Statement& statement,
                                const Aggregate& aggregate, const std::string& condition) {
  if (!counts_) return;
  std::vector<char> variables(statement.variables.size(), 0);
  for (std::uint32_t i = aggregate.uses.begin; i < aggregate.uses.end; ++i) {
    const VariableId variable = statement.uses[i].variable;
    if (variable != kUnnamed) variables[variable] = 1;
  }
  count(statement, variables, before.empty() ? condition : before + ',' + condition);
}

void RuleWriter::write_fault(FaultKind kind, const std::string& before, std::string_view what,
                             const StatementPlace& place) {
  if (what.empty()) return;
  out_.text += "_fault(" + std::to_string(parts_.faults.size()) + "):-" + before;
  if (!before.empty()) out_.text += ',';
  (out_.text += what) += '.';
  out_.end_line(place.location);
  parts_.faults.push_back({kind, place.range, place.location.line});
}

}    // namespace dl
