#pragma once
// scanner_input.h - what the generated scanner calls to fill its buffer, and when it cannot go on.

#include <cstddef>
#include <cstdio>

namespace zarel {

// Reads up to `size` bytes into the buffer and returns their number, 0 at the end of the file. A
// failed read ends the run as scanner_failed does.
int read_input(std::FILE* file, char* buffer, std::size_t size);

// Reports the scanner's message and ends the run with status 1.
[[noreturn]] void scanner_failed(const char* message);

}    // namespace zarel
