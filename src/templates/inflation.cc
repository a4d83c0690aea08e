#include "templates/inflation.h"

#include <ostream>

#include "driver/diagnostics.h"
#include "templates/definitions.h"
#include "templates/expansion.h"
#include "templates/invocations.h"
#include "templates/linking.h"
#include "templates/marker_replacement.h"
#include "templates/projections.h"

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
  standard_error() << "The template #" << invocation.name << " is not defined. Please define it.\n";
  SafeExit(1);
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
    const std::string generated = generated_name(representative.name, counter);
    done.add(signature, generated);
    const BindingList binding = getProjections(representative, definition.formals, counter, legend);
    for (const INVOCATIONATOM* const invocation : invhashmap().under(signature)) {
      StandardizeAtomInvocation(*invocation, generated, legend);
    }
    StandardizeRulesT(representative, definition, generated, binding, done, legend);
  }
  legend << "% END OF LEGENDA\n";
}

void print_stack() {
  while (!schedule().empty()) standard_output() << taken_from_schedule() << '\n';
}

}    // namespace zarel
