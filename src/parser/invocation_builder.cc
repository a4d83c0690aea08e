#include "parser/invocation_builder.h"

#include <string>
#include <utility>

#include "model/report.h"
#include "templates/invocations.h"
#include "templates/template_rules.h"

namespace zarel {

ATOMT InvocationBuilder::told(WrittenName name, std::span<const TERMT> parameters,
                              Negation negation) {
  if (tree_.is_open()) {
    WrittenNode& node = tree_.named(WrittenKind::kActual, parameters.size(), name.id, name.place);
    node.is_strongly_negated = negation == Negation::kStrong;
    node.second_name = spaces_.currentDefaultNs();
  }
  return atoms_.plain_atom(name, parameters, negation);
}

ATOMT InvocationBuilder::actual(WrittenName name, Negation negation) {
  return told(name, {}, negation);
}

ATOMT InvocationBuilder::actual(WrittenName name, TermsMark parameters, Negation negation) {
  return told(name, terms_.take(parameters), negation);
}

ATOMT InvocationBuilder::marker(NameId name, ActualsMark actuals, TermsMark output_terms) {
  const std::span<const TERMT> terms = terms_.take(output_terms);
  INVOCATIONATOM invocation{std::string(names().spelling(name)), {terms.begin(), terms.end()}, {}};
  for (const ATOMT& actual : actuals_.take(actuals)) {
    invocation.actuals.add(actual);
    invocation.origins.push_back({actual, spaces_.currentDefaultNs()});
  }
  if (tree_.is_open()) {
    tree_.named(WrittenKind::kInvocation, invocation.actuals.size() + terms.size(), name);
  }
  invocation.written = work().where();
  if (!first_) first_ = invocation.written.range;
  if (definition_.is_open()) return ATOMT(invocation);
  invocation.expansion_key = template_rules().marker_key(template_rules().expansion_of(invocation));
  const ATOMT marker(invocation);
  invocation.marker = marker;
  record_invocation(std::move(invocation));
  return marker;
}

}    // namespace zarel
