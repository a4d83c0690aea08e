#pragma once
// frame_source.h - where the clauses come from that a frame becomes.

#include "model/report.h"

namespace zarel {

// The place of the run's work, as that of a frame.
inline ClauseSource frame_source() {
  return {work().source().location, OriginId::kFrame};
}

}    // namespace zarel
