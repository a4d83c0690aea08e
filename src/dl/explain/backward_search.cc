#include "dl/explain/backward_search.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace dl {
namespace {

// Where there are so many instances, marks are looked for before a layer is whole.
constexpr std::size_t kManyInstances = 1'000'000;
constexpr std::size_t kPieceOfLayer = 1'000;

}    // namespace

std::size_t BackwardSearch::KeyHash::operator()(const QuotaKey& key) const {
  std::uint64_t hash = std::hash<const StoredLiteral*>()(key.literal);
  for (const GroundTerm term : key.values) {
    hash = (hash ^ term) * 0xff51afd7ed558ccdu;
    hash ^= hash >> 29;
  }
  return hash ^ (hash >> 32);
}

BackwardSearch::BackwardSearch(BodyEvaluator& evaluator, GroundTerms& terms, AnswerIndex& index,
                               const StatementStore& store, HeadIndex& heads, SupportGraph& graph)
    : evaluator_(evaluator),
      terms_(terms),
      index_(index),
      store_(store),
      heads_(heads),
      graph_(graph),
      atoms_(evaluator, index),
      is_met_(index.size()),
      is_expanded_(index.size()) {}

void BackwardSearch::ask(std::span<const AtomNumber> atoms) {
  Basis asked;
  for (const AtomNumber atom : atoms) {
    if (!is_fact(atom)) asked.points.push_back(atom);
  }
  base({Owner::kInstance, graph_.add(Instance{})}, asked);
}

void BackwardSearch::ask(StatementNumber statement, const Binding& binding) {
  Basis asked;
  collect_body(store_.statement(statement), binding, {}, asked);
  base({Owner::kInstance, graph_.add(Instance{})}, asked);
}

bool BackwardSearch::expand_layer() {
  if (next_ == met_.size()) return false;
  std::size_t end = met_.size();
  if (graph_.instances().size() > kManyInstances) end = std::min(end, next_ + kPieceOfLayer);
  while (next_ < end) expand(met_[next_++]);
  return true;
}

void BackwardSearch::expand(AtomNumber atom) {
  const HeadIndex::Heads heads = heads_.heads(index_.predicate_of(atom), index_.arguments(atom));
  for (const HeadUse& use : heads.exact) expand(atom, use);
  for (const HeadUse& use : heads.open) expand(atom, use);
  is_expanded_[atom] = 1;
}

void BackwardSearch::expand(AtomNumber atom, const HeadUse& use) {
  const StoredStatement& statement = store_.statement(use.statement);
  start_.assign(statement.variables.size(), kNoTerm);
  const AtomPattern& head = statement.heads[use.head];
  if (!evaluator_.match(statement, head, index_.arguments(atom), start_)) return;
  evaluator_.each(statement, start_, left_out(use.statement), [&](const Binding& binding) {
    if (!aggregates_hold(use.statement, binding)) return true;
    if (statement.heads.size() > 1 && !is_alone(atom, use, binding)) return true;
    return add_instance(atom, use, binding);
  });
}

// Returns whether more instances are to be looked for: another one of the rule does not cost less
// than one that rests on facts alone.
bool BackwardSearch::add_instance(AtomNumber atom, const HeadUse& use, const Binding& binding) {
  basis_.clear();
  const std::span<const AtomNumber> known = evaluator_.found_atoms();
  if (!collect_body(store_.statement(use.statement), binding, known, basis_)) return true;
  if (std::ranges::find(basis_.points, atom) != basis_.points.end()) return true;
  const std::uint32_t instance = graph_.add(
      Instance{use.statement, use.head, atom, graph_.add_binding(binding), basis_.facts});
  base({Owner::kInstance, instance}, basis_);
  return !basis_.points.empty();
}

// Returns whether the instance of a disjunctive rule supports the atom by itself. Where the head has
// other true atoms, it is a split, which each of them meets: the first one adds it.
bool BackwardSearch::is_alone(AtomNumber atom, const HeadUse& use, const Binding& binding) {
  const StoredStatement& statement = store_.statement(use.statement);
  std::vector<AtomNumber> atoms;
  for (std::uint32_t head = 0; head < statement.heads.size(); ++head) {
    const AtomNumber other = atoms_.one(statement, statement.heads[head], binding);
    if (other == atom && head < use.head) return false;    // that head has told the instance
    if (other == kNoAtom || std::ranges::find(atoms, other) != atoms.end()) continue;
    atoms.push_back(other);
  }
  if (atoms.size() == 1) return true;
  const auto is_expanded = [this](AtomNumber other) { return is_expanded_[other] != 0; };
  if (std::ranges::any_of(atoms, is_expanded)) return false;
  const std::uint32_t split = graph_.add(Split{use.statement, graph_.add_binding(binding)}, atoms);
  if (takes_splits_) base_on_body(split);
  return false;
}

void BackwardSearch::take_in_splits() {
  takes_splits_ = true;
  for (std::uint32_t i = 0; i < graph_.splits().size(); ++i) base_on_body(i);
}

void BackwardSearch::base_on_body(std::uint32_t number) {
  const Split& split = graph_.splits()[number];
  const std::span<const GroundTerm> values = graph_.binding(split.statement, split.binding);
  basis_.clear();
  collect_body(store_.statement(split.statement), Binding(values.begin(), values.end()), {},
               basis_);
  base({Owner::kSplit, number}, basis_);
}

void BackwardSearch::base(Owner owner, const Basis& on) {
  for (const Point point : on.points) {
    graph_.add_use(point, owner);
    if (!graph_.is_quota(point)) meet(point);
  }
}

void BackwardSearch::meet(AtomNumber atom) {
  if (std::exchange(is_met_[atom], 1) == 0) met_.push_back(atom);
}

bool BackwardSearch::collect_body(const StoredStatement& statement, const Binding& binding,
                                  std::span<const AtomNumber> known, Basis& basis) {
  for (std::size_t i = 0; i < statement.body.size(); ++i) {
    const StoredLiteral& literal = statement.body[i];
    if (literal.negated) continue;
    if (literal.kind == kAggregate) {
      basis.points.push_back(quota_of(statement, literal, binding));
      if (basis.points.back() == kNothing) return false;
    } else if (!known.empty() && known[i] != kNoAtom) {
      collect(known[i], basis);
    } else if (literal.kind == kAtom && !collect_atom(statement, literal, binding, basis)) {
      return false;
    }
  }
  return true;
}

void BackwardSearch::collect(AtomNumber atom, Basis& basis) {
  if (is_fact(atom)) {
    ++basis.facts;
  } else {
    basis.points.push_back(atom);
  }
}

bool BackwardSearch::collect_atom(const StoredStatement& statement, const StoredLiteral& literal,
                                  const Binding& binding, Basis& basis) {
  const AtomNumber found = atoms_.one(statement, literal.atom, binding);
  if (found == kNoAtom) return collect_any(statement, literal, binding, basis);
  collect(found, basis);
  return true;
}

// Collects an atom with "_".
bool BackwardSearch::collect_any(const StoredStatement& statement, const StoredLiteral& literal,
                                 const Binding& binding, Basis& basis) {
  const std::vector<AtomNumber> found = atoms_.all(statement, literal.atom, binding);
  if (found.empty()) return false;
  if (std::ranges::any_of(found, [this](AtomNumber atom) { return is_fact(atom); })) {
    ++basis.facts;
    return true;
  }
  const auto [place, is_new] = quotas_.emplace(key_of(statement, literal, binding), kNothing);
  if (is_new) {
    const std::uint32_t quota = graph_.add(Quota{{1, 1}});
    const std::uint32_t tuple = graph_.add(QuotaTuple{quota, {1, 1}});
    for (const AtomNumber atom : found) {
      base({Owner::kOption, graph_.add(TupleOption{tuple, 0})}, {{atom}});
    }
    place->second = graph_.point_of(quota);
  }
  basis.points.push_back(place->second);
  return true;
}

BackwardSearch::QuotaKey BackwardSearch::key_of(const StoredStatement& statement,
                                                const StoredLiteral& literal,
                                                const Binding& binding) {
  QuotaKey key{&literal, {}};
  for (const VariableId variable : literal.variables) key.values.push_back(binding[variable]);
  if (literal.kind != kAggregate) return key;
  const StoredAggregate& aggregate = statement.aggregates[literal.aggregate];
  const GuardValues guards = guard_values(evaluator_, statement, aggregate, binding);
  key.values.push_back(guards.left);
  key.values.push_back(guards.right);
  return key;
}

const std::vector<char>& BackwardSearch::left_out(StatementNumber number) {
  const auto [place, is_new] = left_out_.try_emplace(number);
  if (!is_new) return place->second;
  const StoredStatement& statement = store_.statement(number);
  const auto ranges = [](const StoredLiteral& literal) {
    return literal.kind == kInt || literal.kind == kSuccessor || literal.kind == kSum ||
           literal.kind == kProduct;
  };
  if (std::ranges::any_of(statement.body, ranges)) return place->second;
  std::vector<char> chosen(statement.body.size());
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    const StoredLiteral& literal = statement.body[i];
    if (literal.kind != kAggregate) continue;
    const StoredGuard& guard = statement.aggregates[literal.aggregate].left;
    const bool may_assign = guard.given && guard.op == kEqual &&
                            statement.terms[guard.term].kind == TermPattern::Kind::kVariable;
    chosen[i] = may_assign ? 0 : 1;
  }
  if (std::ranges::find(chosen, 1) != chosen.end()) place->second = std::move(chosen);
  return place->second;
}

// Whether the aggregates hold that were left out.
bool BackwardSearch::aggregates_hold(StatementNumber number, const Binding& binding) {
  const StoredStatement& statement = store_.statement(number);
  const std::vector<char>& chosen = left_out(number);
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (chosen[i] == 0) continue;
    const StoredLiteral& literal = statement.body[i];
    if (!literal.negated) {
      if (quota_of(statement, literal, binding) == kNothing) return false;
      continue;
    }
    QuotaKey key = key_of(statement, literal, binding);
    const auto [place, is_new] = negated_.try_emplace(std::move(key), false);
    if (is_new) place->second = evaluator_.holds(statement, literal, binding).value_or(false);
    if (!place->second) return false;
  }
  return true;
}

// The quota of an aggregate.
Point BackwardSearch::quota_of(const StoredStatement& statement, const StoredLiteral& literal,
                               const Binding& binding) {
  const StoredAggregate& aggregate = statement.aggregates[literal.aggregate];
  QuotaKey key = key_of(statement, literal, binding);
  const auto known = quotas_.find(key);
  if (known != quotas_.end()) return known->second;
  const GuardValues guards = guard_values(evaluator_, statement, aggregate, binding);
  const AggregateElements elements =
      evaluator_.elements(statement, aggregate, binding, Ways::kKept);
  if (!evaluator_.guards_hold(statement, aggregate, elements, binding)) {
    quotas_.emplace(std::move(key), kNothing);
    return kNothing;
  }
  const Need told = need_of(NeedKind::kTold, aggregate, guards, elements, terms_);
  const Need least = need_of(NeedKind::kLeast, aggregate, guards, elements, terms_);
  if (!has_one_need(aggregate)) has_two_needs_ = true;
  const std::uint32_t quota = graph_.add(Quota{{told.weight, least.weight}});
  for (const std::uint32_t i : heaviest_first(told)) {
    const std::uint32_t tuple = graph_.add(QuotaTuple{quota, {told.weights[i], least.weights[i]}});
    for (std::uint32_t way = elements.first_way(i); way != kNoWay; way = elements.next_way(way)) {
      add_option(tuple, statement, aggregate, elements.binding(way));
    }
  }
  const Point point = graph_.point_of(quota);
  quotas_.emplace(std::move(key), point);
  return point;
}

void BackwardSearch::add_option(std::uint32_t tuple, const StoredStatement& statement,
                                const StoredAggregate& aggregate, const Binding& binding) {
  Basis on;
  for (const StoredLiteral& literal : aggregate.body) {
    if (literal.negated || literal.kind != kAtom) continue;
    if (!collect_atom(statement, literal, binding, on)) return;
  }
  base({Owner::kOption, graph_.add(TupleOption{tuple, on.facts})}, on);
}

}    // namespace dl
