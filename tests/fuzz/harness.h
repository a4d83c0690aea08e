#pragma once
// harness.h - what the fuzz targets share: how an input is read, files that are none, and how a
// property is stated.
//
// The first line of an input holds options as on the command line, so that a found input can be
// read, and run by hand; all other lines are the text.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "driver/options.h"

namespace fuzz {

struct Input {
  std::vector<std::string> words;    // of the first line
  std::string_view text;             // behind it; looks into the fuzzer's bytes
};

Input read_input(const std::uint8_t* data, std::size_t size);

// The words as zarel's command line.
zarel::Options zarel_options(const std::vector<std::string>& words);

// A file in memory that can be opened by its path.
class MemoryFile {
 public:
  explicit MemoryFile(std::string_view text);
  ~MemoryFile();
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

// Aborts, which the fuzzer takes as a find, when the two texts differ; shows both with what they
// are.
void expect_equal(std::string_view what, std::string_view expected, std::string_view found);

}    // namespace fuzz
