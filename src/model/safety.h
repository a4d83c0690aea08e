#pragma once
// safety.h - whether every variable of a rule is bound by its body, and two small tests of atoms
// that templates use.

#include <optional>
#include <span>

#include "model/clause.h"

namespace zarel {

// The first variable of a rule with this head and this body that would have to be bound and is not;
// nothing when it is safe.
// A literal binds a variable when it is not negated, no comparison, and holds it among its
// arguments; an aggregate, the variable that is its equality guard; an "==", negated or not, the
// one that stands beside a constant or an integer.
std::optional<TERMT> unsafe_variable(std::span<const ATOMT> head, std::span<const Literal> body);

// Ends the run with status 1 and a message when a predicate of the atom's name without prefix is
// known with another arity.
void control_of_arity(const ATOMT& atom);

// Whether some argument is an ordinary term: no "*", "$" or "_".
bool existVarGroup(const ATOMT& atom);

}    // namespace zarel
