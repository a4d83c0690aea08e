#pragma once
// digest_set.h - remembers texts by 128 bits of each.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace workbench {

// Two different texts have the same digest once in 2^128 pairs; so have sums of digests, which do
// not depend on the order.
struct Digest {
  std::uint64_t first = 0, second = 0;

  Digest& operator+=(const Digest& other) {
    first += other.first;
    second += other.second;
    return *this;
  }
  friend bool operator==(const Digest&, const Digest&) = default;
};

// Texts with another seed have other digests.
Digest digest_of(std::string_view text, std::uint64_t seed);

class DigestSet {
 public:
  // Returns whether the digest is a new one.
  bool insert(Digest digest);
  std::size_t size() const { return size_; }

 private:
  void grow();
  std::size_t place_of(const Digest& digest) const;    // where it is, or is to be

  std::vector<Digest> slots_;    // a power of two of them; {} is free
  std::size_t size_ = 0;
};

}    // namespace workbench
