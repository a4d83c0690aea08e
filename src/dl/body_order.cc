#include "dl/body_order.h"

#include <algorithm>
#include <utility>

namespace dl {
namespace {

// Shorter bodies keep the order in which they were written; in longer ones, which are cut,
// neighbours must share variables, or the pieces would multiply what clingo would have joined.
constexpr std::size_t kKeptOrder = 64;

void mark(const Statement& statement, Slice uses, std::vector<char>& marks) {
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
    const VariableId variable = statement.uses[i].variable;
    if (variable != kUnnamed) marks[variable] = 1;
  }
}

}    // namespace

std::vector<char> outer_variables(const Statement& statement) {
  std::vector<char> outer(statement.variables.size(), 0);
  for (const std::uint32_t head : statement.heads)
    mark(statement, statement.terms[head].uses, outer);
  for (const Literal& literal : statement.body) mark(statement, literal.uses, outer);
  return outer;
}

bool BodyOrder::order(const std::vector<Literal>& body, std::vector<char> bound) {
  body_ = &body;
  bound_ = std::move(bound);
  taken_.assign(body.size(), 0);
  left_ = body.size();
  watch_variables();
  const bool keeps_order = body.size() <= kKeptOrder;
  for (std::uint32_t i = 0; i < body.size(); ++i) {
    examine(i);
    if (!keeps_order) settle_certain();
  }
  settle();
  while (left_ != 0 && take_a_range()) settle();
  if (left_ == 0) return true;
  note_stuck();
  return false;
}

// Two passes over the uses: one counts, one fills. A literal with many uses of a variable waits for
// it once, else each of them would look at all of it again.
void BodyOrder::watch_variables() {
  std::vector<std::uint32_t> last_literal(statement_.variables.size());
  const auto each_use = [&](auto&& visit) {
    last_literal.assign(last_literal.size(), kUnnamed);
    for (std::uint32_t i = 0; i < body_->size(); ++i) {
      const Literal& literal = (*body_)[i];
      std::vector<Slice> parts{literal.uses};
      if (literal.kind == kAggregate)
        parts.push_back(statement_.aggregates[literal.aggregate].uses);
      for (const Slice part : parts) {
        for (std::uint32_t u = part.begin; u < part.end; ++u) {
          const VariableId variable = statement_.uses[u].variable;
          if (variable == kUnnamed || bound_[variable]) continue;
          if (std::exchange(last_literal[variable], i) != i) visit(variable, i);
        }
      }
    }
  };
  watch_begin_.assign(statement_.variables.size() + 1, 0);
  each_use([&](VariableId variable, std::uint32_t) { ++watch_begin_[variable + 1]; });
  for (std::size_t i = 1; i < watch_begin_.size(); ++i) watch_begin_[i] += watch_begin_[i - 1];
  watchers_.resize(watch_begin_.back());
  std::vector<std::uint32_t> next(watch_begin_.begin(), watch_begin_.end() - 1);
  each_use(
      [&](VariableId variable, std::uint32_t literal) { watchers_[next[variable]++] = literal; });
}

bool BodyOrder::are_bound(Slice uses) const {
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
    const VariableId variable = statement_.uses[i].variable;
    if (variable == kUnnamed || !bound_[variable]) return false;
  }
  return true;
}

BodyOrder::MaybeReady BodyOrder::readiness(const Literal& literal) {
  if (literal.kind == kAtom) return atom_readiness(literal);
  if (literal.kind == kAggregate) return aggregate_readiness(literal);
  if (are_bound(literal.uses)) return Readiness{StepMode::kTest, 0};
  if (literal.negated && literal.kind != kUnequal) return std::nullopt;
  if (kind_of(literal.kind).is_comparison) return comparison_readiness(literal);
  if (literal.kind == kFunctionTerm) return function_readiness(literal);
  return operand_readiness(literal);
}

// clingo reads "_" in a negated atom as "for none", so only named variables wait there.
BodyOrder::MaybeReady BodyOrder::atom_readiness(const Literal& literal) const {
  if (!literal.negated) return Readiness{StepMode::kTest, 0};
  for (std::uint32_t i = literal.uses.begin; i < literal.uses.end; ++i) {
    const VariableId variable = statement_.uses[i].variable;
    if (variable != kUnnamed && !bound_[variable]) return std::nullopt;
  }
  return Readiness{StepMode::kTest, 0};
}

// Equality gives the side that has no value the value of the other; compounds are taken apart.
BodyOrder::MaybeReady BodyOrder::comparison_readiness(const Literal& literal) const {
  const bool is_equality = literal.negated ? literal.kind == kUnequal : literal.kind == kEqual;
  if (!is_equality) return std::nullopt;
  for (const std::uint32_t target : {0u, 1u}) {
    if (is_bound(statement_.argument(literal, 1 - target)))
      return Readiness{StepMode::kAssign, target};
  }
  return std::nullopt;
}

// "#int", "#succ", "+" and "*" compute one operand from the others.
BodyOrder::MaybeReady BodyOrder::operand_readiness(const Literal& literal) const {
  std::uint32_t unbound = 0;
  std::uint32_t target = 0;
  for (std::uint32_t i = 0; i < literal.arguments.size(); ++i) {
    if (is_bound(statement_.argument(literal, i))) continue;
    ++unbound;
    target = i;
  }
  if (unbound != 1 || statement_.argument(literal, target).kind != TermKind::kVariable)
    return std::nullopt;
  const bool is_factor = literal.kind == kProduct && target != 2;
  return Readiness{is_factor ? StepMode::kFactor : StepMode::kAssign, target};
}

BodyOrder::MaybeReady BodyOrder::function_readiness(const Literal& literal) const {
  if (is_bound(statement_.argument(literal, 0))) return Readiness{StepMode::kAssign, 1};
  for (std::uint32_t i = 2; i < literal.arguments.size(); ++i) {
    if (!is_bound(statement_.argument(literal, i))) return std::nullopt;
  }
  return Readiness{StepMode::kAssign, 0};
}

BodyOrder::MaybeReady BodyOrder::aggregate_readiness(const Literal& literal) {
  const Aggregate& aggregate = statement_.aggregates[literal.aggregate];
  for (std::uint32_t i = aggregate.uses.begin; i < aggregate.uses.end; ++i) {
    const VariableId variable = statement_.uses[i].variable;
    if (variable != kUnnamed && outer_[variable] && !bound_[variable]) return std::nullopt;
  }
  Readiness readiness{StepMode::kTest, 0};
  if (!are_bound(literal.uses)) {
    const Term& guard = statement_.terms[aggregate.left.term];
    const bool assigns = aggregate.left.op == kEqual && guard.kind == TermKind::kVariable;
    if (!assigns || literal.negated || aggregate.function == kAverage) return std::nullopt;
    readiness.mode = StepMode::kAssign;
  }
  if (!inside_is_safe(aggregate)) return std::nullopt;
  return readiness;
}

bool BodyOrder::inside_is_safe(const Aggregate& aggregate) {
  BodyOrder inside(statement_, outer_, integers_);
  const bool is_ordered = inside.order(aggregate.body, bound_);
  is_tangled_ = is_tangled_ || inside.is_tangled_;
  if (!is_ordered) {
    unbound_ = inside.unbound();
    return false;
  }
  for (std::uint32_t i = aggregate.arguments.begin; i < aggregate.arguments.end; ++i) {
    const Term& term = statement_.terms[statement_.arguments[i]];
    if (inside.is_bound(term)) continue;
    const auto is_unbound = [&inside](const Use& use) {
      return use.variable == kUnnamed || !inside.bound_[use.variable];
    };
    unbound_ = {term.kind == TermKind::kVariable ? statement_.spelling(term.variable)
                                                 : statement_.slice(term.text),
                *std::ranges::find_if(statement_.uses_of(term), is_unbound)};
    return false;
  }
  return true;
}

void BodyOrder::examine(std::uint32_t literal) {
  if (taken_[literal]) return;
  const Literal& item = (*body_)[literal];
  const MaybeReady found = readiness(item);
  if (!found) return;
  if (found->mode == StepMode::kAssign) {
    assignments_.push_back(literal);
  } else if (found->mode == StepMode::kFactor) {
    products_.push_back(literal);
  } else if (item.kind == kAtom && !item.negated && following_ && !are_bound(item.uses)) {
    atoms_.push_back(literal);
  } else {
    take(literal, *found);
  }
}

void BodyOrder::take(std::uint32_t literal, Readiness readiness) {
  const Literal& item = (*body_)[literal];
  Step step{literal, readiness.mode, readiness.target};
  taken_[literal] = 1;
  --left_;
  if (readiness.mode == StepMode::kFactor) {
    step.others = find_others(literal, readiness.target);
  }
  steps_.push_back(step);
  if (readiness.mode != StepMode::kTest || (item.kind == kAtom && !item.negated)) bind(item.uses);
}

void BodyOrder::bind(Slice uses) {
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) bind_variable(statement_.uses[i].variable);
}

void BodyOrder::bind_variable(VariableId variable) {
  if (variable == kUnnamed || bound_[variable]) return;
  bound_[variable] = 1;
  news_.push_back(variable);
}

void BodyOrder::settle() {
  do settle_certain();
  while (take_a_product());
}

// Follows what new values make possible, until nothing does: tests at once, then atoms, assignments
// last.
void BodyOrder::settle_certain() {
  following_ = true;
  for (;;) {
    while (next_news_ < news_.size()) {
      const VariableId variable = news_[next_news_++];
      for (std::uint32_t i = watch_begin_[variable]; i < watch_begin_[variable + 1]; ++i) {
        examine(watchers_[i]);
      }
    }
    std::deque<std::uint32_t>& queue = atoms_.empty() ? assignments_ : atoms_;
    if (queue.empty()) break;
    const std::uint32_t literal = queue.front();
    queue.pop_front();
    if (taken_[literal]) continue;
    const MaybeReady now = readiness((*body_)[literal]);
    if (now) take(literal, *now);
  }
  following_ = false;
}

bool BodyOrder::take_a_product() {
  while (!products_.empty()) {
    const std::uint32_t literal = products_.front();
    products_.pop_front();
    if (taken_[literal]) continue;
    const MaybeReady now = readiness((*body_)[literal]);
    if (!now) continue;
    take(literal, *now);
    return true;
  }
  return false;
}

// Whether a literal that is left could compute the variable.
bool BodyOrder::can_be_given(VariableId variable) const {
  for (std::uint32_t i = watch_begin_[variable]; i < watch_begin_[variable + 1]; ++i) {
    if (!taken_[watchers_[i]] && may_bind((*body_)[watchers_[i]], variable)) return true;
  }
  return false;
}

bool BodyOrder::may_bind(const Literal& literal, VariableId variable) const {
  if (literal.kind == kAggregate) {
    const auto begin = statement_.uses.begin();
    const auto end = begin + literal.uses.end;
    return std::ranges::find(begin + literal.uses.begin, end, variable, &Use::variable) != end;
  }
  if (kind_of(literal.kind).is_comparison)
    return literal.kind == (literal.negated ? kUnequal : kEqual);
  return !literal.negated;
}

// The ways to the factor besides the literal, which is taken already: see Note [open factors].
Slice BodyOrder::find_others(std::uint32_t literal, std::uint32_t target) {
  const VariableId factor = statement_.argument((*body_)[literal], target).variable;
  const auto begin = static_cast<std::uint32_t>(others_.size());
  if (integers_ == IntegerBound::kNone && can_be_given(factor)) {
    std::vector<std::vector<Step>> ways = std::exchange(others_, {});    // the rest needs no copy
    BodyOrder rest(*this);
    rest.steps_ = {{literal, StepMode::kZero, target}};
    unsigned tries = 0;
    rest.explore(factor, ways, tries);
    others_ = std::move(ways);
    is_tangled_ = is_tangled_ || rest.is_tangled_;
  }
  return {begin, static_cast<std::uint32_t>(others_.size())};
}

// The variables that literals which are left could compute the factor from, through each other.
std::vector<char> BodyOrder::related_to(VariableId factor) const {
  std::vector<char> related(bound_.size(), 0);
  std::vector<VariableId> open{factor};
  related[factor] = 1;
  while (!open.empty()) {
    const VariableId variable = open.back();
    open.pop_back();
    for (std::uint32_t i = watch_begin_[variable]; i < watch_begin_[variable + 1]; ++i) {
      const Literal& literal = (*body_)[watchers_[i]];
      if (taken_[watchers_[i]] || !may_bind(literal, variable)) continue;
      for (std::uint32_t u = literal.uses.begin; u < literal.uses.end; ++u) {
        const VariableId other = statement_.uses[u].variable;
        if (other == kUnnamed || bound_[other] || related[other]) continue;
        related[other] = 1;
        open.push_back(other);
      }
    }
  }
  return related;
}

// Follows each choice of products that are 0 = 0 * Y, and of those that compute a factor instead,
// as far as the factor could be computed from theirs.
void BodyOrder::explore(VariableId factor, std::vector<std::vector<Step>>& ways, unsigned& tries) {
  constexpr unsigned kMostTries = 1000;
  if (++tries > kMostTries) is_tangled_ = true;
  settle_certain();
  const std::vector<char> related = related_to(factor);
  while (!bound_[factor] && !is_tangled_ && !products_.empty()) {
    const std::uint32_t literal = products_.front();
    products_.pop_front();
    const MaybeReady now = taken_[literal] ? std::nullopt : readiness((*body_)[literal]);
    if (!now) continue;
    const bool is_open = now->mode == StepMode::kFactor;
    const VariableId other_factor = statement_.argument((*body_)[literal], now->target).variable;
    if (is_open && !related[other_factor]) continue;
    taken_[literal] = 1;
    if (is_open) {
      BodyOrder other(*this);
      other.steps_.push_back({literal, now->mode, now->target});
      other.bind((*body_)[literal].uses);
      other.explore(factor, ways, tries);
      is_tangled_ = other.is_tangled_;
    }
    steps_.push_back({literal, is_open ? StepMode::kZero : StepMode::kTest, now->target});
    settle_certain();
  }
  if (bound_[factor]) ways.push_back(steps_);
}

// Where nothing else binds an operand of "+", "*" or "#succ", it ranges over all integers up to the
// bound.
bool BodyOrder::take_a_range() {
  for (; range_cursor_ < body_->size(); ++range_cursor_) {
    const Literal& literal = (*body_)[range_cursor_];
    if (taken_[range_cursor_] || literal.negated) continue;
    if (literal.kind < kSuccessor || literal.kind > kProduct) continue;
    for (std::uint32_t a = 0; a < literal.arguments.size(); ++a) {
      const Term& term = statement_.argument(literal, a);
      if (term.kind != TermKind::kVariable || is_bound(term)) continue;
      steps_.push_back({range_cursor_, StepMode::kRange, term.variable});
      bind_variable(term.variable);
      return true;
    }
  }
  return false;
}

void BodyOrder::note_stuck() {
  if (!unbound_.name.empty()) return;
  for (std::uint32_t i = 0; i < body_->size(); ++i) {
    if (taken_[i]) continue;
    const Literal& literal = (*body_)[i];
    for (std::uint32_t u = literal.uses.begin; u < literal.uses.end; ++u) {
      const Use& use = statement_.uses[u];
      if (use.variable != kUnnamed && bound_[use.variable]) continue;
      unbound_ = {use.variable == kUnnamed ? "_" : statement_.spelling(use.variable), use};
      return;
    }
    if (literal.kind != kAggregate) continue;
    const Slice inner = statement_.aggregates[literal.aggregate].uses;
    for (std::uint32_t u = inner.begin; u < inner.end; ++u) {
      const Use& use = statement_.uses[u];
      if (use.variable == kUnnamed || bound_[use.variable] || !outer_[use.variable]) continue;
      unbound_ = {statement_.spelling(use.variable), use};
      return;
    }
  }
}

}    // namespace dl
