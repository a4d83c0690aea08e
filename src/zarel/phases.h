#pragma once
// phases.h - what a run goes through between the input and the text of the rewritten program.

#include <iosfwd>

namespace zarel {

// Checks all template invocations, ending the run with status 1 at the first fault, and expands
// them. The legend of the generated predicates goes to `legend`.
void expand_templates(std::ostream& legend);

// Reports the first rule that is not safe, with the variable that nothing binds, and ends the run
// with status 1.
void check_safety();

}    // namespace zarel
