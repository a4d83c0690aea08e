#include "dl/explain/rule_loops.h"

#include <algorithm>
#include <limits>

namespace dl {
namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// Components of a graph that depend on each other, by Tarjan's algorithm without recursion.
class Components {
 public:
  explicit Components(const std::vector<std::vector<std::uint32_t>>& edges)
      : edges_(edges),
        order_(edges.size(), kNone),
        lowest_(edges.size(), kNone),
        component_(edges.size(), kNone) {
    for (std::uint32_t node = 0; node < edges.size(); ++node) {
      if (order_[node] == kNone) visit(node);
    }
  }
  std::uint32_t of(std::uint32_t node) const { return component_[node]; }
  std::uint32_t size() const { return count_; }

 private:
  struct Visit {
    std::uint32_t node;
    std::size_t next = 0;    // of its edges
  };

  void begin(std::uint32_t node) {
    order_[node] = lowest_[node] = seen_++;
    open_.push_back(node);
    visits_.push_back({node});
  }

  void visit(std::uint32_t root) {
    begin(root);
    while (!visits_.empty()) {
      Visit& visit = visits_.back();
      const std::uint32_t node = visit.node;
      if (visit.next == edges_[node].size()) {
        visits_.pop_back();
        end(node);
        continue;
      }
      const std::uint32_t target = edges_[node][visit.next++];
      if (order_[target] == kNone) {
        begin(target);
      } else if (component_[target] == kNone) {
        lowest_[node] = std::min(lowest_[node], order_[target]);
      }
    }
  }

  void end(std::uint32_t node) {
    if (!visits_.empty()) {
      std::uint32_t& lowest = lowest_[visits_.back().node];
      lowest = std::min(lowest, lowest_[node]);
    }
    if (lowest_[node] != order_[node]) return;
    while (component_[node] == kNone) {
      component_[open_.back()] = count_;
      open_.pop_back();
    }
    ++count_;
  }

  const std::vector<std::vector<std::uint32_t>>& edges_;
  std::vector<std::uint32_t> order_;
  std::vector<std::uint32_t> lowest_;
  std::vector<std::uint32_t> component_;
  std::vector<std::uint32_t> open_;
  std::vector<Visit> visits_;
  std::uint32_t seen_ = 0;
  std::uint32_t count_ = 0;
};

// Calls `take` with the predicate of each atom of the body, and whether it is in an aggregate or
// negated.
template <typename Take>
void each_body_atom(const StoredStatement& statement, Take&& take) {
  for (const StoredLiteral& literal : statement.body) {
    if (literal.kind == kAtom) take(literal.atom.predicate, literal.negated);
  }
  for (const StoredAggregate& aggregate : statement.aggregates) {
    for (const StoredLiteral& literal : aggregate.body) {
      if (literal.kind == kAtom) take(literal.atom.predicate, true);
    }
  }
}

std::uint32_t highest_predicate(const StatementStore& store) {
  std::uint32_t highest = 0;
  for (const StoredStatement& statement : store.statements()) {
    for (const AtomPattern& head : statement.heads) highest = std::max(highest, head.predicate);
    each_body_atom(statement, [&](PredicateNumber predicate, bool) {
      highest = std::max(highest, predicate);
    });
  }
  return highest;
}

}    // namespace

// The heads of a disjunction depend on each other.
std::vector<StatementNumber> rules_in_loops(const StatementStore& store) {
  std::vector<std::vector<std::uint32_t>> edges(highest_predicate(store) + std::size_t{1});
  for (const StoredStatement& statement : store.statements()) {
    if (statement.kind != StatementKind::kRule) continue;
    const PredicateNumber first = statement.heads.front().predicate;
    for (const AtomPattern& head : statement.heads) {
      edges[first].push_back(head.predicate);
      edges[head.predicate].push_back(first);
    }
    each_body_atom(statement,
                   [&](PredicateNumber predicate, bool) { edges[first].push_back(predicate); });
  }
  const Components components(edges);
  const auto component_of = [&](const StoredStatement& statement) {
    return components.of(statement.heads.front().predicate);
  };
  std::vector<char> has_loop(components.size());
  for (const StoredStatement& statement : store.statements()) {
    if (statement.kind != StatementKind::kRule) continue;
    each_body_atom(statement, [&](PredicateNumber predicate, bool is_negated) {
      if (is_negated && components.of(predicate) == component_of(statement)) {
        has_loop[component_of(statement)] = 1;
      }
    });
  }
  std::vector<StatementNumber> rules;
  for (StatementNumber number = 0; number < store.statements().size(); ++number) {
    const StoredStatement& statement = store.statement(number);
    if (statement.kind == StatementKind::kRule && has_loop[component_of(statement)] != 0) {
      rules.push_back(number);
    }
  }
  return rules;
}

}    // namespace dl
