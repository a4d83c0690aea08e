#pragma once
// atom_batch.h - atoms that are looked up many at a time.
//
// Note [lookups in batches]
// In a table of a million names or atoms each lookup waits for memory, much longer than all else
// takes. So what lookups need is asked for early: the place of a name when it is read, that of an
// atom when its names are known, and while it comes others are looked at.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "dl/explain/answer_index.h"
#include "dl/explain/ground_terms.h"

namespace dl {

class AtomBatch {
 public:
  // Both must outlive the batch.
  AtomBatch(GroundTerms& terms, AnswerIndex& index) : terms_(terms), index_(index) {}

  // Begins an atom; what follows are its arguments. The spelling of a constant must last until the
  // batch is emptied.
  void begin(PredicateNumber predicate) {
    atoms_.push_back({predicate, static_cast<std::uint32_t>(arguments_.size()), 0});
  }
  void constant(std::string_view spelling) {
    const std::size_t hash = GroundTerms::hash_of(spelling);
    terms_.prefetch(hash);
    names_.push_back({spelling, hash, static_cast<std::uint32_t>(arguments_.size())});
    arguments_.push_back(kNoTerm);
  }
  void term(GroundTerm term) { arguments_.push_back(term); }

  std::size_t size() const { return atoms_.size(); }
  bool is_full() const { return atoms_.size() >= kMost; }

  // Calls `take` with the predicate, the arguments and the hash of each atom, and its place in the
  // batch; afterwards the batch is empty.
  template <typename Take>
  void empty(Take&& take) {
    for (const Name& name : names_) {
      arguments_[name.argument] = terms_.constant(name.spelling, name.hash);
    }
    for (Atom& atom : atoms_) {
      atom.hash = AnswerIndex::hash_of(atom.predicate, arguments_of(atom));
      index_.prefetch(atom.hash);
    }
    for (std::size_t i = 0; i < atoms_.size(); ++i) {
      take(atoms_[i].predicate, arguments_of(atoms_[i]), atoms_[i].hash, i);
    }
    atoms_.clear();
    names_.clear();
    arguments_.clear();
  }

 private:
  static constexpr std::size_t kMost = 64;
  struct Atom {
    PredicateNumber predicate;
    std::uint32_t begin;    // of its arguments
    std::size_t hash;
  };
  struct Name {
    std::string_view spelling;
    std::size_t hash;
    std::uint32_t argument;
  };
  std::span<const GroundTerm> arguments_of(const Atom& atom) const {
    return std::span(arguments_).subspan(atom.begin, index_.predicate(atom.predicate).arity);
  }

  GroundTerms& terms_;
  AnswerIndex& index_;
  std::vector<Atom> atoms_;
  std::vector<Name> names_;
  std::vector<GroundTerm> arguments_;
};

}    // namespace dl
