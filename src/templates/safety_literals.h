#pragma once
// safety_literals.h - literals that bind the group-by variables of an expanded clause.

#include <span>
#include <vector>

#include "templates/invocations.h"

namespace zarel {

// The atom under its name up to the first "_" behind any leading ones, with "_" for "$" and "*".
ATOMT getAtomSafe(const ATOMT& atom);

// The safety forms of the invocation's actual predicates; one that has the name of a formal
// predicate is taken for what that is bound to.
std::vector<ATOMT> returnAtomsSafe(const BindingList& binding, const INVOCATIONATOM& invocation);

// Those of the safety literals that the body needs: with an ordinary argument, and of a name that
// no literal of the body has but under "not".
TCONJUNCTION<Literal> modifyRule(std::span<const ATOMT> safety, const Body& body);

}    // namespace zarel
