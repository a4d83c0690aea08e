#pragma once
// generic_atoms.h - how the program's atoms are written for the solver: p(t1, ..., tn) in frame
// space f becomes a_{n+1}(p, f, t1, ..., tn), so that a variable may stand for the relation p. The
// answer-set reader undoes it.

#include <span>
#include <string_view>

#include "model/atom.h"
#include "model/generic_names.h"

namespace zarel {

// The higher-order mode, in which atoms are encoded; on in every run that main starts.
bool OptionHigherOrder();

// The atom of name(terms) in the frame space fs; its solver predicate is recorded with addedAtom.
// Without higher-order mode the predicate is the name itself, over fs and the terms.
ATOMT encoded_atom(NameId name, NameId frame_space, std::span<const TERMT> terms,
                   Negation negation);

// The atom of a name without arguments, before its frame space is added: a_1(name).
ATOMT encoded_bare_atom(NameId name, Negation negation);

// The same predicate with the frame space added as a constant: behind the only term, or alone when
// there is none; a longer list stays. The result's asterisk count is one more than the atom's.
ATOMT addDefaultToAtomt(const ATOMT& atom, NameId frame_space);

}    // namespace zarel
