#pragma once
// aggregate_elements.h - the elements of an aggregate that hold. There may be a million, so they lie
// in flat lists.

#include <cstdint>
#include <span>
#include <vector>

#include "dl/explain/ground_terms.h"

namespace dl {

constexpr std::uint32_t kNoWay = 0xffffffffu;

// Whether the ways are kept in which the elements hold, or their tuples alone.
enum class Ways : bool { kForgotten, kKept };

class AggregateElements {
 public:
  AggregateElements() = default;
  // Of so many terms in a tuple, at least one. `outer` are the values of the variables outside the
  // braces, kNoTerm for all others.
  AggregateElements(std::size_t width, std::span<const GroundTerm> outer, Ways ways);

  // Adds one way in which an element holds: its tuple, and the values of all variables.
  void add(std::span<const GroundTerm> tuple, std::span<const GroundTerm> values);

  // The distinct tuples, in the order in which they were found.
  std::size_t size() const { return width_ == 0 ? 0 : terms_.size() / width_; }
  std::span<const GroundTerm> tuple(std::size_t number) const {
    return std::span(terms_).subspan(number * width_, width_);
  }
  GroundTerm first_term(std::size_t number) const { return terms_[number * width_]; }

  // The ways in which the tuple holds, in the order in which they were found: the first, and the one
  // behind another, kNoWay behind the last.
  std::uint32_t first_way(std::size_t tuple) const { return first_ways_[tuple]; }
  std::uint32_t next_way(std::uint32_t way) const { return next_ways_[way]; }
  // The values of all variables.
  std::vector<GroundTerm> binding(std::uint32_t way) const;

  // What the function makes of them; kNoTerm for an extremum of nothing and every average. A sum or
  // a count beyond 31 bits is not reached: such answer sets are refused.
  GroundTerm value = kNoTerm;

 private:
  std::uint32_t number_of(std::span<const GroundTerm> tuple);
  void grow();
  void add_way(std::uint32_t tuple, std::span<const GroundTerm> values);

  std::size_t width_ = 0;
  std::vector<GroundTerm> terms_;       // of the tuples, one behind the other
  std::vector<std::uint32_t> slots_;    // tuples by hash
  Ways ways_ = Ways::kForgotten;
  std::vector<GroundTerm> outer_;
  std::vector<std::uint32_t> inner_;                     // the variables that the elements bind
  std::vector<GroundTerm> inner_values_;                 // of each way
  std::vector<std::uint32_t> first_ways_, last_ways_;    // by tuple
  std::vector<std::uint32_t> next_ways_;                 // by way
};

}    // namespace dl
