#include "dl/explain/head_index.h"

#include <unordered_set>

namespace dl {

HeadIndex::Heads HeadIndex::heads(PredicateNumber predicate,
                                  std::span<const GroundTerm> arguments) {
  auto found = entries_.find(predicate);
  if (found == entries_.end()) {
    found = entries_.emplace(predicate, entry_of(predicate, arguments.size())).first;
  }
  const Entry& entry = found->second;
  if (arguments.empty()) return {{}, entry.open};
  const auto exact = entry.exact.find(arguments[entry.place]);
  if (exact == entry.exact.end()) return {{}, entry.open};
  return {exact->second, entry.open};
}

// The term that every instance of the head has at the place; nothing where it has a variable.
std::optional<GroundTerm> HeadIndex::constant(const HeadUse& use, std::uint32_t place) const {
  const StoredStatement& statement = store_.statement(use.statement);
  const TermPattern& term = statement.terms[statement.heads[use.head].arguments[place]];
  if (term.kind != TermPattern::Kind::kGround) return std::nullopt;
  return term.ground;
}

// The place that tells most heads apart is the one with most constants.
HeadIndex::Entry HeadIndex::entry_of(PredicateNumber predicate, std::size_t arity) const {
  Entry entry;
  const std::span<const HeadUse> uses = store_.heads_of(predicate);
  std::size_t most = 0;
  for (std::uint32_t place = 0; place < arity; ++place) {
    std::unordered_set<GroundTerm> constants;
    for (const HeadUse& use : uses) {
      if (const auto term = constant(use, place)) constants.insert(*term);
    }
    if (constants.size() <= most) continue;
    most = constants.size();
    entry.place = place;
  }
  for (const HeadUse& use : uses) {
    const auto term = arity == 0 ? std::nullopt : constant(use, entry.place);
    (term ? entry.exact[*term] : entry.open).push_back(use);
  }
  return entry;
}

}    // namespace dl
