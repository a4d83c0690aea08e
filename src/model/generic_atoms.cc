#include "model/generic_atoms.h"

#include <string>
#include <vector>

#include "model/program.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

// The generic names a_N and -a_N, each made once: a program has many atoms and few arities.
class GenericNames {
 public:
  // The name of a_N. Its first use, of either sign, records a_N as a predicate of the user's atoms.
  NameId name(std::size_t n, Negation negation) {
    if (n >= names_.size()) names_.resize(n + 1);
    Pair& pair = names_[n];
    if (!pair.is_made) pair = made_pair(n);
    return negation == Negation::kNone ? pair.positive : pair.negative;
  }
  void clear() { names_.clear(); }

 private:
  struct Pair {
    NameId positive;
    NameId negative;
    bool is_made = false;
  };

  static Pair made_pair(std::size_t n) {
    const std::string name = std::string("a_").append(std::to_string(n));
    const Pair pair{names().intern(name), names().intern(std::string("-").append(name)), true};
    addedAtom(pair.positive);
    return pair;
  }

  std::vector<Pair> names_;
};

GenericNames& generic_names() {
  static GenericNames table;
  return table;
}

bool& higher_order() {
  static bool is_on = false;
  return is_on;
}

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

bool OptionHigherOrder() {
  return higher_order();
}

void set_higher_order(bool is_on) {
  higher_order() = is_on;
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
  return atom_of(generic_names().name(list.size() - 1, negation), list, negation);
}

ATOMT encoded_bare_atom(NameId name, Negation negation) {
  if (!OptionHigherOrder()) return plain_atom(name, StoredList<TERMT>{}, negation);
  const StoredList<TERMT> list = program_storage().make_list<TERMT>(1);
  list.elements()[0] = newTERMT(name);
  return atom_of(generic_names().name(1, negation), list, negation);
}

ATOMT addDefaultToAtomt(const ATOMT& atom, NameId frame_space) {
  const std::span<const TERMT> terms = atom.terms();
  const TERMT space = TERMT::constant(frame_space);
  std::vector<TERMT> list(terms.begin(), terms.end());
  if (list.size() < 2) list.push_back(space);
  return atom.with_terms(program_storage().store(std::span<const TERMT>(list)),
                         atom.asterisk_count() + 1);
}

void reset_generic_atoms() {
  generic_names().clear();
  set_higher_order(false);
}

}    // namespace zarel
