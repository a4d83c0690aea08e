#pragma once
// solver_call.h - the solver, run through the shell on ".source" with its answers going to
// ".output".

#include <string>

#include "driver/options.h"

namespace zarel {

// The command line: the solver, ".source", the user's parameters, a "-filter=" word for each
// predicate that the user's atoms became, "-silent", the redirection.
std::string solver_command(const Options& options);

// Runs the command and waits for its end. A shell that cannot be started is reported and ends the
// run with status 1; what the solver itself returns is not looked at. An interrupt ends the solver,
// and then Zarel.
void run_solver(const std::string& command);

}    // namespace zarel
