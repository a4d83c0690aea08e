#pragma once
// solver_process.h - the solver's shell while it runs, guarded so that it never outlives Zarel.

#include <string>
#include <sys/types.h>

namespace zarel {

class SolverProcess {
 public:
  // Runs the command in the system's shell. When no process can be made, that is reported and ends
  // the run with status 1. From now on an interrupt (SIGINT, SIGTERM, SIGHUP) asks the solver to
  // end; there is one such object at a time.
  explicit SolverProcess(const std::string& command);
  SolverProcess(const SolverProcess&) = delete;
  SolverProcess& operator=(const SolverProcess&) = delete;
  ~SolverProcess();    // kills what still runs

  // Whether anything may have been written since the last call; waits a moment for it first. False
  // when the shell had ended before that call. When nobody reads standard output any more, the run
  // ends as if it had been written.
  bool may_write();

  // Waits for the end of the shell. One that could not be started is reported and ends the run
  // with status 1; one that ended by a signal is reported. After an interrupt Zarel ends here, by
  // the same signal.
  void finish();

 private:
  int end_guard();

  pid_t guard_ = -1;
  int report_ = -1;    // where the guard tells how the shell ended
  bool has_ended_ = false;
};

}    // namespace zarel
