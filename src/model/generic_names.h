#pragma once
// generic_names.h - the names a_N of the predicates that carry the user's atoms.

#include <cstddef>
#include <vector>

#include "model/name_table.h"

namespace zarel {

enum class Negation { kNone, kStrong };

class GenericNames {
 public:
  // The name of a_N. Its first use, of either sign, records a_N as a predicate of the user's atoms.
  NameId name(std::size_t n, Negation negation);

 private:
  struct Pair {
    NameId positive;
    NameId negative;
    bool is_made = false;
  };
  static Pair made_pair(std::size_t n);

  std::vector<Pair> names_;
};

}    // namespace zarel
