#pragma once
// set_heading.h - the line that tells one answer set from the others.

#include <string>

#include "workbench/answers/answer_set.h"

namespace workbench {

// "answer set 2, cost 3 at level 1", without a line end; a "better answer set" is an improving one.
std::string set_heading(const AnswerSet& set);
// Appends a comment of programs: "% answer set 2, cost 3 at level 1".
void append_heading(std::string& out, const AnswerSet& set);

}    // namespace workbench
