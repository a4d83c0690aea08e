#include "parser/qualified_constants.h"

#include <utility>

#include "base/characters.h"

namespace zarel {
namespace {

constexpr std::uint64_t kSizeBits = 4;
constexpr std::uint64_t kIdBits = 28;
constexpr std::uint64_t kIdMask = ((std::uint64_t{1} << kIdBits) - 1) << kSizeBits;

}    // namespace

bool ShortQualifiedConstants::takes(std::string_view local) {
  return local.size() <= kLongestShortName && !is_upper_case(local[0]);
}

// The slot that holds the constant, or the free one where it belongs.
std::size_t ShortQualifiedConstants::OfPrefix::slot_of(const ShortName& local) const {
  const std::size_t mask = slots.size() - 1;
  std::size_t position = mixed(local[0], local[1]) & mask;
  while (slots[position][0] != 0 &&
         ((slots[position][0] & ~kIdMask) != local[0] || slots[position][1] != local[1]))
    position = (position + 1) & mask;
  return position;
}

void ShortQualifiedConstants::OfPrefix::grow() {
  const std::vector<ShortName> before =
      std::exchange(slots, std::vector<ShortName>(2 * slots.size(), ShortName{}));
  for (const ShortName& slot : before) {
    if (slot[0] != 0) slots[slot_of({slot[0] & ~kIdMask, slot[1]})] = slot;
  }
}

ShortQualifiedConstants::OfPrefix& ShortQualifiedConstants::of_prefix(NameId prefix) {
  if (latest_ == nullptr || latest_prefix_ != prefix) {
    latest_ = &by_prefix_[prefix];
    latest_prefix_ = prefix;
  }
  return *latest_;
}

std::optional<TERMT> ShortQualifiedConstants::find(NameId prefix, std::string_view local) {
  const OfPrefix& constants = of_prefix(prefix);
  const std::uint64_t first = constants.slots[constants.slot_of(short_name(local))][0];
  if (first == 0) return std::nullopt;
  return TERMT::constant(NameId{static_cast<std::uint32_t>((first & kIdMask) >> kSizeBits)});
}

void ShortQualifiedConstants::note(NameId prefix, std::string_view local, const TERMT& constant) {
  if (constant.index() >> kIdBits != 0) return;
  OfPrefix& constants = of_prefix(prefix);
  if (4 * (constants.size + 1) > 3 * constants.slots.size()) constants.grow();
  const ShortName key = short_name(local);
  constants.slots[constants.slot_of(key)] = {key[0] | std::uint64_t{constant.index()} << kSizeBits,
                                             key[1]};
  ++constants.size;
}

void ShortQualifiedConstants::expect(std::string_view local) const {
  if (latest_ == nullptr || !takes(local)) return;
  const ShortName key = short_name(local);
  __builtin_prefetch(&latest_->slots[mixed(key[0], key[1]) & (latest_->slots.size() - 1)]);
}

}    // namespace zarel
