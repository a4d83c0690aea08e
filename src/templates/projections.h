#pragma once
// projections.h - the predicates that stand for formal predicates in an expansion: each holds what
// an actual predicate says, without the places that "$" leaves out.

#include <iosfwd>
#include <span>

#include "templates/invocations.h"

namespace zarel {

// A projection for each pair of actual and formal predicate: its rule is added to the program and
// its line to the legend. `counter` numbers the names of the whole inflation.
BindingList getProjections(const INVOCATIONATOM& invocation,
                           const TCONJUNCTION<FORMALPRED>& formals, int& counter,
                           std::ostream& legend);

// The atom with every argument that is no group-by term replaced, by "*" or by "_"; its predicate
// is then a defined one.
enum class OtherTerms { kAnonymous, kAsterisk };
ATOMT soloGroup_by(std::span<const TERMT> group_by, const ATOMT& atom, OtherTerms others);

// The group-by forms of the projections that were made since an expansion last took them.
std::vector<ATOMT>& templateInn();

}    // namespace zarel
