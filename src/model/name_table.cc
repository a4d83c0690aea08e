#include "model/name_table.h"

#include <functional>

namespace zarel {
namespace {

template <class Word>
std::uint64_t word_at(const char* text) {
  Word word = 0;
  std::memcpy(&word, text, sizeof(word));
  return word;
}

// The first and the last bytes of a short text cover it all, so that two words are mixed, by the
// steps of the finalizer of MurmurHash3 (Appleby). A longer one is left to the library.
std::uint32_t hash_of(std::string_view spelling) {
  const char* const text = spelling.data();
  const std::size_t size = spelling.size();
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  if (size > 16) {
    first = std::hash<std::string_view>{}(spelling);
  } else if (size >= 8) {
    first = word_at<std::uint64_t>(text);
    last = word_at<std::uint64_t>(text + size - 8);
  } else if (size >= 4) {
    first = word_at<std::uint32_t>(text);
    last = word_at<std::uint32_t>(text + size - 4);
  } else {
    for (const char character : spelling)
      first = first << 8U | static_cast<unsigned char>(character);
  }
  std::uint64_t hash = (first ^ size) * 0xff51afd7ed558ccdU;
  hash = (hash ^ hash >> 33U ^ last) * 0xc4ceb9fe1a85ec53U;
  return static_cast<std::uint32_t>(hash ^ hash >> 33U);
}

}    // namespace

NameId NameTable::intern(std::string_view spelling) {
  if (4 * (std::size_t{size_} + 1) > 3 * slots_.size()) grow();
  const std::uint32_t hash = hash_of(spelling);
  Slot& slot = slots_[slot_of(spelling, hash)];
  if (slot.entry == 0) {
    add(spelling);
    slot = {hash, size_};
  }
  return NameId{slot.entry - 1};
}

std::optional<NameId> NameTable::find(std::string_view spelling) const {
  if (slots_.empty()) return std::nullopt;
  const std::uint32_t entry = slots_[slot_of(spelling, hash_of(spelling))].entry;
  if (entry == 0) return std::nullopt;
  return NameId{entry - 1};
}

// The slot that holds the spelling, or the free one where it belongs.
std::size_t NameTable::slot_of(std::string_view spelling, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t position = hash & mask;; position = (position + 1) & mask) {
    const Slot& slot = slots_[position];
    if (slot.entry == 0) return position;
    if (slot.hash == hash && name(slot.entry - 1).spelling() == spelling) return position;
  }
}

void NameTable::add(std::string_view spelling) {
  if (size_ % kChunk == 0) chunks_.emplace_back().reserve(kChunk);
  const char* const text =
      spelling.size() <= Name::kLongestInside ? spelling.data() : kept_apart(spelling);
  chunks_.back().emplace_back(text, spelling.size());
  ++size_;
}

// A copy of the text, with a NUL behind it.
const char* NameTable::kept_apart(std::string_view spelling) {
  char* const text = static_cast<char*>(texts_.allocate(spelling.size() + 1, 1));
  std::memcpy(text, spelling.data(), spelling.size());
  text[spelling.size()] = '\0';
  return text;
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
