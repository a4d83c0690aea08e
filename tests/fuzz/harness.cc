#include "harness.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <sys/mman.h>
#include <unistd.h>

namespace fuzz {

Input read_input(const std::uint8_t* data, std::size_t size) {
  const std::string_view all(reinterpret_cast<const char*>(data), size);
  const std::size_t line_end = std::min(all.find('\n'), size);
  std::istringstream line{std::string(all.substr(0, line_end))};
  Input input;
  for (std::string word; line >> word;) input.words.push_back(word);
  input.text = all.substr(std::min(line_end + 1, size));
  return input;
}

zarel::Options zarel_options(const std::vector<std::string>& words) {
  std::vector<std::string> copies = words;
  std::vector<char*> arguments;
  for (std::string& word : copies) arguments.push_back(word.data());
  return zarel::scan_arguments(arguments);
}

MemoryFile::MemoryFile(std::string_view text) : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
  if (::write(descriptor_, text.data(), text.size()) == static_cast<ssize_t>(text.size())) return;
  std::cerr << "no file in memory\n";
  std::abort();
}

MemoryFile::~MemoryFile() {
  ::close(descriptor_);
}

void expect_equal(std::string_view what, std::string_view expected, std::string_view found) {
  if (found == expected) return;
  std::cerr << "property broken: " << what << "\n--- expected\n"
            << expected << "\n--- found\n"
            << found << "\n---\n";
  std::abort();
}

}    // namespace fuzz
