#pragma once
// line_map.h - where the lines of a made text come from.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/place.h"

namespace zarel {

// What a line of a made text comes from: a place of the input, and what made it, as a number that
// the map's owner gives. 0 for what was written as it is.
struct LineSource {
  SourceLocation location;
  std::uint32_t origin = 0;
};

// Lines are added in order. Input with one statement a line, the usual case, takes no memory: lines
// that advance together with the input, in the same column and of the same origin, are one entry.
class LineMap {
 public:
  void add(const LineSource& source);    // the next line comes from here
  std::size_t lines() const { return next_; }

  // Of a line, from 1; a line beyond the last gives what would follow it.
  LineSource source_of(std::size_t line) const;

  // All lines of another text, which stands behind what is mapped so far.
  void append(const LineMap& other);

 private:
  struct Run {
    std::size_t first;
    LineSource source;
  };
  static LineSource advanced(const Run& run, std::size_t line);

  std::vector<Run> runs_;
  std::size_t next_ = 0;
};

}    // namespace zarel
