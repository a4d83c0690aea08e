#pragma once
// answer_options.h - what the user wants to see of the answers, and how.

#include <string>
#include <vector>

namespace workbench {

struct AnswerOptions {
  std::string form = "text";           // one of form_names()
  std::vector<std::string> filters;    // names of relations; all are shown when there are none
};

}    // namespace workbench
