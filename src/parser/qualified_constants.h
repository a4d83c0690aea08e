#pragma once
// qualified_constants.h - the constants prefix:local that were met, by their two names.

#include <cstdint>
#include <deque>
#include <optional>

#include "model/term.h"

namespace zarel {

// Two names around ":", which may be a membership or a qualified constant.
struct NamePair {
  NameId first;
  NameId second;
};

// Remembers of each local name the constant of the prefix that it had last, so that a constant
// which comes again is not written out as an address and looked up by that. Nearly all local names
// have one prefix only.
class QualifiedConstants {
 public:
  // The constant noted for the pair; nothing when it was not, or is forgotten.
  std::optional<TERMT> find(const NamePair& pair) const {
    const std::uint32_t local = to_index(pair.second);
    if (local >= latest_.size() || latest_[local].prefix != to_index(pair.first) + 1) return {};
    return TERMT{TermKind::kConstant, latest_[local].value};
  }

  void note(const NamePair& pair, const TERMT& constant) {
    const std::uint32_t local = to_index(pair.second);
    if (local >= latest_.size()) latest_.resize(std::size_t{local} + 1, {0, 0});
    latest_[local] = {to_index(pair.first) + 1, constant.value()};
  }

 private:
  struct Latest {
    std::uint32_t prefix;    // its name id + 1; 0 for none
    std::int32_t value;
  };
  std::deque<Latest> latest_;    // by the local name's id; a deque, to grow without copies
};

}    // namespace zarel
