#pragma once
// scanner_input.h - the text that a scanner reads, piece by piece, and what it does when it cannot
// go on.

#include <cstddef>
#include <cstdio>
#include <string_view>
#include <variant>

namespace zarel {

// A file from where it stands, or a text in memory. Neither is owned.
class ScannerInput {
 public:
  explicit ScannerInput(std::FILE* file) : source_(file) {}
  explicit ScannerInput(std::string_view text) : source_(text) {}

  // Reads up to `size` bytes into the buffer and returns their number, 0 at the end. A failed read
  // ends the run as scanner_failed does.
  std::size_t read(char* buffer, std::size_t size);

 private:
  std::variant<std::FILE*, std::string_view> source_;    // of a text, what is still to be read
};

// Reports the scanner's message and ends the run with status 1.
[[noreturn]] void scanner_failed(const char* message);

}    // namespace zarel
