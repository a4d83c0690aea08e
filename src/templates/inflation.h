#pragma once
// inflation.h - the phase that turns every template invocation into plain rules.

#include <iosfwd>

namespace zarel {

// Expands what is scheduled, the last one first, until nothing is left, and says on `legend` which
// generated predicate stands for which invocation. The clauses it adds are the last nclause() of
// CLAUSES. Ends the run with status 1 when a nested invocation names no template, among others.
void Inflation(std::ostream& legend);

}    // namespace zarel
