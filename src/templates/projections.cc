#include "templates/projections.h"

#include <algorithm>

#include "model/names.h"
#include "model/printer.h"
#include "model/run.h"
#include "templates/generated_predicates.h"
#include "templates/generated_program.h"
#include "templates/group_terms.h"
#include "templates/legend.h"
#include "templates/opposites.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

struct NestedInvocations {
  std::vector<ATOMT> value;
};

using Type = PREDICATE_NAMETS::TYPE;

constexpr std::int32_t kReplacedValue = 2;    // of the terms that soloGroup_by puts in

struct ProjectionTerms {
  std::vector<TERMT> head;
  std::vector<TERMT> body;
};

ProjectionTerms projection_terms(std::span<const TERMT> arguments) {
  ProjectionTerms terms;
  int places = 0;
  for (const TERMT& argument : arguments) {
    if (argument.kind == TermKind::kDollar) {
      terms.body.push_back({TermKind::kAnonymous, 0});
      continue;
    }
    const bool is_place = argument.kind == TermKind::kAsterisk;
    const TERMT term = is_place ? template_rules().place_variable(arguments, places++) : argument;
    terms.head.push_back(term);
    terms.body.push_back(term);
  }
  return terms;
}

std::string_view base_name(const ATOMT& actual) {
  const std::string_view name = actual.name();
  return name.starts_with('#') ? getNameWithoutPrefix(name) : name;
}

void write_line(std::ostream& legend, const ATOMT& projection, const INVOCATIONATOM& invocation) {
  Text text;
  append_text(text, projection);
  text += " : ";
  append_list(text, invocation.actuals, ", ");
  write_legend_line(legend, text.view());
}

}    // namespace

BindingList getProjections(const INVOCATIONATOM& invocation,
                           const TCONJUNCTION<FORMALPRED>& formals, int& counter,
                           std::ostream& legend) {
  const std::vector<ATOMT> actuals = modifyCon(invocation.actuals);
  const std::vector<TERMT> group_by = getGroupBy(invocation);
  BindingList binding;
  for (std::size_t i = 0; i < std::min(actuals.size(), formals.size()); ++i) {
    const std::string_view base = base_name(actuals[i]);
    const std::string name = template_rules().generated_name(base, counter);
    const ProjectionTerms terms = projection_terms(actuals[i].terms());
    const ATOMT projection(name, terms.head, Type::kUnknown);
    binding.emplace_back(formals[i].name, projection);
    generated_predicates().add_stand_in(name);
    write_line(legend, projection, invocation);
    const ATOMT source = template_rules().projection_source(invocation, i, base, terms.body);
    if (template_rules().are_formals_negated()) note_projection(projection, source);
    Body body;
    body.add({source, false});
    add_generated_rule(projection, body);
    if (group_by.empty()) continue;
    templateInn().push_back(soloGroup_by(group_by, projection, OtherTerms::kAnonymous));
  }
  return binding;
}

ATOMT soloGroup_by(std::span<const TERMT> group_by, const ATOMT& atom, OtherTerms others) {
  const TermKind kind =
      others == OtherTerms::kAsterisk ? TermKind::kAsterisk : TermKind::kAnonymous;
  std::vector<TERMT> terms;
  for (const TERMT& term : atom.terms()) {
    const bool is_kept = std::find(group_by.begin(), group_by.end(), term) != group_by.end();
    terms.push_back(is_kept ? term : TERMT{kind, kReplacedValue});
  }
  return {ATOMT::Predicates().name_id(atom.predicate()), terms, Type::kIdb};
}

std::vector<ATOMT>& templateInn() {
  return current_run().parts.get<NestedInvocations>().value;
}

}    // namespace zarel
