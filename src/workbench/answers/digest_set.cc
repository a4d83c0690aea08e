#include "workbench/answers/digest_set.h"

#include <cstring>
#include <utility>

namespace workbench {
namespace {

// Odd numbers without a pattern, and the steps of the generator splitmix64.
constexpr std::uint64_t kFirst = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t kSecond = 0xD6E8FEB86659FD93U;

std::uint64_t stirred(std::uint64_t value) {
  value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
  value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
  return value ^ (value >> 31U);
}

void add_word(Digest& digest, std::uint64_t word) {
  digest.first = (digest.first ^ word) * kFirst;
  digest.first ^= digest.first >> 32U;
  digest.second = (digest.second + stirred(word)) * kSecond;
  digest.second ^= digest.second >> 29U;
}

}    // namespace

Digest digest_of(std::string_view text, std::uint64_t seed) {
  Digest digest{stirred(seed + kFirst), stirred(seed + kSecond)};
  add_word(digest, text.size());
  std::uint64_t word = 0;
  while (text.size() >= sizeof word) {
    std::memcpy(&word, text.data(), sizeof word);
    add_word(digest, word);
    text.remove_prefix(sizeof word);
  }
  word = 0;
  if (!text.empty()) std::memcpy(&word, text.data(), text.size());
  add_word(digest, word);
  return {stirred(digest.first), stirred(digest.second)};
}

std::size_t DigestSet::place_of(const Digest& digest) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t place = static_cast<std::size_t>(stirred(digest.first)) & mask;
  while (slots_[place] != Digest() && slots_[place] != digest) place = (place + 1) & mask;
  return place;
}

void DigestSet::grow() {
  constexpr std::size_t kLeast = 64;
  const std::vector<Digest> old =
      std::exchange(slots_, std::vector<Digest>(slots_.empty() ? kLeast : slots_.size() * 2));
  for (const Digest& digest : old) {
    if (digest != Digest()) slots_[place_of(digest)] = digest;
  }
}

bool DigestSet::insert(Digest digest) {
  if (digest == Digest()) digest.first = 1;    // the mark of a free slot is no digest
  if (size_ * 4 >= slots_.size() * 3) grow();
  Digest& slot = slots_[place_of(digest)];
  if (slot == digest) return false;
  slot = digest;
  ++size_;
  return true;
}

}    // namespace workbench
