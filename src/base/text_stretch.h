#pragma once
// text_stretch.h - whole lines of a text.

#include <cstddef>

namespace zarel {

struct TextStretch {
  std::size_t begin = 0;    // of the first line, in bytes
  std::size_t end = 0;      // behind the line end of the last
  std::size_t lines = 0;
};

}    // namespace zarel
