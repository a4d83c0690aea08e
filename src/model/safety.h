#pragma once
// safety.h - whether every variable of a rule is bound by its body, and two small tests of atoms
// that templates use.

#include <optional>

#include "model/clause.h"

namespace zarel {

// Whether some literal of the body binds the variable: a non-negated literal that is no comparison
// and holds it among its arguments, an aggregate whose equality guard it is, or an "==" with a
// constant or an integer, negated or not.
bool Saves(const Body& body, const TERMT& variable);

template <>
bool Body::isSafe() const;
template <>
bool Rule::isSafe() const;

// The first variable of the rule that would have to be bound and is not; nothing when it is safe.
std::optional<TERMT> unsafe_variable(const Rule& rule);

// Ends the run with status 1 and a message when a predicate of the atom's name without prefix is
// known with another arity.
void control_of_arity(const ATOMT& atom);

// The number of arguments that are the "*" marker.
int nAsterisk(const ATOMT& atom);

// Whether some argument is an ordinary term: no "*", "$" or "_".
bool existVarGroup(const ATOMT& atom);

}    // namespace zarel
