#pragma once
// failed_clingo.h - why clingo has not done its work, in the user's words.

#include <string>
#include <string_view>
#include <vector>

#include "dl/child_process.h"
#include "dl/translate.h"
#include "workbench/search/search_failure.h"
#include "workbench/search/solver_message.h"

namespace workbench {

// Of a translation that failed, all that was found.
std::vector<Message> mistakes_of(const dl::Translated& translated, SolverMessages& messages);

struct FailedClingo {
  const std::string& clingo;
  const dl::Translated& program;
  std::string_view given;    // the translation, where sums are watched
};

// Throws the SearchFailure; dl::Failure when no process can be made to find out more.
[[noreturn]] void fail_with_clingo(const dl::ProcessEnd& end, const FailedClingo& search,
                                   SolverMessages& messages);

}    // namespace workbench
