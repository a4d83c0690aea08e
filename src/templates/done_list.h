#pragma once
// done_list.h - the expansions that were made in this run.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zarel {

// The generated predicate of each expanded signature. Of a signature that was expanded twice, the
// first.
class DoneList {
 public:
  void add(std::uint32_t signature, const std::string& generated) {
    generated_.try_emplace(signature, generated);
  }
  // The generated name; null for a signature that was not expanded.
  const std::string* find(std::uint32_t signature) const {
    const auto found = generated_.find(signature);
    return found == generated_.end() ? nullptr : &found->second;
  }

 private:
  std::unordered_map<std::uint32_t, std::string> generated_;
};

}    // namespace zarel
