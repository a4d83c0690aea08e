#include "workbench/messages/nearest.h"

#include <algorithm>
#include <array>
#include <vector>

namespace workbench {
namespace {

constexpr std::size_t kLongestWord = 64;    // longer ones are no slips of anything

std::size_t allowed_slips(std::size_t length) {
  if (length < 3) return 0;
  if (length < 5) return 1;
  return length < 10 ? 2 : 3;
}

// The distance with exchanged neighbours (optimal string alignment), row by row.
std::size_t slips_between(std::string_view left, std::string_view right) {
  using Row = std::array<std::size_t, kLongestWord + 1>;
  Row before_last{};
  Row last{};
  Row current{};
  for (std::size_t j = 0; j <= right.size(); ++j) last[j] = j;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    current[0] = i;
    for (std::size_t j = 1; j <= right.size(); ++j) {
      const bool is_same = left[i - 1] == right[j - 1];
      current[j] = std::min({last[j] + 1, current[j - 1] + 1, last[j - 1] + (is_same ? 0U : 1U)});
      const bool are_exchanged =
          i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1];
      if (are_exchanged) current[j] = std::min(current[j], before_last[j - 2] + 1);
    }
    before_last = last;
    last = current;
  }
  return last[right.size()];
}

}    // namespace

std::string_view nearest(std::string_view word, std::span<const std::string_view> names) {
  if (word.size() > kLongestWord) return {};
  std::string_view best;
  std::size_t least = allowed_slips(word.size()) + 1;
  for (const std::string_view name : names) {
    const std::size_t longer = std::max(name.size(), word.size());
    const std::size_t shorter = std::min(name.size(), word.size());
    if (name.size() > kLongestWord || longer - shorter >= least) continue;
    const std::size_t slips = slips_between(word, name);
    if (slips >= least) continue;
    least = slips;
    best = name;
  }
  return best;
}

}    // namespace workbench
