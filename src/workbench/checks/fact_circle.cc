#include "workbench/checks/fact_circle.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "model/generic_encoding.h"

namespace workbench {
namespace {

using zarel::CLAUSET;
using zarel::TermKind;
using zarel::TERMT;

class Graph {
 public:
  void add(const TERMT& from, const TERMT& to) {
    const std::uint32_t begin = number_of(from);
    const std::uint32_t end = number_of(to);
    next_[begin].push_back(end);
  }

  // Goes on as long as it can, and back a step; what it meets on its own way is on a circle.
  const TERMT* on_circle() const {
    enum class State : std::uint8_t { kNew, kOnWay, kDone };
    std::vector<State> states(terms_.size(), State::kNew);
    std::vector<std::pair<std::uint32_t, std::size_t>> way;
    for (std::uint32_t root = 0; root < terms_.size(); ++root) {
      if (states[root] != State::kNew) continue;
      way.emplace_back(root, 0);
      states[root] = State::kOnWay;
      while (!way.empty()) {
        auto& [at, step] = way.back();
        if (step == next_[at].size()) {
          states[at] = State::kDone;
          way.pop_back();
          continue;
        }
        const std::uint32_t to = next_[at][step++];
        if (states[to] == State::kOnWay) return &terms_[to];
        if (states[to] == State::kDone) continue;
        states[to] = State::kOnWay;
        way.emplace_back(to, 0);
      }
    }
    return nullptr;
  }

 private:
  std::uint32_t number_of(const TERMT& term) {
    const std::uint64_t key = (static_cast<std::uint64_t>(term.kind) << 32U) | term.index();
    const auto number = static_cast<std::uint32_t>(terms_.size());
    const auto [entry, is_new] = numbers_.try_emplace(key, number);
    if (is_new) {
      terms_.push_back(term);
      next_.emplace_back();
    }
    return entry->second;
  }

  std::unordered_map<std::uint64_t, std::uint32_t> numbers_;
  std::vector<TERMT> terms_;
  std::vector<std::vector<std::uint32_t>> next_;
};

bool is_constant(const TERMT& term, zarel::NameId name) {
  return term.kind == TermKind::kConstant && term.index() == zarel::to_index(name);
}

}    // namespace

std::optional<std::string> circle_in_facts(const zarel::Run& run, const Arrows& arrows) {
  std::string encoded(zarel::kGenericStem);
  const auto predicate = run.predicates.find(encoded += std::to_string(arrows.arity + 1));
  if (!predicate) return std::nullopt;
  Graph graph;
  for (const CLAUSET& clause : run.clauses) {
    if (clause.head().size() != 1 || !clause.body().empty()) continue;
    const zarel::ATOMT& atom = clause.head().front();
    if (atom.predicate() != *predicate) continue;
    const auto terms = atom.terms();    // the relation, the frame space, its arguments
    if (terms.size() != arrows.arity + 2 || !is_constant(terms[0], arrows.name) ||
        !is_constant(terms[1], arrows.space))
      continue;
    graph.add(terms[arrows.from + 1], terms[arrows.to + 1]);
  }
  const TERMT* const found = graph.on_circle();
  if (found == nullptr) return std::nullopt;
  if (found->kind == TermKind::kInteger) return std::to_string(found->value());
  return std::string(run.names.spelling(zarel::NameId{found->index()}));
}

}    // namespace workbench
