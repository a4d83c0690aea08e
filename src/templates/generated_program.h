#pragma once
// generated_program.h - the clauses that expansion adds to the program.

#include "model/program.h"

namespace zarel {

// Appends the clause to CLAUSES and counts it in nclause.
void add_generated(CLAUSET::Payload payload, const SourceLocation& location);

// The same for the rule: head :- body.
void add_generated_rule(const ATOMT& head, const Body& body, const SourceLocation& location);

}    // namespace zarel
