#include "dl/explain/failure_search.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <tuple>
#include <utility>

#include "dl/explain/nearest_instance.h"

namespace dl {
namespace {

constexpr std::size_t kMostSimilar = 3;

// What may be spent on coming nearer, in attempts to match: see Note [nearest instances].
constexpr std::uint64_t kLeastEffort = 20'000;
constexpr std::uint64_t kEffortForAtom = 4;    // of the answer set
constexpr std::uint64_t kLeastEffortForRule = 1'000;
constexpr std::uint64_t kEffortForLiteral = 32;

// How many letters must be put in, left out or replaced; one more than the most when more are.
std::size_t edit_distance(std::string_view left, std::string_view right, std::size_t most) {
  if (left.size() > right.size()) std::swap(left, right);
  if (right.size() - left.size() > most) return most + 1;
  std::vector<std::size_t> row(left.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t r = 1; r <= right.size(); ++r) {
    std::size_t diagonal = std::exchange(row[0], r);
    for (std::size_t l = 1; l <= left.size(); ++l) {
      const std::size_t replaced = diagonal + (left[l - 1] == right[r - 1] ? 0 : 1);
      diagonal = row[l];
      row[l] = std::min({replaced, row[l] + 1, row[l - 1] + 1});
    }
    if (std::ranges::min(row) > most) return most + 1;
  }
  return std::min(row.back(), most + 1);
}

std::size_t difference(std::uint32_t left, std::uint32_t right) {
  return left < right ? right - left : left - right;
}

}    // namespace

MissingAtom FailureSearch::explain(PredicateNumber predicate,
                                   const std::vector<GroundTerm>& arguments) {
  MissingAtom missing;
  std::uint64_t effort = this->effort();
  for (const HeadUse& use : store_.heads_of(predicate)) {
    FailedRule rule;
    rule.statement = use.statement;
    rule.head = use.head;
    if (!can_give(use, arguments, rule.binding)) {
      missing.other_rules.push_back(use);
      continue;
    }
    find_nearest(rule, effort);
    rule.other_heads = other_heads(rule);
    missing.rules.push_back(std::move(rule));
  }
  const auto is_fact = [this](AtomNumber atom) { return store_.fact(atom).file != zarel::kNoFile; };
  missing.has_other_facts = std::ranges::any_of(index_.atoms(predicate), is_fact);
  if (!store_.is_given(predicate)) missing.similar = similar(predicate);
  const bool is_ground = std::ranges::find(arguments, kNoTerm) == arguments.end();
  if (is_ground) missing.contrary = index_.find(index_.contrary(predicate), arguments);
  return missing;
}

FailedRule FailureSearch::explain_body(StatementNumber statement, const Binding& start) {
  FailedRule body;
  body.statement = statement;
  body.binding = start;
  std::uint64_t effort = this->effort();
  find_nearest(body, effort);
  return body;
}

std::uint64_t FailureSearch::effort() const {
  return kLeastEffort + kEffortForAtom * index_.size();
}

void FailureSearch::find_nearest(FailedRule& rule, std::uint64_t& effort) {
  const StoredStatement& statement = store_.statement(rule.statement);
  const OpenOperands open = store_.bound() ? OpenOperands::kRange : OpenOperands::kUnknown;
  effort = std::max(effort, kLeastEffortForRule + kEffortForLiteral * statement.body.size());
  NearestInstance(evaluator_, statement, open, rule, effort).find();
}

// Gives the rule's variables the values that the arguments ask for.
bool FailureSearch::can_give(const HeadUse& use, const std::vector<GroundTerm>& arguments,
                             Binding& binding) {
  const StoredStatement& statement = store_.statement(use.statement);
  const AtomPattern& head = statement.heads[use.head];
  binding.assign(statement.variables.size(), kNoTerm);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    if (arguments[i] == kNoTerm) continue;
    if (!evaluator_.match(statement, head.arguments[i], arguments[i], binding)) return false;
  }
  return true;
}

// All variables of a head have values where the body holds.
std::vector<AtomNumber> FailureSearch::other_heads(const FailedRule& rule) {
  std::vector<AtomNumber> others;
  const auto holds = [](LiteralState state) { return state == LiteralState::kHolds; };
  if (!std::ranges::all_of(rule.literals, holds)) return others;
  const StoredStatement& statement = store_.statement(rule.statement);
  for (const AtomPattern& head : statement.heads) {
    std::vector<GroundTerm> arguments;
    for (const PatternNumber argument : head.arguments) {
      arguments.push_back(evaluator_.value(statement, argument, rule.binding));
    }
    const AtomNumber atom = index_.find(head.predicate, arguments);
    if (atom != kNoAtom && std::ranges::find(others, atom) == others.end()) others.push_back(atom);
  }
  return others;
}

// Of the predicates that facts or rules give, the same name with other arguments or the other sign
// comes first, then names that differ in no more than a third of their letters.
std::vector<PredicateNumber> FailureSearch::similar(PredicateNumber predicate) const {
  const Predicate wanted = index_.predicate(predicate);
  const std::string_view name = terms_.spelling(wanted.name);
  const std::size_t most = std::max<std::size_t>(1, name.size() / 3);
  // The smaller, the nearer.
  using Distance = std::tuple<std::size_t, bool, std::size_t, PredicateNumber>;
  std::vector<Distance> near;
  for (PredicateNumber each = 0; each < index_.predicates(); ++each) {
    if (!store_.is_given(each)) continue;
    const Predicate& other = index_.predicate(each);
    const std::string_view spelling = terms_.spelling(other.name);
    const std::size_t distance = edit_distance(name, spelling, most);
    // Where no letter is the same, nothing was mistyped.
    if (distance > most || distance >= std::max(name.size(), spelling.size())) continue;
    near.emplace_back(distance, other.strongly_negated != wanted.strongly_negated,
                      difference(other.arity, wanted.arity), each);
  }
  std::ranges::sort(near);
  std::vector<PredicateNumber> nearest;
  for (const Distance& each : near) {
    if (nearest.size() < kMostSimilar) nearest.push_back(std::get<3>(each));
  }
  return nearest;
}

}    // namespace dl
