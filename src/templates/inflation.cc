#include "templates/inflation.h"

#include <ostream>

#include "model/run.h"
#include "templates/definitions.h"
#include "templates/expansion.h"
#include "templates/generated_predicates.h"
#include "templates/invocations.h"
#include "templates/marker_replacement.h"
#include "templates/projections.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

std::uint32_t taken_from_schedule() {
  const std::uint32_t signature = schedule().back();
  schedule().pop_back();
  return signature;
}

const DEFINITIONATOM& definition_of(const INVOCATIONATOM& invocation) {
  const DEFINITIONATOM* const definition = defhashmap().find(invocation.name);
  if (definition != nullptr) return *definition;
  std::string text = "The template #";
  report_and_end({Code::kTemplateUndefined, place_of(invocation.written),
                  text.append(invocation.name).append(" is not defined. Please define it.")});
}

// What is made for the invocation from here on.
Work work_for(const INVOCATIONATOM& invocation) {
  const Origin origin{OriginKind::kTemplate,
                      names().intern(invocation.name),
                      {invocation.written.first(), invocation.origin}};
  return {invocation.written, current_run().origins.add(origin)};
}

}    // namespace

void Inflation(std::ostream& legend) {
  legend << "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n";
  int counter = 0;
  DoneList done;
  while (!schedule().empty()) {
    const std::uint32_t signature = taken_from_schedule();
    const INVOCATIONATOM& representative = *invhashmap().under(signature).front();
    const DEFINITIONATOM& definition = definition_of(representative);
    const WorkScope at(work_for(representative));
    const std::string generated = template_rules().generated_name(representative.name, counter);
    done.add(signature, generated);
    const BindingList binding = getProjections(representative, definition.formals, counter, legend);
    generated_predicates().begin_expansion(representative, generated);
    for (const INVOCATIONATOM* const invocation : invhashmap().under(signature)) {
      StandardizeAtomInvocation(*invocation, generated, legend);
    }
    StandardizeRulesT(representative, definition, generated, binding, done, legend);
  }
  legend << "% END OF LEGENDA\n";
}

}    // namespace zarel
