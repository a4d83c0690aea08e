#include "templates/safety_literals.h"

#include <algorithm>
#include <unordered_set>

#include "model/names.h"
#include "model/safety.h"
#include "templates/group_terms.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

ATOMT with_bound_name(const ATOMT& actual, const BindingList& binding) {
  const std::string_view name = getNameWithoutPrefix(without_minus(actual.name()));
  const auto bound = std::find_if(binding.begin(), binding.end(),
                                  [&](const auto& pair) { return pair.first == name; });
  if (bound == binding.end()) return actual;
  const NameId bound_name = ATOMT::Predicates().name_id(bound->second.predicate());
  return {bound_name, actual.terms(), Type::kUnknown};
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
    if (term.is_marker()) term = {TermKind::kAnonymous, 0};
  }
  return {cut_at_underscore(atom.name(), LeadingUnderscores::kKeep), terms, Type::kUnknown};
}

std::vector<ATOMT> returnAtomsSafe(const BindingList& binding, const INVOCATIONATOM& invocation) {
  const TCONJUNCTION<ATOMT> renamed = newConjunction(binding, invocation.actuals.positive());
  std::vector<ATOMT> safe;
  for (const ATOMT& atom : modifyCon(renamed)) safe.push_back(getAtomSafe(atom));
  return safe;
}

TCONJUNCTION<Literal> modifyRule(std::span<const ATOMT> safety, const Body& body) {
  std::unordered_set<std::string_view> present;
  for (const Literal& literal : body.positive())
    present.insert(template_rules().safety_name(literal.atom));
  TCONJUNCTION<Literal> needed;
  for (const ATOMT& atom : safety) {
    if (present.count(template_rules().safety_name(atom)) == 0 && existVarGroup(atom))
      needed.add({atom, false});
  }
  return needed;
}

}    // namespace zarel
