#include "model/generic_atoms.h"

#include <string>
#include <vector>

#include "model/program.h"
#include "model/run.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

ATOMT atom_of(NameId predicate, StoredList<TERMT> terms, Negation negation) {
  const ATOMT atom(predicate, terms, Type::kUnknown);
  if (negation == Negation::kStrong) NegativeAtoms().insert(atom.predicate());
  return atom;
}

ATOMT plain_atom(NameId name, StoredList<TERMT> terms, Negation negation) {
  addedAtom(name);
  if (negation == Negation::kNone) return atom_of(name, terms, negation);
  return atom_of(names().intern(std::string("-").append(names().spelling(name))), terms, negation);
}

}    // namespace

NameId GenericNames::name(std::size_t n, Negation negation) {
  if (n >= names_.size()) names_.resize(n + 1);
  Pair& pair = names_[n];
  if (!pair.is_made) pair = made_pair(n);
  return negation == Negation::kNone ? pair.positive : pair.negative;
}

GenericNames::Pair GenericNames::made_pair(std::size_t n) {
  const std::string name = std::string("a_").append(std::to_string(n));
  const Pair pair{names().intern(name), names().intern(std::string("-").append(name)), true};
  addedAtom(pair.positive);
  return pair;
}

ATOMT encoded_atom(NameId name, NameId frame_space, std::span<const TERMT> terms,
                   Negation negation) {
  const std::size_t added = OptionHigherOrder() ? 2 : 1;
  const StoredList<TERMT> list = program_storage().make_list<TERMT>(added + terms.size());
  const std::span<TERMT> elements = list.elements();
  elements[added - 1] = TERMT::constant(frame_space);
  std::uninitialized_copy(terms.begin(), terms.end(),
                          elements.begin() + static_cast<std::ptrdiff_t>(added));
  if (!OptionHigherOrder()) return plain_atom(name, list, negation);
  elements[0] = newTERMT(name);
  return atom_of(current_run().generic_names.name(list.size() - 1, negation), list, negation);
}

ATOMT encoded_bare_atom(NameId name, Negation negation) {
  if (!OptionHigherOrder()) return plain_atom(name, StoredList<TERMT>{}, negation);
  const StoredList<TERMT> list = program_storage().make_list<TERMT>(1);
  list.elements()[0] = newTERMT(name);
  return atom_of(current_run().generic_names.name(1, negation), list, negation);
}

ATOMT addDefaultToAtomt(const ATOMT& atom, NameId frame_space) {
  const std::span<const TERMT> terms = atom.terms();
  const TERMT space = TERMT::constant(frame_space);
  std::vector<TERMT> list(terms.begin(), terms.end());
  if (list.size() < 2) list.push_back(space);
  return atom.with_terms(program_storage().store(std::span<const TERMT>(list)),
                         atom.asterisk_count() + 1);
}

}    // namespace zarel
