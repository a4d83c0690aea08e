#include "templates/linked_rules.h"

#include <algorithm>
#include <numeric>

#include "base/characters.h"
#include "model/names.h"
#include "model/run.h"
#include "model/safety.h"
#include "templates/generated_program.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

TERMT new_variable(std::string_view stem, std::size_t n) {
  std::string name = std::string(stem).append(std::to_string(n));
  while (names().find(name)) name += '_';
  const std::uint32_t number = LocalVariables().unused_number();
  Variables().enter(names().intern(name), number);
  return TERMT::variable(number);
}

// What a generated predicate can be called after: a name that the solver takes for a predicate's,
// and that never makes a generic a_N.
std::string_view linked_stem(std::string_view name) {
  const std::string_view plain = without_minus(name);
  const bool is_plain_name = !plain.empty() && is_lower_case(plain[0]);
  return is_plain_name && plain != "a" ? plain : "relation";
}

void append_number(std::string& key, std::uint64_t number) {
  key.append(std::to_string(number)).append(",");
}

std::string linked_key(const INVOCATIONATOM& invocation) {
  std::string key = invocation.name;
  for (const ActualOrigin& origin : invocation.origins) {
    key += ';';
    append_number(key, origin.shape.predicate());
    append_number(key, origin.frame_space ? to_index(*origin.frame_space) + std::uint64_t{1} : 0);
    for (const TERMT& term : origin.shape.terms()) {
      const TermKind kind = term.is_marker() ? term.kind : TermKind::kVariable;
      append_number(key, static_cast<std::uint64_t>(kind));
    }
  }
  return key;
}

ATOMT program_atom(std::string_view name, NameId frame_space, std::span<const TERMT> terms,
                   Negation negation) {
  const NameId id = names().intern(name);
  if (!terms.empty()) return encoded_atom(id, frame_space, terms, negation);
  return addDefaultToAtomt(encoded_bare_atom(id, negation), frame_space);
}

}    // namespace

TERMT FreshVariables::get(std::string_view stem, std::size_t n) {
  std::vector<TERMT>& made = by_stem_[std::string(stem)];
  while (made.size() <= n) made.push_back(new_variable(stem, made.size()));
  return made[n];
}

bool LinkedRules::are_frames_local() {
  return false;
}

std::uint32_t LinkedRules::expansion_of(const INVOCATIONATOM& invocation) {
  const auto next = static_cast<std::uint32_t>(expansions_.size());
  return expansions_.try_emplace(linked_key(invocation), next).first->second;
}

std::uint32_t LinkedRules::nested_expansion_of(const INVOCATIONATOM& invocation,
                                               const BindingList& /*binding*/) {
  return expansion_of(invocation);
}

std::uint32_t LinkedRules::marker_key(std::uint32_t expansion) {
  return expansion + 1;
}

bool LinkedRules::is_scheduled_again(std::uint32_t expansion) {
  return !invhashmap().contains(expansion);
}

bool LinkedRules::is_global(const DEFINITIONATOM& definition, std::string_view name) {
  const std::optional<NameId> id = names().find(name);
  return id && definition.globals.contains(*id);
}

std::string_view LinkedRules::unlabelled(std::string_view name) {
  if (!name.starts_with('#')) return name;
  return name.substr(std::min(name.find_first_not_of("0123456789", 1), name.size()));
}

bool LinkedRules::is_of_template(const ATOMT& atom) {
  return without_minus(atom.name()).starts_with('#');
}

bool LinkedRules::is_taken(const std::string& name) {
  const PredicateTable& predicates = ATOMT::Predicates();
  return predicates.contains(name) || predicates.contains("-" + name);
}

TERMT LinkedRules::group_variable(int n, const TERMT& /*parameter*/) {
  return variables_.get("Group", static_cast<std::size_t>(n));
}

TERMT LinkedRules::place_variable(std::span<const TERMT> /*arguments*/, int n) {
  return variables_.get("Var", static_cast<std::size_t>(n));
}

std::string LinkedRules::generated_name(std::string_view base, int& counter) {
  std::string name;
  do {
    name = getNameLabeled(linked_stem(base), counter);
  } while (is_taken(name));
  return name;
}

std::string LinkedRules::local_name(std::string_view local, int label) {
  return getNameLabeledConst(linked_stem(local), label);
}

ATOMT LinkedRules::projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                                     std::string_view name, std::span<const TERMT> terms) {
  const std::optional<NameId> frame_space = invocation.origins[position].frame_space;
  if (!frame_space) return {name, terms, Type::kUnknown};
  const Negation negation = name.starts_with('-') ? Negation::kStrong : Negation::kNone;
  return program_atom(without_minus(name), *frame_space, terms, negation);
}

Literal LinkedRules::global_source(const DEFINITIONATOM& definition, const ATOMT& atom,
                                   std::string_view name, Negation negation) {
  return {program_atom(name, definition.frame_space, atom.terms(), negation), false};
}

ATOMT LinkedRules::bridged(const ATOMT& atom) {
  const StoredList<TERMT> terms = program_storage().store(atom.terms());
  int places = 0;
  for (TERMT& term : terms.elements()) {
    if (term.is_marker() || term.kind == TermKind::kAnonymous)
      term = place_variable(atom.terms(), places++);
  }
  return atom.with_terms(terms, 0);
}

std::vector<std::size_t> LinkedRules::pattern_positions(std::span<const ATOMT> /*actuals*/,
                                                        const BindingList& binding) {
  std::vector<std::size_t> positions(binding.size());
  std::iota(positions.begin(), positions.end(), 0);
  return positions;
}

std::vector<TERMT> LinkedRules::merged_terms(std::span<const TERMT> terms,
                                             std::span<const TERMT> pattern) {
  return getTerms(terms, pattern);
}

bool LinkedRules::stands_for_bound(std::span<const TERMT> parameters) {
  return std::all_of(parameters.begin(), parameters.end(),
                     [](const TERMT& term) { return term.kind == TermKind::kAsterisk; });
}

bool LinkedRules::are_formals_negated() {
  return true;
}

bool LinkedRules::are_nested_invocations_checked() {
  return true;
}

bool LinkedRules::are_nested_globals_bridged() {
  return true;
}

std::vector<ATOMT> LinkedRules::bridge_bindings(const BindingList& binding,
                                                std::span<const TERMT> group_by) {
  std::vector<ATOMT> atoms;
  if (group_by.empty()) return atoms;
  for (const auto& [formal, projection] : binding) {
    const ATOMT atom = soloGroup_by(group_by, projection, OtherTerms::kAnonymous);
    // An empty projection without group-by terms must not empty the global predicate.
    if (existVarGroup(atom)) atoms.push_back(atom);
  }
  return atoms;
}

bool LinkedRules::needs_safety(std::span<const Literal> /*body*/) {
  return true;
}

std::vector<ATOMT> LinkedRules::safety_atoms(const INVOCATIONATOM& /*invocation*/,
                                             const BindingList& binding,
                                             std::span<const TERMT> group_by) {
  return bridge_bindings(binding, group_by);
}

std::optional<ATOMT> LinkedRules::group_atom(const ATOMT& safety) {
  std::vector<TERMT> group;
  for (const TERMT& term : safety.terms()) {
    if (term.kind != TermKind::kAnonymous) group.push_back(term);
  }
  if (group.size() == safety.terms().size()) return std::nullopt;
  const std::string stem = "group";
  const ATOMT atom(local_name(stem, free_label(stem)), group, Type::kUnknown);
  Body body;
  body.add({safety, false});
  add_generated_rule(atom, body);
  return atom;
}

std::string_view LinkedRules::safety_name(const ATOMT& atom) {
  return atom.name();
}

}    // namespace zarel
