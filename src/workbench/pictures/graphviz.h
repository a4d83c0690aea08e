#pragma once
// graphviz.h - pictures drawn by Graphviz, a process that ends with ours.

#include <optional>
#include <string>

#include "workbench/messages/message.h"
#include "workbench/pictures/graph.h"

namespace workbench {

// A picture as SVG, or why there is none.
struct Drawing {
  std::string svg;
  std::string left_out;    // for its size, in words; nothing when all is there
  std::optional<Message> failure = {};
};

// What is wrong when Graphviz cannot be run; to be asked before anything takes time.
std::optional<Message> graphviz_missing();

// Draws with "dot", or what has more than 150 boxes with "sfdp", which also draws what the first is
// not done with after half of the time. It ends within these seconds.
Drawing draw(const Graph& graph, double seconds);

// The time that a picture is given.
inline constexpr double kDrawingSeconds = 20;

}    // namespace workbench
