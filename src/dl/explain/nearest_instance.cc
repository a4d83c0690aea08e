#include "dl/explain/nearest_instance.h"

#include <algorithm>
#include <numeric>
#include <optional>

namespace dl {
namespace {

constexpr std::uint64_t kMostBindings = 1000;
constexpr std::uint64_t kAttemptsForLiteral = 4;    // that to begin with it is worth
constexpr std::uint64_t kLeastAttempts = 100;       // of a search

}    // namespace

NearestInstance::NearestInstance(BodyEvaluator& evaluator, const StoredStatement& statement,
                                 OpenOperands open, FailedRule& rule, std::uint64_t& effort)
    : evaluator_(evaluator),
      statement_(statement),
      open_operands_(open),
      rule_(rule),
      effort_(effort),
      parts_(statement, rule.binding),
      is_impossible_(statement.body.size(), 0) {}

void NearestInstance::find() {
  rule_.bindings = 1;
  Literals all(statement_.body.size());
  std::iota(all.begin(), all.end(), 0u);
  for (const BodyPart& part : parts_.split(all)) {
    if (!part.variables.empty()) settle(part);
  }
  tell();
}

void NearestInstance::settle(const BodyPart& part) {
  const Instances found = whole(part);
  if (found.count != 0) return take(found);
  if (part.literals.size() == 1) {
    is_impossible_[part.literals.front()] = 1;
    return;
  }
  SafeOrder order = parts_.safe_order(part);
  rest_operands_ = order.ranges ? open_operands_ : OpenOperands::kUnknown;
  Prefix prefix = longest_prefix(part, std::move(order.literals));
  prefix.held = std::min(prefix.held, prefix.order.size() - 1);
  if (leave_out_one(part, std::span(prefix.order).first(prefix.held + 1))) return;
  if (leave_out_tests(part)) return;
  keep_most(part, std::move(prefix));
}

// Whether all of it holds must be known, whatever it takes; how often, need not.
NearestInstance::Instances NearestInstance::whole(const BodyPart& part) {
  shares_ = 4;
  Instances found = instances(part, OpenOperands::kRange, kMostBindings);
  if (found.count != 0 || !found.was_cut) return found;
  shares_ = 0;
  const std::uint64_t before = evaluator_.attempts();
  found = instances(part, OpenOperands::kRange, 1);
  // What comes near may take as long.
  effort_ = std::max(effort_, evaluator_.attempts() - before);
  return found;
}

// Whatever is the only one that is missing stands among the first that do not hold together. Of
// several, the one is taken without which the fewest values are left open to choice: a rest that
// hangs on the values of the head rather than one that falls apart.
bool NearestInstance::leave_out_one(const BodyPart& part, std::span<const LiteralNumber> order) {
  std::optional<Instances> best;
  std::uint64_t count = 0;
  std::ptrdiff_t best_floats = 0;
  for (std::size_t i = order.size(); i-- > 0 && has_effort();) {
    Literals rest = part.literals;
    std::erase(rest, order[i]);
    const std::vector<BodyPart> parts = parts_.split(rest);
    const std::ptrdiff_t floats = std::ranges::count_if(parts, &BodyPart::floats);
    if (best && floats > best_floats) continue;
    shares_ = i + 1;
    Instances found = instances(parts, kMostBindings);
    rule_.was_cut = rule_.was_cut || (found.count == 0 && found.was_cut);
    if (found.count == 0 || !is_one_short(found, parts, order[i])) continue;
    if (!best || floats < best_floats) count = 0;
    count += found.count;
    if (!best || floats < best_floats || found.count < best->count) best = std::move(found);
    best_floats = floats;
  }
  if (!best) return false;
  best->count = count;
  take(*best);
  return true;
}

// Whether the values say of each of the rest that it holds, and of the one that is left out that it
// does not.
bool NearestInstance::is_one_short(const Instances& found, const std::vector<BodyPart>& rest,
                                   LiteralNumber left_out) {
  std::size_t variables = 0;
  for (const BodyPart& part : rest) variables += part.variables.size();
  if (found.values.size() < variables) return false;
  for (const auto& [variable, value] : found.values) rule_.binding[variable] = value;
  const bool fails = state(left_out) == LiteralState::kFails;
  for (const auto& [variable, value] : found.values) rule_.binding[variable] = kNoTerm;
  return fails;
}

bool NearestInstance::leave_out_tests(const BodyPart& part) {
  Literals rest;
  Literals tests;
  for (const LiteralNumber literal : part.literals) {
    (is_test(literal) ? tests : rest).push_back(literal);
  }
  if (tests.empty() || rest.empty() || !has_effort()) return false;
  Instances best;
  std::uint64_t fewest = tests.size() + 1;
  std::uint64_t seen = 0;
  shares_ = 1;
  const bool was_cut = search(rest, rest_operands_, [&](const Binding& binding) {
    if (++seen > kMostBindings) return false;
    const std::uint64_t failing = count_failing(tests, binding, fewest);
    if (failing < fewest) best = {.values = values_of(part, binding)};
    if (failing <= fewest) ++best.count;
    fewest = std::min(fewest, failing);
    return true;
  });
  best.was_cut = was_cut || seen > kMostBindings;
  if (best.count == 0) return false;
  take(best);
  return true;
}

// Negated atoms, and aggregates that give no variable its value.
bool NearestInstance::is_test(LiteralNumber literal) const {
  const StoredLiteral& item = statement_.body[literal];
  if (item.kind == kAtom || item.negated) return item.negated;
  if (item.kind != kAggregate) return false;
  const StoredGuard& guard = statement_.aggregates[item.aggregate].left;
  if (!guard.given || guard.op != kEqual) return true;
  const TermPattern& term = statement_.terms[guard.term];
  return term.kind != TermPattern::Kind::kVariable || rule_.binding[term.variable] != kNoTerm;
}

// Counts no further than one more than the most.
std::uint64_t NearestInstance::count_failing(const Literals& tests, const Binding& binding,
                                             std::uint64_t most) {
  std::uint64_t failing = 0;
  for (const LiteralNumber test : tests) {
    if (evaluator_.holds(statement_, statement_.body[test], binding) != true) ++failing;
    if (failing > most) break;
  }
  return failing;
}

// Each literal that those before it do not hold with is passed over; the order is another one then.
void NearestInstance::keep_most(const BodyPart& part, Prefix prefix) {
  BodyPart left = part;
  while (prefix.held < prefix.order.size() && has_effort()) {
    std::erase(left.literals, prefix.order[prefix.held]);
    prefix = longest_prefix(left, parts_.safe_order(left).literals);
  }
  const std::span order(prefix.order);
  const auto kept = order.first(prefix.held);
  shares_ = 1;
  const Instances found = instances(parts_.split(kept), kMostBindings);
  take(found.count != 0 ? found : Instances{std::move(prefix.values), 1, true});
  // Where the effort did not suffice, the others are looked at with these values.
  for (auto rest = order.subspan(prefix.held); !rest.empty();) {
    rest = rest.subspan(std::min(follow(rest) + 1, rest.size()));
  }
}

// How many of the first literals hold together. The steps double first, so that few literals are
// joined where few hold.
NearestInstance::Prefix NearestInstance::longest_prefix(const BodyPart& part, Literals order) {
  shares_ = 8;
  Prefix prefix{std::move(order), 0, {}};
  prefix.held = follow(prefix.order);
  prefix.values = values_of(part, rule_.binding);
  for (const VariableId variable : part.variables) rule_.binding[variable] = kNoTerm;
  std::size_t bad = prefix.order.size() + 1;
  for (std::size_t step = 1; bad - prefix.held > 1; step *= 2) {
    const std::size_t next = bad <= prefix.order.size()
                                 ? std::midpoint(prefix.held, bad)
                                 : std::min(prefix.held + step, prefix.order.size());
    (has_effort() && extend(prefix, next) ? prefix.held : bad) = next;
  }
  return prefix;
}

// Whether that many hold together; then the values are theirs.
bool NearestInstance::extend(Prefix& prefix, std::size_t count) {
  Instances found = instances(parts_.split(std::span(prefix.order).first(count)), 1);
  rule_.was_cut = rule_.was_cut || (found.count == 0 && found.was_cut);
  if (found.count != 0) prefix.values = std::move(found.values);
  return found.count != 0;
}

// Gives the literals the first values that they have, one after the other. Returns how many hold:
// the next one fails.
std::size_t NearestInstance::follow(std::span<const LiteralNumber> literals) {
  for (std::size_t i = 0; i < literals.size(); ++i) {
    const LiteralNumber literal = literals[i];
    const auto holds = evaluator_.holds(statement_, statement_.body[literal], rule_.binding);
    if (holds == false) return i;
    if (holds) continue;
    BodyPart alone{{literal}, {}, false};
    const auto open = parts_.open_variables(literal);
    alone.variables.assign(open.begin(), open.end());
    const Instances found = instances(alone, rest_operands_, 1);
    if (found.count == 0) return i;
    for (const auto& [variable, value] : found.values) rule_.binding[variable] = value;
  }
  return literals.size();
}

NearestInstance::Instances NearestInstance::instances(const std::vector<BodyPart>& parts,
                                                      std::uint64_t most) {
  Instances all;
  all.count = 1;
  for (const BodyPart& part : parts) {
    Instances found = instances(part, rest_operands_, most);
    all.values.insert(all.values.end(), found.values.begin(), found.values.end());
    all.count *= found.count;
    all.was_cut = all.was_cut || found.was_cut || all.count > most;
    all.count = std::min(all.count, most);
    if (all.count == 0) break;
  }
  return all;
}

NearestInstance::Instances NearestInstance::instances(const BodyPart& part, OpenOperands open,
                                                      std::uint64_t most) {
  Instances found;
  const bool was_cut = search(part.literals, open, [&](const Binding& binding) {
    if (found.count == 0) found.values = values_of(part, binding);
    if (found.count == most) found.was_cut = true;
    if (found.count < most) ++found.count;
    return !found.was_cut && most > 1;
  });
  found.was_cut = found.was_cut || was_cut;
  return found;
}

// Returns whether the effort did not suffice. A little is always allowed, so that literals can be
// looked at one by one.
bool NearestInstance::search(const Literals& literals, OpenOperands open, const TakeBinding& take) {
  const std::uint64_t before = evaluator_.attempts();
  evaluator_.limit(shares_ == 0 ? 0 : std::max(effort_ / shares_, kLeastAttempts));
  evaluator_.each_of(statement_, literals, open, rule_.binding, take);
  evaluator_.limit(0);
  effort_ -=
      std::min(effort_, evaluator_.attempts() - before + kAttemptsForLiteral * literals.size());
  return evaluator_.was_cut();
}

// Whatever is not looked at for lack of it might have come nearer.
bool NearestInstance::has_effort() {
  rule_.was_cut = rule_.was_cut || effort_ == 0;
  return effort_ != 0;
}

NearestInstance::Values NearestInstance::values_of(const BodyPart& part, const Binding& binding) {
  Values values;
  for (const VariableId variable : part.variables) {
    if (binding[variable] != kNoTerm) values.emplace_back(variable, binding[variable]);
  }
  return values;
}

// Each of the bindings so far goes with each of these.
void NearestInstance::take(const Instances& chosen) {
  for (const auto& [variable, value] : chosen.values) rule_.binding[variable] = value;
  const std::uint64_t count = rule_.bindings * std::max<std::uint64_t>(chosen.count, 1);
  rule_.was_cut = rule_.was_cut || chosen.was_cut || count > kMostBindings;
  rule_.bindings = std::min(count, kMostBindings);
}

void NearestInstance::tell() {
  rule_.values.assign(statement_.body.size(), kNoTerm);
  for (LiteralNumber literal = 0; literal < statement_.body.size(); ++literal) {
    const bool is_aggregate = statement_.body[literal].kind == kAggregate;
    rule_.literals.push_back(is_aggregate ? tell_aggregate(literal) : state(literal));
  }
}

// Its elements, which may be many, are looked for once.
LiteralState NearestInstance::tell_aggregate(LiteralNumber literal) {
  const StoredLiteral& item = statement_.body[literal];
  const auto has_value = [this](VariableId variable) { return rule_.binding[variable] != kNoTerm; };
  if (!std::ranges::all_of(item.variables, has_value)) return state(literal);
  const StoredAggregate& aggregate = statement_.aggregates[item.aggregate];
  const AggregateElements elements =
      evaluator_.elements(statement_, aggregate, rule_.binding, Ways::kForgotten);
  rule_.values[literal] = elements.value;
  if (!std::ranges::all_of(parts_.open_variables(literal), has_value)) return state(literal);
  const bool holds = evaluator_.guards_hold(statement_, aggregate, elements, rule_.binding);
  return holds != item.negated ? LiteralState::kHolds : LiteralState::kFails;
}

LiteralState NearestInstance::state(LiteralNumber literal) {
  const std::optional<bool> holds =
      evaluator_.holds(statement_, statement_.body[literal], rule_.binding);
  if (holds) return *holds ? LiteralState::kHolds : LiteralState::kFails;
  return is_impossible(literal) ? LiteralState::kFails : LiteralState::kOpen;
}

// Whether no values of the variables that have none make the literal hold.
bool NearestInstance::is_impossible(LiteralNumber literal) {
  if (is_impossible_[literal] != 0) return true;
  if (leaves_factor_open(literal)) return false;
  bool is_possible = false;
  shares_ = 1;
  const bool was_cut = search({literal}, open_operands_, [&](const Binding&) {
    is_possible = true;
    return false;
  });
  return !is_possible && !was_cut;
}

// Without a bound no value is tried of a factor that a product of 0 leaves open.
bool NearestInstance::leaves_factor_open(LiteralNumber literal) {
  const StoredLiteral& item = statement_.body[literal];
  const auto is_zero = [&](PatternNumber operand) {
    return evaluator_.value(statement_, operand, rule_.binding) == GroundTerms::integer(0);
  };
  return item.kind == kProduct && open_operands_ == OpenOperands::kUnknown &&
         std::ranges::any_of(item.operands, is_zero);
}

}    // namespace dl
