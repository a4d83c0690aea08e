#include "templates/definitions.h"

#include <ostream>

#include "model/printer.h"
#include "model/run.h"

namespace zarel {

std::uint32_t template_hash(std::string_view text) {
  std::uint32_t hash = 0;
  for (const char c : text)
    hash = 5 * hash + static_cast<std::uint32_t>(static_cast<signed char>(c));
  return hash;
}

bool DefinitionTable::add(DEFINITIONATOM definition) {
  if (find(definition.name) != nullptr) return false;
  const DEFINITIONATOM& stored = definitions_.emplace_back(std::move(definition));
  by_name_.emplace(stored.name, &stored);
  return true;
}

const DEFINITIONATOM* DefinitionTable::find(std::string_view name) const {
  const auto found = by_name_.find(name);
  return found == by_name_.end() ? nullptr : found->second;
}

DefinitionTable& defhashmap() {
  return current_run().parts.get<DefinitionTable>();
}

void addedDefinition(DEFINITIONATOM definition) {
  const DEFINITIONATOM* const first = defhashmap().find(definition.name);
  if (first == nullptr) {
    defhashmap().add(std::move(definition));
    return;
  }
  std::string text = "Template ";
  report({Code::kTemplateRedefined,
          work_place(),
          text.append(definition.name).append(" already defined."),
          {{place_of(first->head), "the first definition"}}});
  if (!current_run().options.skips_faulty_statements) end_run(1);
}

}    // namespace zarel
