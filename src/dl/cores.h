#pragma once
// cores.h - what the machine can do at once.

#include <algorithm>
#include <cstddef>
#include <thread>

namespace dl {

inline std::size_t cores() {
  return std::max(1U, std::thread::hardware_concurrency());
}

}    // namespace dl
