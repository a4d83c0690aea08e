#include "model/name_table.h"

#include <cstring>
#include <functional>

namespace zarel {
namespace {

std::uint32_t hash_of(std::string_view spelling) {
  const std::size_t hash = std::hash<std::string_view>{}(spelling);
  return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

}    // namespace

NameId NameTable::intern(std::string_view spelling) {
  if (2 * (names_.size() + 1) > slots_.size()) grow();
  const std::uint32_t hash = hash_of(spelling);
  const std::size_t slot = slot_of(spelling, hash);
  if (slots_[slot] != 0) return NameId{slots_[slot] - 1};

  char* const text = static_cast<char*>(texts_.allocate(spelling.size() + 1, 1));
  if (!spelling.empty()) std::memcpy(text, spelling.data(), spelling.size());
  text[spelling.size()] = '\0';
  names_.push_back({text, static_cast<std::uint32_t>(spelling.size()), hash});
  slots_[slot] = static_cast<std::uint32_t>(names_.size());
  return NameId{slots_[slot] - 1};
}

std::optional<NameId> NameTable::find(std::string_view spelling) const {
  if (slots_.empty()) return std::nullopt;
  const std::uint32_t entry = slots_[slot_of(spelling, hash_of(spelling))];
  if (entry == 0) return std::nullopt;
  return NameId{entry - 1};
}

std::string_view NameTable::spelling(NameId id) const {
  const Name& name = names_[to_index(id)];
  return {name.text, name.length};
}

void NameTable::clear() {
  names_.clear();
  slots_.clear();
  texts_.release();
}

// The slot that holds the spelling, or the free one where it belongs.
std::size_t NameTable::slot_of(std::string_view text, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
    if (slots_[slot] == 0) return slot;
    const Name& name = names_[slots_[slot] - 1];
    if (name.hash == hash && std::string_view(name.text, name.length) == text) return slot;
  }
}

void NameTable::grow() {
  constexpr std::size_t kFirstSize = 1024;
  const std::size_t size = slots_.empty() ? kFirstSize : 2 * slots_.size();
  std::vector<std::uint32_t>(size, 0).swap(slots_);
  const std::size_t mask = size - 1;
  for (std::uint32_t id = 0; id < names_.size(); ++id) {
    std::size_t slot = names_[id].hash & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = id + 1;
  }
}

NameTable& names() {
  static NameTable table;
  return table;
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

void NameNumbering::clear() {
  number_of_name_.clear();
  names_.clear();
}

}    // namespace zarel
