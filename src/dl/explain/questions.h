#pragma once
// questions.h - dl's questions of a program: why, why not, what conflicts, what is paid.

#include <functional>
#include <string_view>

#include "dl/options.h"
#include "dl/translate.h"

namespace dl {

// Answers the question of the options. `take` gets the answer in pieces, as it is found. Returns
// false when a search or what follows it was cut, so that the answer is not complete. Throws Failure for an atom that
// cannot be read, a program with a mistake, and a search that failed.
bool answer_question(Program program, const Options& options,
                     std::function<void(std::string_view)> take);

}    // namespace dl
