#include "base/line_map.h"

#include <algorithm>

namespace zarel {

LineSource LineMap::advanced(const Run& run, std::size_t line) {
  LineSource source = run.source;
  source.location.line += static_cast<std::uint32_t>(line - run.first);
  return source;
}

void LineMap::add(const LineSource& source) {
  const std::size_t line = next_++;
  if (!runs_.empty()) {
    const LineSource next = advanced(runs_.back(), line);
    if (next.location.line == source.location.line && next.location.file == source.location.file &&
        next.location.column == source.location.column && next.origin == source.origin) {
      return;
    }
  }
  runs_.push_back({line, source});
}

LineSource LineMap::source_of(std::size_t line) const {
  const std::size_t wanted = line == 0 ? 0 : line - 1;
  const auto behind =
      std::upper_bound(runs_.begin(), runs_.end(), wanted,
                       [](std::size_t number, const Run& run) { return number < run.first; });
  return behind == runs_.begin() ? LineSource{} : advanced(*(behind - 1), wanted);
}

void LineMap::append(const LineMap& other) {
  for (const Run& run : other.runs_) runs_.push_back({next_ + run.first, run.source});
  next_ += other.next_;
}

}    // namespace zarel
