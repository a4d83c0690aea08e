#pragma once
// source_file.h - the text of an input file, and where included files are looked for.

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace dl {

struct SourceFile {
  std::string text;    // the whole file, then two NUL bytes for the scanner
  std::pair<std::uint64_t, std::uint64_t>
      identity;    // device and inode: the same file under two names is one file
};

// Reads the whole file. Throws Failure when it cannot be read, is a directory, has more than some
// two gigabytes, or holds a NUL byte (which clingo would take for the end of a string); `place` is
// put in front of the message, "" or "file:line: ".
SourceFile read_source_file(const std::string& path, const std::string& place);

// The path that an include line means: next to the including file, or else in the working
// directory.
std::string resolve_include(std::string_view including_file, std::string_view name);

}    // namespace dl
