#pragma once
// head_index.h - the heads that an atom can be an instance of. Where many rules give one predicate,
// as those of all frames do, they are told apart by the constant at one place.

#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "dl/explain/statement_store.h"

namespace dl {

class HeadIndex {
 public:
  // The store must outlive the index.
  explicit HeadIndex(const StatementStore& store) : store_(store) {}

  // Heads of the predicate, each kind in the order of writing. All others cannot be the atom.
  struct Heads {
    std::span<const HeadUse> exact;    // with the atom's own constant at the place
    std::span<const HeadUse> open;     // with a variable there
  };
  Heads heads(PredicateNumber predicate, std::span<const GroundTerm> arguments);

 private:
  struct Entry {
    std::uint32_t place = 0;
    std::unordered_map<GroundTerm, std::vector<HeadUse>> exact;
    std::vector<HeadUse> open;
  };
  std::optional<GroundTerm> constant(const HeadUse& use, std::uint32_t place) const;
  Entry entry_of(PredicateNumber predicate, std::size_t arity) const;

  const StatementStore& store_;
  std::unordered_map<PredicateNumber, Entry> entries_;
};

}    // namespace dl
