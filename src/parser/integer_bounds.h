#pragma once
// integer_bounds.h - the bound that "#maxint" sets on the integers of the program, in whatever
// order they come.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/diagnostic.h"
#include "base/place.h"
#include "model/term.h"

namespace zarel {

class IntegerBounds {
 public:
  // An integer of the program. One above the bound is reported and counted as an error.
  TERMT integer(std::uint32_t value);

  // "#maxint" as a term: the bound. Without one that is reported and counted, and the bound becomes
  // 0.
  TERMT maxint();

  // The directive "#maxint = term.": true when it is the program's and belongs into it. A second
  // one is only reported; a term that is no integer, or a bound below an integer already seen, is
  // reported and counted, at the term's place.
  bool define(const TERMT& term, const SourceRange& place);

  // The bound, and the greatest integer so far; -1 for none.
  std::int64_t MaxInteger() const { return MaxInteger_; }
  std::int64_t MaxIntegerSeen() const { return MaxIntegerSeen_; }

 private:
  static constexpr std::int64_t kNone = -1;

  std::vector<Note> definition(std::string text) const;    // its place, where there was one

  std::optional<Place> definition_;    // of the bound
  std::int64_t MaxInteger_ = kNone;
  std::int64_t MaxIntegerSeen_ = kNone;
};

}    // namespace zarel
