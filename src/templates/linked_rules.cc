// linked_rules.cc - what templates mean with "-linktemplates". See Note [linked templates].

#include <algorithm>
#include <numeric>
#include <string>
#include <unordered_map>

#include "base/characters.h"
#include "model/names.h"
#include "model/run.h"
#include "model/safety.h"
#include "templates/generated_predicates.h"
#include "templates/generated_program.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"
#include "templates/template_rules.h"

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

// What a linked expansion is known by: numbers, those of an actual predicate behind their count.
using LinkedKey = std::u32string;

void set_linked_key(LinkedKey& key, const INVOCATIONATOM& invocation) {
  key.assign(1, static_cast<char32_t>(names().intern(invocation.name)));
  for (const ActualOrigin& origin : invocation.origins) {
    const std::span<const TERMT> terms = origin.shape.terms();
    key += static_cast<char32_t>(terms.size());
    key += static_cast<char32_t>(origin.shape.predicate());
    key += origin.frame_space ? static_cast<char32_t>(*origin.frame_space) + 1 : char32_t{0};
    for (const TERMT& term : terms) {
      key += static_cast<char32_t>(term.is_marker() ? term.kind : TermKind::kVariable);
    }
  }
}

ATOMT program_atom(std::string_view name, NameId frame_space, std::span<const TERMT> terms,
                   Negation negation) {
  const NameId id = names().intern(name);
  if (!terms.empty()) return encoded_atom(id, frame_space, terms, negation);
  return addDefaultToAtomt(encoded_bare_atom(id, negation), frame_space);
}

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
  std::unordered_map<std::string, std::vector<TERMT>> by_stem_;
};

class LinkedRules : public TemplateRules {
 public:
  bool are_frames_local() override { return false; }

  std::uint32_t expansion_of(const INVOCATIONATOM& invocation) override {
    const auto next = static_cast<std::uint32_t>(expansions_.size());
    set_linked_key(key_, invocation);
    return expansions_.try_emplace(key_, next).first->second;
  }

  std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation,
                                    const BindingList& /*binding*/) override {
    return expansion_of(invocation);
  }

  std::uint32_t marker_key(std::uint32_t expansion) override { return expansion + 1; }

  bool is_scheduled_again(std::uint32_t expansion) override {
    return !invhashmap().contains(expansion);
  }

  bool is_global(const DEFINITIONATOM& definition, std::string_view name) override {
    const std::optional<NameId> id = names().find(name);
    return id && definition.globals.contains(*id);
  }

  std::string_view unlabelled(std::string_view name) override {
    if (!name.starts_with('#')) return name;
    return name.substr(std::min(name.find_first_not_of("0123456789", 1), name.size()));
  }

  TERMT group_variable(int n, const TERMT& /*parameter*/) override {
    return variables_.get("Group", static_cast<std::size_t>(n));
  }

  TERMT place_variable(std::span<const TERMT> /*arguments*/, int n) override {
    return variables_.get("Var", static_cast<std::size_t>(n));
  }

  std::string generated_name(std::string_view base, int& counter) override {
    std::string name;
    do {
      name = getNameLabeled(linked_stem(base), counter);
    } while (is_taken(name));
    return name;
  }

  std::string local_name(std::string_view local, int label) override {
    return getNameLabeledConst(linked_stem(local), label);
  }

  ATOMT projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                          std::string_view name, std::span<const TERMT> terms) override {
    const std::optional<NameId> frame_space = invocation.origins[position].frame_space;
    if (!frame_space) return {name, terms, Type::kUnknown};
    const Negation negation = name.starts_with('-') ? Negation::kStrong : Negation::kNone;
    return program_atom(without_minus(name), *frame_space, terms, negation);
  }

  Literal global_source(const DEFINITIONATOM& definition, const ATOMT& atom, std::string_view name,
                        Negation negation) override {
    return {program_atom(name, definition.frame_space, atom.terms(), negation), false};
  }

  ATOMT bridged(const ATOMT& atom) override {
    const StoredList<TERMT> terms = program_storage().store(atom.terms());
    int places = 0;
    for (TERMT& term : terms.elements()) {
      if (term.is_marker() || term.kind == TermKind::kAnonymous)
        term = place_variable(atom.terms(), places++);
    }
    return atom.with_terms(terms, 0);
  }

  std::vector<std::size_t> pattern_positions(std::span<const ATOMT> /*actuals*/,
                                             const BindingList& binding) override {
    std::vector<std::size_t> positions(binding.size());
    std::iota(positions.begin(), positions.end(), 0);
    return positions;
  }

  std::vector<TERMT> merged_terms(std::span<const TERMT> terms,
                                  std::span<const TERMT> pattern) override {
    return getTerms(terms, pattern);
  }

  bool stands_for_bound(std::span<const TERMT> parameters) override {
    return std::all_of(parameters.begin(), parameters.end(),
                       [](const TERMT& term) { return term.kind == TermKind::kAsterisk; });
  }

  bool are_formals_negated() override { return true; }

  bool are_nested_invocations_checked() override { return true; }

  bool are_nested_globals_bridged() override { return true; }

  std::vector<ATOMT> bridge_bindings(const BindingList& binding,
                                     std::span<const TERMT> group_by) override {
    std::vector<ATOMT> atoms;
    if (group_by.empty()) return atoms;
    for (const auto& [formal, projection] : binding) {
      const ATOMT atom = soloGroup_by(group_by, projection, OtherTerms::kAnonymous);
      // An empty projection without group-by terms must not empty the global predicate.
      if (existVarGroup(atom)) atoms.push_back(atom);
    }
    return atoms;
  }

  bool needs_safety(std::span<const Literal> /*body*/) override { return true; }

  std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& /*invocation*/, const BindingList& binding,
                                  std::span<const TERMT> group_by) override {
    return bridge_bindings(binding, group_by);
  }

  std::optional<ATOMT> group_atom(const ATOMT& safety) override {
    std::vector<TERMT> group;
    for (const TERMT& term : safety.terms()) {
      if (term.kind != TermKind::kAnonymous) group.push_back(term);
    }
    if (group.size() == safety.terms().size()) return std::nullopt;
    const std::string stem = "group";
    const ATOMT atom(local_name(stem, free_label(stem)), group, Type::kUnknown);
    generated_predicates().add_stand_in(atom.name());
    Body body;
    body.add({safety, false});
    add_generated_rule(atom, body);
    return atom;
  }

  std::string_view safety_name(const ATOMT& atom) override { return atom.name(); }

 protected:
  bool is_of_template(const ATOMT& atom) override {
    return without_minus(atom.name()).starts_with('#');
  }

  bool is_taken(const std::string& name) override {
    const PredicateTable& predicates = ATOMT::Predicates();
    return predicates.contains(name) || predicates.contains("-" + name);
  }

 private:
  std::unordered_map<LinkedKey, std::uint32_t> expansions_;    // by what they mean
  LinkedKey key_;                                              // made here, over and over
  FreshVariables variables_;
};

}    // namespace

TemplateRules& linked_rules() {
  return current_run().parts.get<LinkedRules>();
}

}    // namespace zarel
