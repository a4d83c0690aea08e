#include "output/position_index.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace zarel {
namespace {

constexpr std::size_t kFirstSize = 64;
constexpr std::size_t kSparse = 8;    // slots for an entry

}    // namespace

std::uint32_t checked_position(std::size_t size) {
  if (size >= PositionIndex::kNone) throw std::length_error("texts of one answer set");
  return static_cast<std::uint32_t>(size);
}

std::uint32_t hash_text(std::string_view text) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

void PositionIndex::insert(std::uint32_t hash, std::uint32_t position) {
  if ((count_ + 1) * 4 > slots_.size() * 3) grow();
  place({hash, position});
  ++count_;
}

void PositionIndex::place(Slot slot) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = slot.hash & mask;
  while (slots_[at].position != kNone) at = (at + 1) & mask;
  slots_[at] = slot;
}

void PositionIndex::grow() {
  std::vector<Slot> old(std::max(kFirstSize, slots_.size() * 2));
  old.swap(slots_);
  for (const Slot& slot : old) {
    if (slot.position != kNone) place(slot);
  }
}

void PositionIndex::clear() {
  if (count_ == 0) return;
  // A table that much has grown is not swept again for each little behind it.
  if (slots_.size() > kFirstSize && slots_.size() / kSparse > count_) {
    slots_ = {};
  } else {
    std::fill(slots_.begin(), slots_.end(), Slot{});
  }
  count_ = 0;
}

}    // namespace zarel
