#pragma once
// position_index.h - a hash table of positions in a sequence that the caller keeps.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace zarel {

// A size as a position, below the one that means none. Throws std::length_error when it is larger.
std::uint32_t checked_position(std::size_t size);

std::uint32_t hash_text(std::string_view text);

// Finds an entry of a sequence by a hash and the caller's comparison; the entries themselves stay
// with the caller, so a million of them cost 16 MB here.
class PositionIndex {
 public:
  static constexpr std::uint32_t kNone = UINT32_MAX;

  // The position inserted with this hash for which matches(position) is true; kNone when there is
  // none.
  template <typename Matches>
  std::uint32_t find(std::uint32_t hash, Matches matches) const;

  // Adds a position that find did not give for its hash.
  void insert(std::uint32_t hash, std::uint32_t position);

  void clear();    // in time linear in what was inserted

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t position = kNone;
  };

  void place(Slot slot);
  void grow();

  std::vector<Slot> slots_;    // a power of two of them; linear probing
  std::size_t count_ = 0;
};

template <typename Matches>
std::uint32_t PositionIndex::find(std::uint32_t hash, Matches matches) const {
  if (slots_.empty()) return kNone;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t at = hash & mask; slots_[at].position != kNone; at = (at + 1) & mask) {
    if (slots_[at].hash == hash && matches(slots_[at].position)) return slots_[at].position;
  }
  return kNone;
}

}    // namespace zarel
