#pragma once
// token_values.h - the values of tokens, as the grammar hands them to the builders.

#include <cstdint>

#include "base/place.h"
#include "model/name_table.h"

namespace zarel {

// The value of a NUMBER token: nine digits at most.
struct Number {
  std::uint32_t value;
  std::uint32_t digit_count;    // leading zeros count: they matter behind a weight's full stop
};

// A name, and where it stands, for what may be wrong with it; null: where the work stands. Both are
// valid for the call.
struct WrittenName {
  NameId id;
  const SourceRange* place;
};

}    // namespace zarel
