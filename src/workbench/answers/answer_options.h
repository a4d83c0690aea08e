#pragma once
// answer_options.h - what the user wants to see of the answers, and how.

#include <string>
#include <vector>

namespace workbench {

// Where answers go, and in which form.
struct Destination {
  std::string form;    // one of form_names()
  std::string file;    // empty: standard output
};

struct AnswerOptions {
  std::vector<Destination> destinations;    // at most one of them is standard output
  std::vector<std::string> filters;         // names of relations; all are shown when there are none
};

}    // namespace workbench
