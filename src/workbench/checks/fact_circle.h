#pragma once
// fact_circle.h - whether the facts of a relation lead in a circle.

#include <cstddef>
#include <optional>
#include <string>

#include "model/run.h"

namespace workbench {

// A relation's facts as arrows, from one of their arguments (from 1) to another.
struct Arrows {
  zarel::NameId name;
  zarel::NameId space;
  std::size_t arity;
  std::size_t from;
  std::size_t to;
};

// Something that they lead back to, as it was written; nothing when there is none. Takes time linear
// in the program.
std::optional<std::string> circle_in_facts(const zarel::Run& run, const Arrows& arrows);

}    // namespace workbench
