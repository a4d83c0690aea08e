#pragma once
// dot_text.h - a graph in the language of Graphviz.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/pictures/graph.h"

namespace workbench {

// How much of a graph is written. A box that has more lines tells how many, a text that is cut ends
// in "…".
struct DotLimits {
  std::size_t boxes = SIZE_MAX;    // and the arrows between these alone
  std::size_t arrows = SIZE_MAX;
  std::size_t lines = SIZE_MAX;         // of a box
  std::size_t characters = SIZE_MAX;    // of a text
  bool has_clusters = true;             // or else each box names its own
};

// The whole text. Whatever the graph's texts hold, it is valid UTF-8: bytes that are none, control
// characters and those that turn the direction of writing are shown as \x80 and \u{202e}.
std::string dot_text(const Graph& graph, const DotLimits& limits = {});

// How many arrows lie between the first boxes.
std::size_t arrows_between(const Graph& graph, std::size_t boxes);

}    // namespace workbench
