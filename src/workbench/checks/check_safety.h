#pragma once
// check_safety.h - variables that nothing gives a value.

#include "workbench/checks/check_context.h"

namespace workbench {

// Where a clause stands: in a template a predicate's name is no variable, and names what is local.
enum class ClauseScope { kProgram, kTemplate };

// Tells each variable of the statement that has to have a value and gets none: one message for
// each, at its first place of that kind. Never of a statement that the translation and clingo take;
// what is not certain is left to them. Returns whether something was told.
bool check_safety(const zarel::WrittenStatement& statement, ClauseScope scope,
                  CheckContext& context);

}    // namespace workbench
