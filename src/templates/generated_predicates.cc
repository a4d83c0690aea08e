#include "templates/generated_predicates.h"

#include "base/text.h"
#include "model/names.h"
#include "model/printer.h"
#include "model/run.h"
#include "templates/atom_rewriting.h"
#include "templates/group_terms.h"

namespace zarel {
namespace {

std::string text_of(const TERMT& term) {
  Text text;
  append_text(text, term);
  return text.str();
}

}    // namespace

void GeneratedPredicates::begin_expansion(const INVOCATIONATOM& invocation,
                                          std::string_view result) {
  MadeExpansion made{invocation.name, {}, {}};
  const std::vector<TERMT> variables = getGroupBy(invocation);
  for (const ATOMT& actual : invocation.actuals.positive()) {
    const BodyName name = body_name(actual);
    MadeExpansion::Actual& added = made.actuals.emplace_back();
    added.predicate = name.text;
    added.is_strongly_negated = name.is_strongly_negated;
    const std::size_t place = made.actuals.size() - 1;
    if (place < invocation.origins.size() && invocation.origins[place].frame_space)
      added.frame_space = names().spelling(*invocation.origins[place].frame_space);
    for (const TERMT& term : actual.terms()) {
      added.parameters.push_back(text_of(term));
      if (term.is_marker()) continue;
      made.groups.emplace_back(text_of(variables[made.groups.size()]), added.parameters.back());
    }
  }
  const auto number = static_cast<std::uint32_t>(expansions_.size());
  expansions_.push_back(std::move(made));
  results_.emplace_back(result);
  predicates_.insert_or_assign(results_.back(),
                               GeneratedPredicate{GeneratedPredicate::Role::kResult, number, {}});
}

void GeneratedPredicates::add_local(std::string_view predicate, std::string_view name) {
  const auto number = static_cast<std::uint32_t>(expansions_.size() - 1);
  predicates_.insert_or_assign(
      std::string(without_minus(predicate)),
      GeneratedPredicate{GeneratedPredicate::Role::kLocal, number, std::string(name)});
}

void GeneratedPredicates::add_stand_in(std::string_view predicate) {
  predicates_.insert_or_assign(std::string(without_minus(predicate)),
                               GeneratedPredicate{GeneratedPredicate::Role::kStandsIn, 0, {}});
}

const GeneratedPredicate* GeneratedPredicates::find(std::string_view predicate) const {
  const auto found = predicates_.find(std::string(without_minus(predicate)));
  return found == predicates_.end() ? nullptr : &found->second;
}

GeneratedPredicates& generated_predicates() {
  return current_run().parts.get<GeneratedPredicates>();
}

}    // namespace zarel
