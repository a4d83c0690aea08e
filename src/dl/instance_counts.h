#pragma once
// instance_counts.h - which rules cost the grounder most, for who asks: a grounding of its own; see
// the Note [counted instances].

#include <cstdint>
#include <vector>

#include "base/place.h"
#include "dl/options.h"
#include "dl/translate.h"

namespace dl {

// A statement, or all that begin in one line, and how many instances its body and the elements of
// its aggregates have.
struct InstanceCount {
  zarel::SourceLocation location;
  std::uint64_t instances = 0;
};

struct InstanceCounts {
  Sources sources;                       // of the locations
  std::vector<InstanceCount> largest;    // first; those that have none are left out
};

// Grounds the program. Throws Failure when the program has a mistake, or clingo does not come to
// the end.
InstanceCounts count_instances(Program program, Options options);

}    // namespace dl
