#pragma once
// interrupted.h - ends what is computed for an explanation when an interruption comes.

#include <cstdint>

#include "dl/interruption.h"

namespace dl {

// Thrown: the explanation that is being made is not complete.
struct Interrupted {};

// To be asked in long loops. An interruption that was there before it was made ends nothing: it cut
// a search, and what that found is explained all the same.
class InterruptionCheck {
 public:
  // Looks now and then. Throws Interrupted.
  void step() {
    if (++steps_ % kOften == 0) look();
  }

 private:
  static constexpr std::uint32_t kOften = 4096;
  void look() const {
    if (!has_come_before_ && interruption() != Interruption::kNone) throw Interrupted();
  }

  bool has_come_before_ = interruption() != Interruption::kNone;
  std::uint32_t steps_ = 0;
};

}    // namespace dl
