#include "templates/atom_rewriting.h"

#include "model/names.h"
#include "templates/generated_predicates.h"
#include "templates/generated_program.h"
#include "templates/group_terms.h"
#include "templates/opposites.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

Negation negation_of(const BodyName& name) {
  return name.is_strongly_negated ? Negation::kStrong : Negation::kNone;
}

ATOMT plain_atom(std::string_view name, std::span<const TERMT> terms, Negation negation) {
  if (negation == Negation::kStrong) return newNegativeATOMT(name, terms);
  return {name, terms, Type::kUnknown};
}

std::vector<TERMT> grouped(const Expansion& expansion, std::span<const TERMT> terms) {
  std::vector<TERMT> list = expansion.group_by();
  list.insert(list.end(), terms.begin(), terms.end());
  return list;
}

ATOMT own_atom(const Expansion& expansion, const ATOMT& atom, const BodyName& name) {
  return plain_atom(expansion.generated(), grouped(expansion, atom.terms()), negation_of(name));
}

ATOMT local_atom(Expansion& expansion, const ATOMT& atom, const BodyName& name) {
  const std::string renamed = template_rules().local_name(name.text, expansion.label(name.text));
  return plain_atom(renamed, grouped(expansion, atom.terms()), negation_of(name));
}

bool asks_for_opposite(const BodyName& formal) {
  return formal.is_strongly_negated && template_rules().are_formals_negated();
}

ATOMT formal_atom(const Expansion& expansion, const ATOMT& atom, const BodyName& name,
                  std::size_t place) {
  const std::uint32_t predicate = expansion.binding()[place].second.predicate();
  const ATOMT bound(ATOMT::Predicates().name_id(predicate),
                    expansion.formal_terms(place, atom.terms()), Type::kUnknown);
  return asks_for_opposite(name) ? opposite(bound) : bound;
}

void add_bridge(Expansion& expansion, const ATOMT& atom) {
  const BodyName name = body_name(atom);
  const ATOMT global = template_rules().bridged(atom);
  const ATOMT local = local_atom(expansion, global, name);
  generated_predicates().add_stand_in(local.name());
  Body body;
  body.add(
      template_rules().global_source(expansion.definition(), global, name.text, negation_of(name)));
  for (const ATOMT& bound :
       template_rules().bridge_bindings(expansion.binding(), expansion.group_by())) {
    body.add({bound, false});
  }
  add_generated_rule(local, body);
}

struct NestedActual {
  ATOMT atom;
  ActualOrigin origin;
};

NestedActual plain(const ATOMT& atom) {
  return {atom, {atom, std::nullopt}};
}

// A formal predicate handed on whole.
NestedActual bound_actual(const Expansion& expansion, const BodyName& name, std::size_t place) {
  const ATOMT& actual = expansion.actuals()[place];
  const ActualOrigin& origin = expansion.invocation().origins[place];
  if (!asks_for_opposite(name)) return {actual, origin};
  return {opposite(actual), {opposite(origin.shape), origin.frame_space}};
}

NestedActual nested_actual(Expansion& expansion, const ATOMT& actual) {
  const BodyName name = body_name(actual);
  if (template_rules().is_global(expansion.definition(), name.text)) {
    if (template_rules().are_nested_globals_bridged()) {
      add_bridge(expansion, actual);
      add_bridge(expansion, opposite(actual));
    }
    return plain(local_atom(expansion, actual, name));
  }
  if (const auto place = expansion.formal(name.text)) {
    if (template_rules().stands_for_bound(actual.terms()))
      return bound_actual(expansion, name, *place);
    return plain(formal_atom(expansion, actual, name, *place));
  }
  if (name.text == expansion.invocation().name) return plain(own_atom(expansion, actual, name));
  return plain(local_atom(expansion, actual, name));
}

}    // namespace

Expansion::Expansion(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition,
                     std::string_view generated, const BindingList& binding)
    : invocation_(invocation),
      definition_(definition),
      generated_(generated),
      binding_(binding),
      group_by_(getGroupBy(invocation)),
      actuals_(modifyCon(invocation.actuals)),
      patterns_(template_rules().pattern_positions(actuals_, binding)) {
  for (std::size_t place = 0; place < binding.size(); ++place) {
    formals_.emplace(binding[place].first, place);
  }
}

std::optional<std::size_t> Expansion::formal(std::string_view name) const {
  const auto found = formals_.find(name);
  if (found == formals_.end()) return std::nullopt;
  return found->second;
}

std::vector<TERMT> Expansion::formal_terms(std::size_t place, std::span<const TERMT> terms) const {
  return template_rules().merged_terms(terms, actuals_[patterns_[place]].terms());
}

int Expansion::label(std::string_view local) {
  const auto [entry, is_new] = labels_.try_emplace(std::string(local), 0);
  if (is_new) {
    entry->second = template_rules().free_label(entry->first);
    generated_predicates().add_local(template_rules().local_name(local, entry->second), local);
  }
  return entry->second;
}

BodyName body_name(const ATOMT& atom) {
  const std::string_view name = atom.name();
  return {template_rules().unlabelled(without_minus(name)), name.starts_with('-')};
}

ATOMT getAtom(Expansion& expansion, const ATOMT& atom) {
  if (!template_rules().is_rewritten(atom)) return atom;
  const BodyName name = body_name(atom);
  if (template_rules().is_global(expansion.definition(), name.text)) {
    add_bridge(expansion, atom);
    return local_atom(expansion, atom, name);
  }
  if (const auto place = expansion.formal(name.text)) {
    return formal_atom(expansion, atom, name, *place);
  }
  if (name.text == expansion.invocation().name) return own_atom(expansion, atom, name);
  return local_atom(expansion, atom, name);
}

NestedActuals newConjunction(Expansion& expansion, std::span<const ATOMT> actuals) {
  NestedActuals rewritten;
  for (const ATOMT& actual : actuals) {
    const NestedActual nested = nested_actual(expansion, actual);
    rewritten.atoms.add(nested.atom);
    rewritten.origins.push_back(nested.origin);
  }
  return rewritten;
}

INVOCATIONATOM conjTemplInnestati(Expansion& expansion, const ATOMT& marker) {
  const INVOCATIONATOM written = invocation_of(marker);
  NestedActuals actuals = newConjunction(expansion, written.actuals.positive());
  INVOCATIONATOM rewritten{written.name, written.outputTerms, std::move(actuals.atoms),
                           std::move(actuals.origins)};
  rewritten.level = expansion.invocation().level + 1;
  rewritten.written = marker.invocation().written;
  return rewritten;
}

}    // namespace zarel
