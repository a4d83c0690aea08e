#pragma once
// atom_order.h - the three-way comparison of atoms, which also orders literals.

#include "model/atom.h"

namespace zarel {

// 0 when the atoms are equal, else the first difference found: of predicates, argument counts, then
// arguments. Invocations that differ give 1. Aggregates are compared field by field, their bodies
// regardless of literal order.
int compare(const ATOMT& a, const ATOMT& b);

inline bool equal(const ATOMT& a, const ATOMT& b) {
  return compare(a, b) == 0;
}

}    // namespace zarel
