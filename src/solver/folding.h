#pragma once
// folding.h - generic atoms in the form that clingo reads fastest, and back.
//
// Note [folded atoms]
// A generic atom has its relation and its name space in front: a_3(link,default,X,Y). clingo takes
// a quarter longer for facts with two arguments more. So where these two are constants in every
// a_3 of the program, they become part of the predicate: a_3'link'default(X,Y). As no name of the
// input holds a prime, nothing else is called so, and atoms of different constants never were the
// same. Both forms have the same length: characters are replaced one for one, and a ")" right
// behind the constants falls away.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "solver/statement.h"

namespace dl {

class Folding {
 public:
  Folding() = default;    // folds nothing
  // Folds the predicates of this text, the whole program, of which every use allows it. The text
  // must outlive the folding.
  explicit Folding(std::string_view program);

  // Folds the atom, which has its sign already, if its predicate is folded.
  void fold(Statement& statement, std::uint32_t atom) const;

 private:
  bool folds(std::string_view name) const;

  bool is_on_ = false;
  std::unordered_set<std::string_view> kept_;    // generic predicates that stay as they are
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
