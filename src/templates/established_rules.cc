#include "templates/established_rules.h"

#include <algorithm>
#include <map>
#include <numeric>

#include "model/names.h"
#include "model/program.h"
#include "model/run.h"
#include "model/safety.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

using NameAndArity = std::pair<std::string, std::size_t>;

// What the projection of an actual predicate has, but for its label.
NameAndArity name_and_kept_arity(const ATOMT& actual) {
  const std::span<const TERMT> terms = actual.terms();
  const auto kept = std::count_if(terms.begin(), terms.end(),
                                  [](const TERMT& term) { return term.kind != TermKind::kDollar; });
  return {std::string(getNameWithoutPrefix(actual.name())), static_cast<std::size_t>(kept)};
}

}    // namespace

bool EstablishedRules::are_frames_local() {
  return true;
}

std::uint32_t EstablishedRules::expansion_of(const INVOCATIONATOM& invocation) {
  return signature(invocation);
}

std::uint32_t EstablishedRules::nested_expansion_of(const INVOCATIONATOM& invocation,
                                                    const BindingList& binding) {
  return internal_signature(invocation, binding);
}

std::uint32_t EstablishedRules::marker_key(std::uint32_t /*expansion*/) {
  return 0;
}

bool EstablishedRules::is_scheduled_again(std::uint32_t /*expansion*/) {
  return true;
}

bool EstablishedRules::is_global(const DEFINITIONATOM& /*definition*/, std::string_view name) {
  const std::optional<NameId> id = names().find(name);
  return id && GLOBALS().contains(*id);
}

std::string_view EstablishedRules::unlabelled(std::string_view name) {
  return getNameWithoutPrefix(name);
}

bool EstablishedRules::is_of_template(const ATOMT& /*atom*/) {
  return true;
}

bool EstablishedRules::is_taken(const std::string& name) {
  return ATOMT::Predicates().contains(name);
}

TERMT EstablishedRules::group_variable(int n, const TERMT& parameter) {
  return newTERMT(getNewName(n, parameter));
}

TERMT EstablishedRules::place_variable(std::span<const TERMT> arguments, int n) {
  return newTERMT(getNameTerm(arguments, n));
}

std::string EstablishedRules::generated_name(std::string_view base, int& counter) {
  return getNameLabeled(base, counter);
}

std::string EstablishedRules::local_name(std::string_view local, int label) {
  return getNameLabeledConst(local, label);
}

ATOMT EstablishedRules::projection_source(const INVOCATIONATOM& /*invocation*/,
                                          std::size_t /*position*/, std::string_view name,
                                          std::span<const TERMT> terms) {
  if (!OptionHigherOrder()) return {name, terms, Type::kUnknown};
  std::vector<TERMT> list(terms.begin(), terms.end());
  list.push_back(TERMT::constant(names().intern(name)));
  return {"a_" + std::to_string(terms.size()), list, Type::kUnknown};
}

Literal EstablishedRules::global_source(const DEFINITIONATOM& /*definition*/, const ATOMT& atom,
                                        std::string_view name, Negation negation) {
  control_of_arity(atom);
  return {ATOMT(name, atom.terms(), Type::kUnknown), negation == Negation::kStrong};
}

ATOMT EstablishedRules::bridged(const ATOMT& atom) {
  return atom;
}

std::vector<std::size_t> EstablishedRules::pattern_positions(std::span<const ATOMT> actuals,
                                                             const BindingList& binding) {
  std::vector<std::size_t> positions(binding.size());
  std::iota(positions.begin(), positions.end(), 0);
  std::map<NameAndArity, std::size_t> first_with;
  for (std::size_t i = 0; i < actuals.size(); ++i) {
    first_with.try_emplace(name_and_kept_arity(actuals[i]), i);
  }
  for (std::size_t& position : positions) {
    const ATOMT& bound = binding[position].second;
    const auto found = first_with.find({getNameWithoutLabel(bound.name()), bound.terms().size()});
    if (found != first_with.end()) position = found->second;
  }
  return positions;
}

std::vector<TERMT> EstablishedRules::merged_terms(std::span<const TERMT> terms,
                                                  std::span<const TERMT> pattern) {
  if (terms.empty() || pattern.empty()) return {};
  return getTerms(terms, pattern);
}

bool EstablishedRules::stands_for_bound(std::span<const TERMT> /*parameters*/) {
  return false;
}

bool EstablishedRules::are_formals_negated() {
  return false;
}

bool EstablishedRules::are_nested_invocations_checked() {
  return false;
}

bool EstablishedRules::are_nested_globals_bridged() {
  return false;
}

std::vector<ATOMT> EstablishedRules::bridge_bindings(const BindingList& binding,
                                                     std::span<const TERMT> group_by) {
  std::vector<ATOMT> atoms;
  if (group_by.empty()) return atoms;
  for (const auto& [formal, projection] : binding) {
    atoms.push_back(soloGroup_by(group_by, projection, OtherTerms::kAnonymous));
  }
  return atoms;
}

bool EstablishedRules::needs_safety(std::span<const Literal> body) {
  return std::any_of(body.begin(), body.end(), [](const Literal& literal) {
    return literal.atom.payload() == ATOMT::Payload::kTerms;
  });
}

std::vector<ATOMT> EstablishedRules::safety_atoms(const INVOCATIONATOM& invocation,
                                                  const BindingList& binding,
                                                  std::span<const TERMT> /*group_by*/) {
  return returnAtomsSafe(binding, invocation);
}

std::optional<ATOMT> EstablishedRules::group_atom(const ATOMT& /*safety*/) {
  return std::nullopt;
}

std::string_view EstablishedRules::safety_name(const ATOMT& atom) {
  return cut_at_underscore(atom.name(), LeadingUnderscores::kKeep);
}

}    // namespace zarel
