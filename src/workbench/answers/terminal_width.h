#pragma once
// terminal_width.h - how much of a line a terminal shows.

#include <cstddef>

namespace workbench {

// The columns of the terminal behind the descriptor: what COLUMNS says, or else the terminal; 0
// when it is none.
std::size_t terminal_width(int descriptor);

}    // namespace workbench
