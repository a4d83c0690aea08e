#pragma once
// folding.h - generic atoms in the form that clingo reads fastest, and back.
//
// Note [folded atoms]
// A generic atom has its relation and its name space in front: a_3(link,default,X,Y). clingo takes
// a quarter longer for facts with two arguments more, and what holds of one relation is asked of
// all of them. So where these two, the keys, are simple terms in every a_3 of the program, they
// become part of the predicate: a_3'link'd(X,Y). As no name of the input holds a prime, nothing else
// is called so, and atoms of different keys never were the same. An atom with a variable among its
// keys is written once for each relation that it can be: see Note [instances]. clingo reads and
// prints the name with every atom, so the usual name space, `default`, changes its name with `d`, and
// that of frames, `defaultFlogic`, with `dF`. No more is made shorter than keeps the order of the
// names, in which clingo prints atoms.
// Of a frame of Zarel, a_5(valueOf,defaultFlogic,O,attribute,V,"->"), the attribute and the arrow are
// keys, too: a_5'valueOf'dF'attribute'_s_2d_3e(O,V). That needs all six-place a_5 of the program to
// say in front whether they are frames.
// One atom in the wrong form would be an atom that nothing derives, so all of the program is parsed
// before the first one is written.

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>

#include "dl/statement.h"

namespace dl {

inline constexpr std::uint32_t kKeys = 2;
inline constexpr std::uint32_t kMostKeys = 4;    // of frames

// Where the atom has what is its place-th argument when the keys stand before all others.
constexpr std::uint32_t written_place(std::uint32_t place, std::uint32_t keys) {
  constexpr std::array<std::uint32_t, 6> kFramePlaces = {0, 1, 3, 5, 2, 4};
  return keys == kMostKeys ? kFramePlaces[place] : place;
}

// Whether the predicate of that name is folded where it can be.
bool is_generic(std::string_view name);

using PredicateNames = std::set<std::string, std::less<>>;

class Folding {    // folds nothing until it begins
 public:
  // Looks at an atom of a fact: one that cannot be folded keeps its predicate as it is.
  void see_fact(const Statement& statement, const Term& atom);
  // Looks at any other atom: one that is not folded for itself may have instances.
  void see(const Statement& statement, const Term& atom);

  // The predicates that are kept as they are unless their atoms have instances.
  PredicateNames undecided() const;
  void keep(std::string_view predicate) { kept_.emplace(predicate); }
  bool folds_attributes() const { return folds_attributes_; }
  bool has_open_attributes() const { return has_open_attributes_; }
  void keep_attributes() { folds_attributes_ = false; }
  // How many keys the atom has if its predicate is folded.
  std::uint32_t keys_of(const Statement& statement, const Term& atom) const;
  bool keeps(std::string_view predicate) const { return kept_.contains(predicate); }
  // All is decided: from now on fold() folds.
  void begin() { is_on_ = true; }

  // Folds the atom, which has its sign already, if its predicate is folded; an atom with a variable
  // among its keys is marked as open.
  void fold(Statement& statement, std::uint32_t atom) const;

 private:
  bool has_simple_keys(const Statement& statement, const Term& atom) const;
  bool is_on_ = false;
  bool folds_attributes_ = true;
  bool has_open_attributes_ = false;
  PredicateNames kept_;    // generic predicates that stay as they are
  PredicateNames open_;
};

// The predicate under which clingo knows the atom, spelled as in the input if it is not folded;
// valid as long as the statement.
std::string_view predicate_of(const Statement& statement, const Term& atom);

// Appends the name of a folded predicate. The keys, kKeys or kMostKeys of them, are clingo's terms.
void append_folded_name(std::string& out, std::string_view predicate,
                        std::span<const std::string_view> keys);

// The predicate that the input calls so: predicate_of() without what was folded in.
std::string_view unfolded_predicate(std::string_view predicate);

// Appends the atom, the folding of which, if there was any, is undone. Its names and strings are
// spelled as in the input.
void append_unfolded(std::string& out, std::string_view atom);

}    // namespace dl
