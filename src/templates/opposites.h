#pragma once
// opposites.h - the strong negation of what a formal predicate stands for, in linked templates.
//
// Note [opposites]
// A projection cannot be negated itself: p(1,a) and -p(1,b) hold side by side, and so do their
// projections to the first place. What reads the strong negation is a projection of its own, with
// the same places: the opposite. It is made when "-" first stands in front of a formal predicate.

#include "model/atom.h"

namespace zarel {

// Notes that the projection is all that the source atom reads, so that an opposite can be made.
void note_projection(const ATOMT& projection, const ATOMT& source);

// The atom over the opposite predicate: of a projection, the one that reads the opposite of its
// source; the rule for it is added to the program once. Any other atom gains or loses its "-".
ATOMT opposite(const ATOMT& atom);

}    // namespace zarel
