#pragma once
// group_terms.h - the ordinary parameters of an invocation's actual predicates, by which its
// expansion groups.

#include <vector>

#include "model/template_records.h"

namespace zarel {

// A fresh variable for every argument of the actual predicates that is neither "$" nor "*".
std::vector<TERMT> getGroupBy(const INVOCATIONATOM& invocation);

// The atoms with a fresh variable for every argument but "$", "*" and "_"; counted over all atoms.
std::vector<ATOMT> modifyCon(const TCONJUNCTION<ATOMT>& atoms);

}    // namespace zarel
