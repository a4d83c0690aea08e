#pragma once
// answer_index.h - the atoms of one answer set, found by their predicate, by the value at a place,
// or whole.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dl/explain/ground_terms.h"

namespace dl {

using PredicateNumber = std::uint32_t;
using AtomNumber = std::uint32_t;    // in the order in which the atoms were added
constexpr AtomNumber kNoAtom = 0xffffffffu;

struct Predicate {
  NameNumber name = 0;
  std::uint32_t arity = 0;
  bool strongly_negated = false;
  friend bool operator==(const Predicate&, const Predicate&) = default;
};

class AnswerIndex {
 public:
  // The terms must outlive the index.
  explicit AnswerIndex(const GroundTerms& terms) : terms_(terms) {}

  // The number of the predicate, which need not have atoms.
  PredicateNumber number(const Predicate& predicate);
  const Predicate& predicate(PredicateNumber number) const { return predicates_[number].key; }
  std::size_t predicates() const { return predicates_.size(); }
  // That of the same name and arity with the other sign.
  PredicateNumber contrary(PredicateNumber number);

  // Adds an atom of the answer set. Returns its number; that of an equal one if there is one.
  AtomNumber add(PredicateNumber predicate, std::span<const GroundTerm> arguments) {
    return add(predicate, arguments, hash_of(predicate, arguments));
  }
  // Makes room for so many atoms.
  void reserve(std::size_t atoms);
  // Forgets the atoms, but neither the terms nor the numbers of predicates.
  void clear();

  std::size_t size() const { return atoms_.size(); }
  PredicateNumber predicate_of(AtomNumber atom) const { return atoms_[atom].predicate; }
  std::span<const GroundTerm> arguments(AtomNumber atom) const;

  // The atom, kNoAtom when it is not in the answer set.
  AtomNumber find(PredicateNumber predicate, std::span<const GroundTerm> arguments) const {
    return find(predicate, arguments, hash_of(predicate, arguments));
  }
  std::span<const AtomNumber> atoms(PredicateNumber predicate) const;
  // Those with the value at the place, from 0. The first call for a predicate's place takes time
  // linear in its atoms.
  std::span<const AtomNumber> atoms_with(PredicateNumber predicate, std::uint32_t place,
                                         GroundTerm value);

  // The same for lookups in batches, with the atom's hash.
  static std::size_t hash_of(PredicateNumber predicate, std::span<const GroundTerm> arguments);
  void prefetch(std::size_t hash) const {
    if (!slots_.empty()) __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
  }
  AtomNumber add(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                 std::size_t hash);
  AtomNumber find(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                  std::size_t hash) const;

  // Appends the atom as the input would spell it.
  void append(std::string& out, PredicateNumber predicate,
              std::span<const GroundTerm> arguments) const;
  void append(std::string& out, AtomNumber atom) const {
    append(out, predicate_of(atom), arguments(atom));
  }

 private:
  struct Atom {
    PredicateNumber predicate;
    std::uint32_t begin;    // of its arguments
  };
  // The atoms in the order of their values' buckets; those of one value lie side by side. Empty
  // until it is asked for.
  struct PlaceIndex {
    std::vector<std::uint32_t> ends;    // by bucket, in `atoms`
    std::vector<AtomNumber> atoms;
  };
  struct Entry {
    Predicate key;
    std::vector<AtomNumber> atoms;
    std::vector<PlaceIndex> places;    // one for each place, once one is asked for
  };
  struct KeyHash {
    std::size_t operator()(const Predicate& key) const {
      return (std::size_t{key.name} << 16) ^ (std::size_t{key.arity} << 1) ^
             std::size_t{key.strongly_negated};
    }
  };
  void index_place(Entry& entry, std::uint32_t place) const;
  GroundTerm argument(AtomNumber atom, std::uint32_t place) const {
    return arguments_[atoms_[atom].begin + place];
  }

  const GroundTerms& terms_;
  std::vector<Entry> predicates_;
  std::unordered_map<Predicate, PredicateNumber, KeyHash> numbers_;
  std::vector<Atom> atoms_;
  std::vector<GroundTerm> arguments_;
  // By hash, of which each slot keeps a part.
  struct Slot {
    std::uint32_t hash = 0;
    AtomNumber atom = kNoAtom;
  };
  void make_slots(std::size_t count);
  bool is_at(const Slot& slot, PredicateNumber predicate, std::span<const GroundTerm> arguments,
             std::size_t hash) const;

  std::vector<Slot> slots_;
};

}    // namespace dl
