#include "templates/opposites.h"

#include <string>
#include <unordered_map>

#include "model/names.h"
#include "model/run.h"
#include "templates/generated_predicates.h"
#include "templates/generated_program.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

struct Projection {
  ATOMT atom;
  ATOMT source;
};

struct Projections {
  std::unordered_map<std::uint32_t, Projection> made;     // by predicate
  std::unordered_map<std::uint32_t, NameId> opposites;    // by predicate, in both directions
};

Projections& projections() {
  return current_run().parts.get<Projections>();
}

ATOMT with_other_sign(const ATOMT& atom) {
  const std::string_view name = atom.name();
  if (!name.starts_with('-')) return newNegativeATOMT(name, atom.terms());
  return {name.substr(1), atom.terms(), Type::kUnknown};
}

void make_opposite(const Projection& projection) {
  PredicateTable& predicates = ATOMT::Predicates();
  const std::uint32_t predicate = projection.atom.predicate();
  const std::string stem = "minus_" + getNameWithoutLabel(predicates.name(predicate));
  const ATOMT made(template_rules().local_name(stem, template_rules().free_label(stem)),
                   projection.atom.terms(), Type::kUnknown);
  generated_predicates().add_stand_in(made.name());
  const ATOMT source = opposite(projection.source);
  Body body;
  body.add({source, false});
  add_generated_rule(made, body);
  note_projection(made, source);
  projections().opposites.emplace(predicate, predicates.name_id(made.predicate()));
  projections().opposites.emplace(made.predicate(), predicates.name_id(predicate));
}

}    // namespace

void note_projection(const ATOMT& projection, const ATOMT& source) {
  projections().made.insert_or_assign(projection.predicate(), Projection{projection, source});
}

// See Note [opposites].
ATOMT opposite(const ATOMT& atom) {
  const std::uint32_t predicate = atom.predicate();
  const auto found = projections().made.find(predicate);
  if (found == projections().made.end()) return with_other_sign(atom);
  if (!projections().opposites.contains(predicate)) make_opposite(Projection(found->second));
  return {projections().opposites.at(predicate), atom.terms(), Type::kUnknown};
}

}    // namespace zarel
