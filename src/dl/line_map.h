#pragma once
// line_map.h - which line of the input a line of the translation comes from.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace dl {

struct Place {
  std::uint32_t file;    // index into the list of files
  std::uint32_t line;
};

// Lines of the translation are added in order. Input with one statement a line, the usual case,
// takes no memory: a run of lines that advance together with the input is one entry.
class LineMap {
 public:
  void add(Place place);    // the next line of the translation comes from here
  std::size_t lines() const { return next_; }
  Place place_of(
      std::size_t line) const;    // counted from 1; a line beyond the last gives the last

 private:
  struct Run {
    std::size_t first;
    Place place;
  };
  std::vector<Run> runs_;
  std::size_t next_ = 0;
};

}    // namespace dl
