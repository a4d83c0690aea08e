#include "model/name_table.h"

#include <functional>

#include "model/short_name.h"

namespace zarel {
namespace {

std::uint32_t hash_of(const ShortName& name) {
  return mixed(name[0], name[1]);
}

std::uint32_t hash_of(std::string_view spelling) {
  return mixed(std::hash<std::string_view>{}(spelling), spelling.size());
}

}    // namespace

NameId NameTable::intern(std::string_view spelling) {
  if (4 * (std::size_t{size_} + 1) > 3 * slots_.size()) grow();
  std::uint32_t hash = 0;
  Slot& slot = slots_[slot_of(spelling, hash)];
  if (slot.entry == 0) {
    add(spelling);
    slot = {hash, size_};
  }
  return NameId{slot.entry - 1};
}

std::optional<NameId> NameTable::find(std::string_view spelling) const {
  if (slots_.empty()) return std::nullopt;
  std::uint32_t hash = 0;
  const std::uint32_t entry = slots_[slot_of(spelling, hash)].entry;
  if (entry == 0) return std::nullopt;
  return NameId{entry - 1};
}

// The slot that holds the name, or the free one where it belongs.
template <class IsEqual>
std::size_t NameTable::slot_of(std::uint32_t hash, IsEqual is_equal) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t position = hash & mask;; position = (position + 1) & mask) {
    const Slot& slot = slots_[position];
    if (slot.entry == 0) return position;
    if (slot.hash == hash && is_equal(name(slot.entry - 1))) return position;
  }
}

// The same for the spelling, whose hash it sets.
std::size_t NameTable::slot_of(std::string_view spelling, std::uint32_t& hash) const {
  if (spelling.size() > Name::kLongestInside) {
    hash = hash_of(spelling);
    return slot_of(hash, [&](const Name& name) { return name.spelling() == spelling; });
  }
  const ShortName wanted = short_name(spelling);
  hash = hash_of(wanted);
  return slot_of(hash, [&](const Name& name) {
    ShortName entry;
    std::memcpy(entry.data(), &name, sizeof(entry));
    return entry == wanted;
  });
}

void NameTable::add(std::string_view spelling) {
  if (size_ % kChunk == 0) chunks_.emplace_back().reserve(kChunk);
  chunks_.back().emplace_back(spelling.size() <= Name::kLongestInside ? spelling
                                                                      : kept_apart(spelling));
  ++size_;
}

// A copy of the text, with a NUL behind it.
std::string_view NameTable::kept_apart(std::string_view spelling) {
  char* const text = static_cast<char*>(texts_.allocate(spelling.size() + 1, 1));
  std::memcpy(text, spelling.data(), spelling.size());
  text[spelling.size()] = '\0';
  return {text, spelling.size()};
}

void NameTable::grow() {
  constexpr std::size_t kFirstSize = 1024;
  std::vector<Slot> slots(slots_.empty() ? kFirstSize : 2 * slots_.size(), Slot{0, 0});
  const std::size_t mask = slots.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.entry == 0) continue;
    std::size_t position = slot.hash & mask;
    while (slots[position].entry != 0) position = (position + 1) & mask;
    slots[position] = slot;
  }
  slots_.swap(slots);
}

NameNumbering::Entry NameNumbering::enter(NameId name) {
  const std::uint32_t index = to_index(name);
  if (index >= number_of_name_.size()) number_of_name_.resize(std::size_t{index} + 1, 0);
  std::uint32_t& entry = number_of_name_[index];
  if (entry != 0) return {entry - 1, false};
  names_.push_back(name);
  entry = size();
  return {entry - 1, true};
}

std::optional<std::uint32_t> NameNumbering::find(NameId name) const {
  const std::uint32_t index = to_index(name);
  if (index >= number_of_name_.size() || number_of_name_[index] == 0) return std::nullopt;
  return number_of_name_[index] - 1;
}

}    // namespace zarel
