#pragma once
// expansion.h - a template definition, copied into the program for one use of it.

#include <iosfwd>
#include <string_view>

#include "templates/done_list.h"
#include "templates/invocations.h"

namespace zarel {

// Adds the definition's clauses to the program, rewritten for the invocation: its own predicate
// under the generated name, formal predicates as bound, local ones under names of their own.
// Invocations in the bodies are replaced when their expansion is done, else scheduled and recorded.
// Ends the run with status 1 when one has not the shape that its definition asks for, or stands
// nested too deep.
void StandardizeRulesT(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition,
                       std::string_view generated, const BindingList& binding, const DoneList& done,
                       std::ostream& legend);

// The rewritten actual predicates of all expansions that have an ordinary parameter.
TCONJUNCTION<ATOMT>& predformal();

}    // namespace zarel
