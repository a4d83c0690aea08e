#include "workbench/answers/stated_ranges.h"

#include <algorithm>
#include <charconv>

namespace workbench {
namespace {

std::string key_of(std::string_view relation, std::string_view space) {
  std::string key(relation);
  return (key += '@') += space;
}

}    // namespace

StatedRanges::StatedRanges(AnswerConsumer& next, const std::vector<StatedRange>& ranges)
    : AnswerStage(next) {
  for (const auto& [relation, space, least, most] : ranges) {
    bounds_[key_of(relation, space)].emplace_back(least, most);
  }
}

bool StatedRanges::states(const AnswerSet& set, const Item& item) const {
  if (item.kind != ItemKind::kAtom || item.is_negated) return false;
  const zarel::AnswerAtom atom = set.atom(item);
  const std::string_view text = atom.arguments.text();
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return false;
  const auto found = bounds_.find(key_of(atom.relation.text(), atom.space));
  if (found == bounds_.end()) return false;
  return std::ranges::any_of(found->second, [value](const auto& bounds) {
    return value >= bounds.first && value <= bounds.second;
  });
}

void StatedRanges::answer_set(AnswerSet& set) {
  set.keep_if([this, &set](const Item& item) { return !states(set, item); });
  next().answer_set(set);
}

}    // namespace workbench
