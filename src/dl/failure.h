#pragma once
// failure.h - how a run of dl ends before its time: one line for standard error, and the exit
// status.

#include <cstddef>
#include <string>
#include <string_view>

namespace dl {

// The exit statuses of dl. A search that was cut has printed what was found, so it is neither
// success nor an error.
enum ExitStatus : int { kSuccess = 0, kError = 1, kCut = 2 };

// Thrown where a run cannot go on; caught by main alone, which prints the line. Nothing is thrown
// through the generated parser: its builder keeps the first mistake instead.
struct Failure {
  std::string message;    // one line without its end; empty when the line has been written
};

// "file:line: message", the form of every message about a place in the input.
std::string at_place(std::string_view file, std::size_t line, std::string_view message);

}    // namespace dl
