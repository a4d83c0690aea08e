#include "driver/solver_call.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <sys/wait.h>

#include "driver/diagnostics.h"
#include "driver/intermediate_files.h"
#include "model/program.h"

namespace zarel {
namespace {

// The solver beside this program is found when the user's own PATH has none.
void append_own_folder_to_path() {
  std::error_code error;
  const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return;
  const char* const path =
      std::getenv("PATH");    // NOLINT(concurrency-mt-unsafe): there are no threads
  std::string folders = path == nullptr ? "" : path;
  if (!folders.empty()) folders += ':';
  folders += program.parent_path().string();
  static_cast<void>(
      setenv("PATH", folders.c_str(), 1));    // without it the shell itself says what it misses
}

// The shell, or a solver that caught the signal, reports an interrupt as 128 and the signal's
// number.
bool was_interrupted(int status) {
  constexpr int kShellSignalBase = 128;
  return (WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) ||
         (WIFEXITED(status) && WEXITSTATUS(status) == kShellSignalBase + SIGINT);
}

// Where no shell can be made (a command line that is too long, no more processes), system() gives
// the status of a command that was not found; only the error number tells the two apart.
bool is_without_shell(int status, int error) {
  constexpr int kNotFound = 127;
  return status < 0 ||
         (WIFEXITED(status) && WEXITSTATUS(status) == kNotFound && error != 0 && error != EINTR);
}

}    // namespace

std::string solver_command(const Options& options) {
  std::string command = "\"";
  command.append(options.solver)
      .append("\" ")
      .append(kSourceName)
      .append(" ")
      .append(options.solver_parameters);
  for (const NameId name : Atom_Globals().names()) {
    command.append("-filter=").append(names().spelling(name)).append(" ");
  }
  return command.append("-silent > ").append(kOutputName);
}

void run_solver(const std::string& command) {
  append_own_folder_to_path();
  standard_output().flush();
  errno = 0;
  const int status =
      std::system(command.c_str());    // NOLINT(cert-env33-c): the command line is an interface
  if (is_without_shell(status, errno)) {
    standard_error() << "It is impossible to call the Orvund System.\n";
    SafeExit(1);
  }
  if (was_interrupted(status)) static_cast<void>(std::raise(SIGINT));
}

}    // namespace zarel
