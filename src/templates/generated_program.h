#pragma once
// generated_program.h - the clauses that expansion adds to the program.

#include "model/program.h"

namespace zarel {

// Appends the clause to CLAUSES and counts it in nclause. It comes from where the work stands.
void add_generated(CLAUSET::Payload payload);

// The same for the rule: head :- body.
void add_generated_rule(const ATOMT& head, const Body& body);

}    // namespace zarel
