#pragma once
// exit_status.h - what `zrl` tells the shell.

namespace workbench {

enum class ExitStatus : int {
  kFound = 0,            // an answer set; a query that is true, or has rows; a check without errors
  kProgramErrors = 1,    // errors in the program
  kUsage = 2,            // wrong usage, or a file that cannot be read
  kSolverFailed = 3,     // the solver is missing, or failed
  kOutputFailed = 4,     // the answers could not be written
  kNoneFound = 10,       // no answer set; a query that is false, or has no rows
  kIncomplete = 20,      // ended by a limit or an interrupt; what was found is printed
};

}    // namespace workbench
