#include "dl/explain/aggregate_elements.h"

#include <algorithm>

namespace dl {
namespace {

constexpr std::size_t kFirstSlots = 16;
constexpr std::uint32_t kNoTuple = 0xffffffffu;

std::uint64_t hash_of(std::span<const GroundTerm> tuple) {
  std::uint64_t hash = 0;
  for (const GroundTerm term : tuple) {
    hash = (hash ^ term) * 0xff51afd7ed558ccdu;
    hash ^= hash >> 29;
  }
  return hash ^ (hash >> 32);
}

}    // namespace

AggregateElements::AggregateElements(std::size_t width, std::span<const GroundTerm> outer,
                                     Ways ways)
    : width_(width), ways_(ways) {
  if (ways == Ways::kKept) outer_.assign(outer.begin(), outer.end());
}

void AggregateElements::add(std::span<const GroundTerm> tuple, std::span<const GroundTerm> values) {
  const std::uint32_t number = number_of(tuple);
  if (ways_ == Ways::kKept) add_way(number, values);
}

std::uint32_t AggregateElements::number_of(std::span<const GroundTerm> tuple) {
  if (2 * (size() + 1) > slots_.size()) grow();
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash_of(tuple) & mask;
  for (; slots_[slot] != kNoTuple; slot = (slot + 1) & mask) {
    if (std::ranges::equal(this->tuple(slots_[slot]), tuple)) return slots_[slot];
  }
  const auto number = static_cast<std::uint32_t>(size());
  terms_.insert(terms_.end(), tuple.begin(), tuple.end());
  slots_[slot] = number;
  return number;
}

void AggregateElements::grow() {
  slots_.assign(std::max(kFirstSlots, 2 * slots_.size()), kNoTuple);
  const std::size_t mask = slots_.size() - 1;
  for (std::uint32_t number = 0; number < size(); ++number) {
    std::size_t slot = hash_of(tuple(number)) & mask;
    while (slots_[slot] != kNoTuple) slot = (slot + 1) & mask;
    slots_[slot] = number;
  }
}

// Each way gives values to the same variables.
void AggregateElements::add_way(std::uint32_t tuple, std::span<const GroundTerm> values) {
  if (next_ways_.empty()) {
    for (std::uint32_t i = 0; i < values.size(); ++i) {
      if (outer_[i] == kNoTerm && values[i] != kNoTerm) inner_.push_back(i);
    }
  }
  const auto way = static_cast<std::uint32_t>(next_ways_.size());
  next_ways_.push_back(kNoWay);
  for (const std::uint32_t variable : inner_) inner_values_.push_back(values[variable]);
  if (tuple == first_ways_.size()) {
    first_ways_.push_back(way);
    last_ways_.push_back(way);
  } else {
    next_ways_[last_ways_[tuple]] = way;
    last_ways_[tuple] = way;
  }
}

std::vector<GroundTerm> AggregateElements::binding(std::uint32_t way) const {
  std::vector<GroundTerm> values = outer_;
  for (std::size_t i = 0; i < inner_.size(); ++i) {
    values[inner_[i]] = inner_values_[way * inner_.size() + i];
  }
  return values;
}

}    // namespace dl
