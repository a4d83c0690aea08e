#pragma once
// set_heading.h - the line that tells which answer set follows.

#include <string>

#include "workbench/answers/answer_set.h"

namespace workbench {

// Appends a comment of programs: "% answer set 2, cost 3 at level 1".
void append_heading(std::string& out, const AnswerSet& set);

}    // namespace workbench
