#include "templates/safety_literals.h"

#include <algorithm>
#include <unordered_set>

#include "model/names.h"
#include "model/safety.h"
#include "templates/group_terms.h"
#include "templates/linking.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

ATOMT with_bound_name(const ATOMT& actual, const BindingList& binding) {
  const std::string_view written = ATOMT::Predicates().name(actual.predicate());
  const std::string_view unsigned_name = written.substr(written.starts_with('-') ? 1 : 0);
  const auto bound = std::find_if(binding.begin(), binding.end(), [&](const auto& pair) {
    return pair.first == getNameWithoutPrefix(unsigned_name);
  });
  if (bound == binding.end()) return actual;
  const NameId name = ATOMT::Predicates().name_id(bound->second.predicate());
  return {name, actual.terms(), Type::kUnknown};
}

TCONJUNCTION<ATOMT> newConjunction(const BindingList& binding, std::span<const ATOMT> actuals) {
  TCONJUNCTION<ATOMT> renamed;
  for (const ATOMT& actual : actuals) renamed.add(with_bound_name(actual, binding));
  return renamed;
}

}    // namespace

ATOMT getAtomSafe(const ATOMT& atom) {
  std::vector<TERMT> terms(atom.terms().begin(), atom.terms().end());
  for (TERMT& term : terms) {
    const bool is_marker = term.kind == TermKind::kAsterisk || term.kind == TermKind::kDollar;
    if (is_marker) term = {TermKind::kAnonymous, 0};
  }
  const std::string_view name = ATOMT::Predicates().name(atom.predicate());
  return {cut_at_underscore(name, LeadingUnderscores::kKeep), terms, Type::kUnknown};
}

std::vector<ATOMT> returnAtomsSafe(const BindingList& binding, const INVOCATIONATOM& invocation) {
  const TCONJUNCTION<ATOMT> renamed = newConjunction(binding, invocation.actuals.positive());
  std::vector<ATOMT> safe;
  for (const ATOMT& atom : modifyCon(renamed)) safe.push_back(getAtomSafe(atom));
  return safe;
}

TCONJUNCTION<Literal> modifyRule(std::span<const ATOMT> safety, const Body& body) {
  std::unordered_set<std::string_view> present;
  for (const Literal& literal : body.positive()) present.insert(safety_name(literal.atom));
  TCONJUNCTION<Literal> needed;
  for (const ATOMT& atom : safety) {
    if (present.count(safety_name(atom)) == 0 && existVarGroup(atom)) needed.add({atom, false});
  }
  return needed;
}

}    // namespace zarel
