#pragma once
// source_location.h - where in the input something stands.

#include <cstdint>

namespace zarel {

// A place in an input file; all zero for what no file holds. The line is the true one, counting
// every line end; the number that messages show leaves out those inside strings and verbatim
// sections.
struct SourceLocation {
  std::uint32_t line;      // from 1
  std::uint16_t column;    // in bytes, from 1; 65535 for any column past that
  std::uint16_t
      file;    // position among the files that were read, from 0; 65535 for any file past that
};

}    // namespace zarel
