#pragma once
// legend.h - a line of the legend, which tells what a generated predicate stands for.

#include <iosfwd>
#include <string_view>

namespace zarel {

// Writes a comment: the text, and " at line ". The text may hold strings of several lines.
void write_legend_line(std::ostream& legend, std::string_view text);

}    // namespace zarel
