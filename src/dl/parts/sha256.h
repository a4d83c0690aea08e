#pragma once
// sha256.h - digests of files, by which parts of one search tell each other from those of others
// (FIPS 180-4). The command sha256sum gives the same.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace dl {

class Sha256 {
 public:
  void add(std::string_view text);
  std::string hex() const;    // of all that was added, 64 digits

 private:
  void add_block(const unsigned char* block);

  std::array<std::uint32_t, 8> state_{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                                      0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
  std::array<unsigned char, 64> rest_{};    // that makes no block yet
  std::size_t rest_size_ = 0;
  std::uint64_t size_ = 0;
};

std::string sha256(std::string_view text);

}    // namespace dl
