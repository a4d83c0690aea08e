#pragma once
// established.h - shows of what the registries of templates hold, kept for those who know the
// system by these names. The program does not call them.

#include "templates/definitions.h"
#include "templates/invocations.h"

namespace zarel {

// Shows the definition stored under the given one's name on standard output.
void lookup(const DefinitionTable& table, const DEFINITIONATOM& definition);

// The same for every stored definition.
void lookup_all(const DefinitionTable& table);

// Shows the invocations under the given one's signature on standard output.
void lookup(const InvocationTable& table, const INVOCATIONATOM& invocation);

// Takes every signature off the schedule and shows it on standard output, a line each.
void print_stack();

}    // namespace zarel
