#include "templates/established.h"

#include <ostream>

#include "model/printer.h"
#include "model/report.h"
#include "templates/template_rules.h"

namespace zarel {

void lookup(const DefinitionTable& table, const DEFINITIONATOM& definition) {
  Text text("Lista di definizioni con la stessa chiave \n");
  text += definition.name;
  text += " : ";
  if (const DEFINITIONATOM* const stored = table.find(definition.name)) {
    text += "#template ";
    text += stored->name;
    text += '[';
    append_list(text, stored->formals, ", ");
    text += "] (";
    text.add_number(static_cast<std::uint32_t>(stored->outputArity));
    text += ")\n{\n";
    append_list(text, stored->rules, "\n");
    text += "\n} ";
  }
  standard_output() << text.view() << '\n';
}

void lookup_all(const DefinitionTable& table) {
  for (const DEFINITIONATOM& definition : table.all()) lookup(table, definition);
}

void lookup(const InvocationTable& table, const INVOCATIONATOM& invocation) {
  const std::uint32_t key = template_rules().expansion_of(invocation);
  Text text("Lista di invocazioni con la stessa chiave(segnatura) ");
  text.add_number(key);
  text += " : ";
  for (const INVOCATIONATOM* const found : table.under(key)) {
    append_invocation(text, *found);
    text += '\n';
  }
  standard_output() << text.view() << "\n\n";
}

void print_stack() {
  for (; !schedule().empty(); schedule().pop_back()) standard_output() << schedule().back() << '\n';
}

}    // namespace zarel
