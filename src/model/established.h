#pragma once
// established.h - functions on terms, names, atoms and rules, kept for those who know the system
// by these names. The program does not call them.

#include <array>
#include <cstdint>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/clause.h"
#include "model/printer.h"

namespace zarel {

struct DEFINITIONATOM;

// The names and arities of kBuiltins.
inline constexpr auto builtin_name = [] {
  std::array<std::string_view, kBuiltinCount> spellings{};
  for (std::size_t code = 0; code < kBuiltinCount; ++code) spellings[code] = kBuiltins[code].name;
  return spellings;
}();
inline constexpr auto builtin_arity = [] {
  std::array<std::uint32_t, kBuiltinCount> arities{};
  for (std::size_t code = 0; code < kBuiltinCount; ++code) arities[code] = kBuiltins[code].arity;
  return arities;
}();

// The argument list of a builtin: a, then b and c where they are given.
std::vector<TERMT> newTERMTS(const TERMT& a, const TERMT* b, const TERMT* c);

// getNameLabeled, counting from 0.
std::string getAtomLabeled(std::string_view name);

// "#", the definition's sequence number, its name.
std::string getNameTemplateLabeled(const DEFINITIONATOM& definition);

// The name from its first character above '9' on: prefix and "-" are dropped.
std::string_view getName(std::string_view name);

// Whether getName of the atom's predicate is the name of a pair.
bool isFormalPred(const ATOMT& atom, std::span<const std::pair<const char*, ATOMT>> formals);

// Whether an atom of the list has the atom's predicate name, both without prefix and cut at their
// first "_".
bool esiste(const TCONJUNCTION<ATOMT>& list, const ATOMT& atom);

// Whether a agrees with the first terms of b wherever a has neither "*" nor "$". b is at least as
// long as a.
bool parametersCoincidence(std::span<const TERMT> a, std::span<const TERMT> b);

// Whether the predicate's name holds a '-', anywhere in it.
bool isTrueNegated(const ATOMT& atom);

// compare(a, b), three ways: 0 when the atoms are equal.
int operator!=(const ATOMT& a, const ATOMT& b);

// The number of arguments that are the "*" marker.
int nAsterisk(const ATOMT& atom);

// Whether some literal of the body binds the variable, and whether all variables are bound that
// have to be: unsafe_variable() in safety.h tells more at once.
bool Saves(const Body& body, const TERMT& variable);
template <>
bool Body::isSafe() const;
template <>
bool Rule::isSafe() const;

// The elements, as append_list has them.
template <class List>
void print_list(std::ostream& out, const List& list, std::string_view separator) {
  Text text;
  append_list(text, list, separator);
  out << text.view();
}

}    // namespace zarel
