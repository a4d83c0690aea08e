#pragma once
// source_file.h - the text of an input file, and where included files are looked for.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/diagnostic.h"

namespace dl {

// Device and inode: the same file under two names is one file.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

struct SourceFile {
  std::string text;    // the whole file
  FileIdentity identity;
  std::optional<zarel::Diagnostic> mistake;    // then there is no text
};

// Reads the whole file. It is a mistake, at `place`, when it cannot be read, is a directory, or has
// more than some two gigabytes.
SourceFile read_source_file(const std::string& path, const zarel::Place& place);

// The path that an include line means: next to the including file, or else in the working
// directory.
std::string resolve_include(std::string_view including_file, std::string_view name);

}    // namespace dl
