#include "dl/line_map.h"

#include <algorithm>

namespace dl {

void LineMap::add(Place place) {
  const std::size_t line = next_++;
  if (!runs_.empty()) {
    const Run& run = runs_.back();
    if (run.place.file == place.file && run.place.line + (line - run.first) == place.line) return;
  }
  runs_.push_back({line, place});
}

Place LineMap::place_of(std::size_t line) const {
  const std::size_t wanted = line == 0 ? 0 : line - 1;
  const auto after = std::upper_bound(runs_.begin(), runs_.end(), wanted,
                                      [](std::size_t l, const Run& run) { return l < run.first; });
  if (after == runs_.begin()) return {0, 0};
  const Run& run = *(after - 1);
  return {run.place.file, run.place.line + static_cast<std::uint32_t>(wanted - run.first)};
}

}    // namespace dl
