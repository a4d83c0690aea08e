#pragma once
// job_options.h - what is asked of a search in parts that lies in a folder.

#include <cstddef>
#include <string>

namespace workbench {

struct JobOptions {
  std::string folder;
  std::size_t part = 0;
  std::size_t pieces = 0;        // that the part is to be cut into; 0: it is searched
  bool hands_bound_on = true;    // the costs that are found go to parts that run later
  bool is_partial = false;       // what is there is joined, whatever is missing
};

}    // namespace workbench
