#pragma once
// qualified_constants.h - the constants prefix:local that were met, by their two names.

#include <cstdint>
#include <deque>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/short_name.h"
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

// The same for those of flat atoms whose local name is short: by its text, which is no name of the
// program for that, and stands in the slot. So a known constant costs one place in memory, a new
// one two. A local name in the form of a variable is none of them: a new variable is to have no
// name that the program has anywhere.
class ShortQualifiedConstants {
 public:
  static bool takes(std::string_view local);

  // The constant noted; nothing when it was not. These take what `takes` says alone.
  std::optional<TERMT> find(NameId prefix, std::string_view local);
  void note(NameId prefix, std::string_view local, const TERMT& constant);    // a new one

  // Soon asked for, perhaps, with the prefix that was asked for last.
  void expect(std::string_view local) const;

 private:
  // The local names of a prefix. A short name leaves most bits of its length free: the constant's
  // name id stands there.
  struct OfPrefix {
    static constexpr std::size_t kFirstSize = 256;
    std::vector<ShortName> slots{kFirstSize, ShortName{}};    // a power of two of them; 0 is free
    std::size_t size = 0;

    std::size_t slot_of(const ShortName& local) const;
    void grow();
  };

  OfPrefix& of_prefix(NameId prefix);

  std::unordered_map<NameId, OfPrefix> by_prefix_;
  OfPrefix* latest_ = nullptr;
  NameId latest_prefix_{};
};

}    // namespace zarel
