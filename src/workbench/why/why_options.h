#pragma once
// why_options.h - what is asked of an explanation.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

struct WhyOptions {
  std::string atom;
  std::uint64_t number = 0;              // of the answer set; 0: none was chosen
  std::vector<std::string> with;         // atoms that it holds, with "not" those that it does not
  std::optional<std::uint32_t> depth;    // of proofs; 0: all of it
  std::string form = "text";
};

}    // namespace workbench
