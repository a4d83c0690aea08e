#include "templates/linking.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <unordered_map>

#include "base/characters.h"
#include "model/names.h"
#include "model/program.h"
#include "model/run.h"
#include "model/safety.h"
#include "templates/generated_program.h"
#include "templates/opposites.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

// Variables that no clause of the program has: each stem's are made once and serve every expansion,
// since no clause holds those of two expansions.
class FreshVariables {
 public:
  TERMT get(std::string_view stem, std::size_t n) {
    std::vector<TERMT>& made = by_stem_[std::string(stem)];
    while (made.size() <= n) made.push_back(new_variable(stem, made.size()));
    return made[n];
  }

 private:
  static TERMT new_variable(std::string_view stem, std::size_t n) {
    std::string name = std::string(stem).append(std::to_string(n));
    while (names().find(name)) name += '_';
    const std::uint32_t number = LocalVariables().unused_number();
    Variables().enter(names().intern(name), number);
    return TERMT::variable(number);
  }

  std::unordered_map<std::string, std::vector<TERMT>> by_stem_;
};

struct Linking {
  std::unordered_map<std::string, std::uint32_t> expansions;
  std::unordered_map<std::string, int> labels;    // by local name: the last one given
  FreshVariables variables;
};

Linking& linking() {
  return current_run().parts.get<Linking>();
}

bool is_taken(const std::string& name) {
  const PredicateTable& predicates = ATOMT::Predicates();
  return predicates.contains(name) || (links_templates() && predicates.contains("-" + name));
}

using NameAndArity = std::pair<std::string, std::size_t>;

// What the projection of an actual predicate has, but for its label.
NameAndArity name_and_kept_arity(const ATOMT& actual) {
  const std::span<const TERMT> terms = actual.terms();
  const auto kept = std::count_if(terms.begin(), terms.end(),
                                  [](const TERMT& term) { return term.kind != TermKind::kDollar; });
  return {std::string(getNameWithoutPrefix(actual.name())), static_cast<std::size_t>(kept)};
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

std::uint32_t linked_expansion_of(const INVOCATIONATOM& invocation) {
  auto& expansions = linking().expansions;
  const auto next = static_cast<std::uint32_t>(expansions.size());
  return expansions.try_emplace(linked_key(invocation), next).first->second;
}

ATOMT program_atom(std::string_view name, NameId frame_space, std::span<const TERMT> terms,
                   Negation negation) {
  const NameId id = names().intern(name);
  if (!terms.empty()) return encoded_atom(id, frame_space, terms, negation);
  return addDefaultToAtomt(encoded_bare_atom(id, negation), frame_space);
}

ATOMT plain_projection_source(std::string_view name, std::span<const TERMT> terms) {
  if (!OptionHigherOrder()) return {name, terms, Type::kUnknown};
  std::vector<TERMT> list(terms.begin(), terms.end());
  list.push_back(TERMT::constant(names().intern(name)));
  return {"a_" + std::to_string(terms.size()), list, Type::kUnknown};
}

}    // namespace

bool links_templates() {
  return current_run().options.links_templates;
}

bool are_frames_local() {
  return !links_templates();
}

std::uint32_t expansion_of(const INVOCATIONATOM& invocation) {
  return links_templates() ? linked_expansion_of(invocation) : signature(invocation);
}

std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation, const BindingList& binding) {
  if (links_templates()) return linked_expansion_of(invocation);
  return internal_signature(invocation, binding);
}

std::uint32_t marker_key(std::uint32_t expansion) {
  return links_templates() ? expansion + 1 : 0;
}

bool is_scheduled_again(std::uint32_t expansion) {
  return !links_templates() || !invhashmap().contains(expansion);
}

bool is_global(const DEFINITIONATOM& definition, std::string_view name) {
  const std::optional<NameId> id = names().find(name);
  if (!id) return false;
  if (!links_templates()) return GLOBALS().contains(*id);
  return definition.globals.contains(*id);
}

std::string_view unlabelled(std::string_view name) {
  if (!links_templates()) return getNameWithoutPrefix(name);
  if (!name.starts_with('#')) return name;
  return name.substr(std::min(name.find_first_not_of("0123456789", 1), name.size()));
}

bool is_rewritten(const ATOMT& atom) {
  if (atom.payload() != ATOMT::Payload::kTerms) return false;
  if (ATOMT::Predicates().type(atom.predicate()) == Type::kBuiltin) return false;
  return !links_templates() || without_minus(atom.name()).starts_with('#');
}

TERMT group_variable(int n, const TERMT& parameter) {
  if (!links_templates()) return newTERMT(getNewName(n, parameter));
  return linking().variables.get("Group", static_cast<std::size_t>(n));
}

TERMT place_variable(std::span<const TERMT> arguments, int n) {
  if (!links_templates()) return newTERMT(getNameTerm(arguments, n));
  return linking().variables.get("Var", static_cast<std::size_t>(n));
}

std::string generated_name(std::string_view base, int& counter) {
  if (!links_templates()) return getNameLabeled(base, counter);
  std::string name;
  do {
    name = getNameLabeled(linked_stem(base), counter);
  } while (is_taken(name));
  return name;
}

// The search goes on where the last one for this name ended: names that were taken stay taken.
int free_label(const std::string& local) {
  int& label = linking().labels[local];
  while (is_taken(local_name(local, label))) ++label;
  return label;
}

std::string local_name(std::string_view local, int label) {
  return getNameLabeledConst(links_templates() ? linked_stem(local) : local, label);
}

ATOMT projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                        std::string_view name, std::span<const TERMT> terms) {
  if (!links_templates()) return plain_projection_source(name, terms);
  const std::optional<NameId> frame_space = invocation.origins[position].frame_space;
  if (!frame_space) return {name, terms, Type::kUnknown};
  const Negation negation = name.starts_with('-') ? Negation::kStrong : Negation::kNone;
  return program_atom(without_minus(name), *frame_space, terms, negation);
}

Literal global_source(const DEFINITIONATOM& definition, const ATOMT& atom, std::string_view name,
                      Negation negation) {
  if (links_templates()) {
    return {program_atom(name, definition.frame_space, atom.terms(), negation), false};
  }
  control_of_arity(atom);
  return {ATOMT(name, atom.terms(), Type::kUnknown), negation == Negation::kStrong};
}

ATOMT bridged(const ATOMT& atom) {
  if (!links_templates()) return atom;
  const StoredList<TERMT> terms = program_storage().store(atom.terms());
  int places = 0;
  for (TERMT& term : terms.elements()) {
    if (term.is_marker() || term.kind == TermKind::kAnonymous)
      term = place_variable(atom.terms(), places++);
  }
  return atom.with_terms(terms, 0);
}

std::vector<std::size_t> pattern_positions(std::span<const ATOMT> actuals,
                                           const BindingList& binding) {
  std::vector<std::size_t> positions(binding.size());
  std::iota(positions.begin(), positions.end(), 0);
  if (links_templates()) return positions;
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

std::vector<TERMT> merged_terms(std::span<const TERMT> terms, std::span<const TERMT> pattern) {
  if (!links_templates() && (terms.empty() || pattern.empty())) return {};
  return getTerms(terms, pattern);
}

bool stands_for_bound(std::span<const TERMT> parameters) {
  return links_templates() &&
         std::all_of(parameters.begin(), parameters.end(),
                     [](const TERMT& term) { return term.kind == TermKind::kAsterisk; });
}

bool are_formals_negated() {
  return links_templates();
}

bool are_nested_invocations_checked() {
  return links_templates();
}

bool are_nested_globals_bridged() {
  return links_templates();
}

std::vector<ATOMT> bridge_bindings(const BindingList& binding, std::span<const TERMT> group_by) {
  std::vector<ATOMT> atoms;
  if (group_by.empty()) return atoms;
  for (const auto& [formal, projection] : binding) {
    const ATOMT atom = soloGroup_by(group_by, projection, OtherTerms::kAnonymous);
    // An empty projection without group-by terms must not empty the global predicate.
    if (!links_templates() || existVarGroup(atom)) atoms.push_back(atom);
  }
  return atoms;
}

bool needs_safety(std::span<const Literal> body) {
  return links_templates() || std::any_of(body.begin(), body.end(), [](const Literal& literal) {
           return literal.atom.payload() == ATOMT::Payload::kTerms;
         });
}

std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& invocation, const BindingList& binding,
                                std::span<const TERMT> group_by) {
  return links_templates() ? bridge_bindings(binding, group_by)
                           : returnAtomsSafe(binding, invocation);
}

std::optional<ATOMT> group_atom(const ATOMT& safety) {
  if (!links_templates()) return std::nullopt;
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

std::string_view safety_name(const ATOMT& atom) {
  const std::string_view name = atom.name();
  return links_templates() ? name : cut_at_underscore(name, LeadingUnderscores::kKeep);
}

}    // namespace zarel
