#pragma once
// mistake.h - what is wrong with a statement, found while its text is at hand.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/diagnostic.h"
#include "dl/sources.h"

namespace dl {

// A further place that a mistake is about, and what is there.
struct Elsewhere {
  FileRange range;
  std::string text;
};

struct Mistake {
  zarel::Code code;
  std::string text;       // one line
  std::string_view at;    // what is at fault, in the text that is being read
  std::optional<Elsewhere> elsewhere = {};
  std::uint32_t line = 0;     // see Note [lines as shown]
  std::string detail = {};    // what is at fault by its name, where it has one
};

using MaybeMistake = std::optional<Mistake>;

// The mistake, found in that file, which has not been released.
zarel::Diagnostic diagnostic_of(const Mistake& mistake, const Sources& sources, std::uint32_t file);

}    // namespace dl
