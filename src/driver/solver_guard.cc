#include "driver/solver_guard.h"

#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zarel {
namespace {

constexpr std::size_t kArguments = 4;

// Whether a process, or the last one that a shell waited for, ended by a signal.
bool ended_by_signal(int status) {
  constexpr int kShellBase = 128;
  return WIFSIGNALED(status) ||
         (WEXITSTATUS(status) > kShellBase && WEXITSTATUS(status) < kShellBase + NSIG);
}

class Guard {
 public:
  explicit Guard(int report) : report_(report) {
    sigset_t all;
    sigfillset(&all);
    sigprocmask(SIG_SETMASK, &all, &mask_of_zarel_);
    sigemptyset(&awaited_);
    for (const int signal : {SIGCHLD, kAskToEnd, kKill}) {
      std::signal(signal, SIG_DFL);    // one that is ignored never arrives
      sigaddset(&awaited_, signal);
    }
    fcntl(report_, F_SETFD, FD_CLOEXEC);
    prctl(PR_SET_NAME, kGuardName.data());
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    prctl(PR_SET_PDEATHSIG, kKill);
  }

  void run(const char* command) {
    shell_ = fork();
    if (shell_ == 0) become_shell(command);
    if (shell_ < 0) return report(kNoShell);
    while (!has_ended()) wait_for_signal();
    report(status_.value_or(kNoShell));
  }

 private:
  // The shell dies with the guard, should that be killed.
  [[noreturn]] void become_shell(const char* command) const {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    sigprocmask(SIG_SETMASK, &mask_of_zarel_, nullptr);
    execl("/bin/sh", "sh", "-c", command, nullptr);
    report(kNoShell);
    _exit(1);
  }

  // Buries what has ended. What a shell that was killed has left is to end, too; other processes
  // may stay when the shell has done its work.
  bool has_ended() {
    int status = 0;
    pid_t child = 0;
    while ((child = waitpid(-1, &status, WNOHANG)) > 0) {
      if (child != shell_) continue;
      status_ = status;
      if (signal_ == 0 && ended_by_signal(status)) signal_ = SIGKILL;
    }
    return child < 0 || (status_ && signal_ == 0);
  }

  // Children may arrive without a word while others end, so they are looked for now and then.
  void wait_for_signal() {
    constexpr timespec kMoment{0, 20'000'000};
    if (signal_ != 0) signal_children();
    const int signal = sigtimedwait(&awaited_, nullptr, signal_ != 0 ? &kMoment : nullptr);
    if (signal == kKill) signal_ = SIGKILL;
    if (signal == kAskToEnd && signal_ == 0) signal_ = SIGTERM;
  }

  // Each is asked once: some take a second time for impatience.
  void signal_children() {
    std::ifstream children("/proc/thread-self/children");
    if (!children.is_open() && !status_) kill(shell_, signal_);    // a system without such lists
    pid_t child = 0;
    while (children >> child) {
      if (signal_ == SIGTERM && !asked_.insert(child).second) continue;
      kill(child, signal_);
      kill(child, SIGCONT);    // a stopped one hears nothing
    }
  }

  // Who is to read it may have gone.
  void report(int status) const { static_cast<void>(!write(report_, &status, sizeof status)); }

  int report_;
  sigset_t mask_of_zarel_{};
  sigset_t awaited_{};
  pid_t shell_ = -1;
  std::optional<int> status_;    // of the shell, once it has ended
  int signal_ = 0;               // what the children are sent: nothing, SIGTERM or SIGKILL
  std::set<pid_t> asked_;
};

}    // namespace

bool is_guard(std::span<char* const> arguments) {
  return arguments.size() == kArguments && arguments[0] == kGuardName;
}

void guard_solver(std::span<char* const> arguments) {
  Guard guard(std::atoi(arguments[2]));
  // Zarel may have gone before it could be asked to tell.
  if (std::to_string(getppid()) == arguments[1]) guard.run(arguments[3]);
  _exit(0);
}

}    // namespace zarel
