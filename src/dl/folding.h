#pragma once
// folding.h - generic atoms in the form that clingo reads fastest, and back.
//
// Note [folded atoms]
// A generic atom has its relation and its name space in front: a_3(link,default,X,Y). clingo takes
// a quarter longer for facts with two arguments more. So where these two are constants in every
// a_3 of the program, they become part of the predicate: a_3'link'default(X,Y). As no name of the
// input holds a prime, nothing else is called so, and atoms of different constants never were the
// same. Both forms have the same length: characters are replaced one for one, and a ")" right
// behind the constants falls away. One atom in the wrong form would be an atom that nothing
// derives, so all of the program is parsed before the first one is written.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

#include "dl/statement.h"

namespace dl {

class Folding {    // folds nothing until it begins
 public:
  // Looks at an atom of the program: one that cannot be folded keeps its predicate as it is.
  void see(const Term& atom);
  // All atoms have been seen: from now on fold() folds.
  void begin() { is_on_ = true; }

  // Folds the atom, which has its sign already, if its predicate is folded.
  void fold(Statement& statement, std::uint32_t atom) const;

 private:
  bool is_on_ = false;
  std::set<std::string, std::less<>> kept_;    // generic predicates that stay as they are
};

// The predicate under which clingo knows the atom, spelled as in the input if it is not folded;
// valid as long as the statement.
std::string_view predicate_of(const Statement& statement, const Term& atom);

// The predicate that the input calls so: predicate_of() without what was folded in.
std::string_view unfolded_predicate(std::string_view predicate);

// Undoes the folding, if there was any, of the atom with which the text ends and that begins at
// `begin`.
void unfold(std::string& text, std::size_t begin);

}    // namespace dl
