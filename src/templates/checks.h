#pragma once
// checks.h - whether invocations and the definitions that they name agree.

#include "model/template_records.h"

namespace zarel {

// Checks every recorded invocation against its definition, and that definition's rules. False, with
// a message, at the first fault; in a run that skips faulty statements, with one for each invocation
// and definition that has a fault, those in template bodies too. Definitions that nothing invokes
// are not looked at.
bool control_of_template();

// Whether a nested invocation has the output terms and actual predicates that the definition asks
// for; the message of the check says what is wrong.
bool has_shape_of(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition);

}    // namespace zarel
