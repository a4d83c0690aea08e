#include "dl/explain/support_graph.h"

namespace dl {

std::uint32_t SupportGraph::add_binding(const Binding& binding) {
  const auto number = static_cast<std::uint32_t>(bindings_.size());
  bindings_.insert(bindings_.end(), binding.begin(), binding.end());
  return number;
}

std::uint32_t SupportGraph::add(Split split, std::span<const AtomNumber> atoms) {
  split.atoms = static_cast<std::uint32_t>(split_atoms_.size());
  split.count = static_cast<std::uint32_t>(atoms.size());
  split_atoms_.insert(split_atoms_.end(), atoms.begin(), atoms.end());
  return append(splits_, split);
}

std::uint32_t SupportGraph::add(const Quota& quota) {
  first_uses_.push_back(kNothing);
  return append(quotas_, quota);
}

void SupportGraph::add_use(Point point, Owner owner) {
  first_uses_[point] = append(uses_, {point, owner, first_uses_[point]});
}

std::span<const GroundTerm> SupportGraph::binding(StatementNumber statement,
                                                  std::uint32_t number) const {
  return std::span(bindings_).subspan(number, store_.statement(statement).variables.size());
}

std::span<const AtomNumber> SupportGraph::atoms_of(const Split& split) const {
  return std::span(split_atoms_).subspan(split.atoms, split.count);
}

}    // namespace dl
