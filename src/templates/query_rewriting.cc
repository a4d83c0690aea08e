#include "templates/query_rewriting.h"

#include <algorithm>
#include <vector>

#include "functions/function_terms.h"
#include "model/program.h"
#include "model/report.h"

namespace zarel {
namespace {

// Repeats are kept.
std::vector<TERMT> answer_variables(const Body& query) {
  std::vector<TERMT> variables;
  for (std::size_t i = 0; i < query.size(); ++i) {
    const std::span<const TERMT> terms = query[i].atom.terms();
    if (std::none_of(terms.begin(), terms.end(),
                     [](const TERMT& term) { return term.is_variable(); }))
      continue;
    for (const TERMT& term : terms) {
      if (term.is_variable()) variables.push_back(term);
      if (term.kind == TermKind::kFunctionTerm) variablesInFunctionTerm(variables, term);
    }
  }
  return variables;
}

}    // namespace

void rewriteQuery(Body& query) {
  const ATOMT answer("aux___query", answer_variables(query), PREDICATE_NAMETS::TYPE::kUnknown);
  rewriteFunctions(nullptr, query);
  CLAUSES().emplace_back(rule_of(answer, query),
                         ClauseSource{work().source().location, OriginId::kQuery});
  query.clear();
  query.add({answer, false});
}

}    // namespace zarel
