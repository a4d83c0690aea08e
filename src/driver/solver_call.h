#pragma once
// solver_call.h - the solver, run through the shell on ".source", and its answers, which go to
// ".output".

#include <string>

#include "driver/options.h"

namespace zarel {

// The command line: the solver, ".source", the user's parameters, a "-filter=" word for each
// predicate that the user's atoms became, "-silent", the redirection.
std::string solver_command(const Options& options);

// Runs the command, and reads ".output" while it grows, so that answers are printed as the solver
// finds them. A shell that cannot be started is reported and ends the run with status 1; what the
// solver itself returns is not looked at. An interrupt ends the solver, and then Zarel.
void solve(const std::string& command);

}    // namespace zarel
