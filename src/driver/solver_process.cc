#include "driver/solver_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <ostream>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "driver/diagnostics.h"
#include "driver/solver_guard.h"

extern char** environ;

namespace zarel {
namespace {

constexpr unsigned kGraceSeconds = 3;    // more than dl gives its clingo
constexpr std::array kInterrupts = {SIGINT, SIGTERM, SIGHUP};

// A signal handler has no other way to know these.
volatile std::sig_atomic_t guard_pid = 0;
volatile std::sig_atomic_t caught_signal = 0;
volatile std::sig_atomic_t times_asked = 0;

void tell_guard(int signal) {
  if (guard_pid != 0) ::kill(static_cast<pid_t>(guard_pid), signal);
}

void die_of_signal() {
  std::signal(caught_signal, SIG_DFL);
  std::raise(caught_signal);
}

// The first time the solver is asked to end, then it is killed; and when Zarel itself hangs, since
// nobody reads what it prints, it dies. The alarm comes where the user does not insist.
void on_signal(int signal) {
  const int saved_errno = errno;
  if (times_asked == 0) caught_signal = signal;
  if (times_asked >= 2) die_of_signal();
  tell_guard(times_asked == 0 ? kAskToEnd : kKill);
  times_asked = times_asked + 1;
  ::alarm(kGraceSeconds);
  errno = saved_errno;
}

// An interrupt that is ignored stays so.
void catch_interrupts() {
  guard_pid = 0;
  caught_signal = 0;
  times_asked = 0;
  struct sigaction action {};
  action.sa_handler = on_signal;
  sigemptyset(&action.sa_mask);
  ::sigaction(SIGALRM, &action, nullptr);
  for (const int signal : kInterrupts) {
    struct sigaction before {};
    ::sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) ::sigaction(signal, &action, nullptr);
  }
}

void release_interrupts() {
  ::alarm(0);
  std::signal(SIGALRM, SIG_DFL);
  for (const int signal : kInterrupts) {
    struct sigaction now {};
    ::sigaction(signal, nullptr, &now);
    if (now.sa_handler == on_signal) std::signal(signal, SIG_DFL);
  }
}

[[noreturn]] void end_without_shell() {
  standard_error() << "It is impossible to call the Orvund System.\n";
  SafeExit(1);
}

// What writing to a pipe that nobody reads would do.
[[noreturn]] void end_without_reader() {
  std::raise(SIGPIPE);
  standard_output().setstate(std::ios::badbit);    // the signal was ignored
  SafeExit(1);
}

// The guard with the write end of a pipe; -1 when it cannot be started.
pid_t start_guard(int report, const std::string& command) {
  std::array<std::string, 4> words{std::string(kGuardName), std::to_string(::getpid()),
                                   std::to_string(report), command};
  std::array<char*, 5> arguments{};
  for (std::size_t i = 0; i < words.size(); ++i) arguments[i] = words[i].data();
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_adddup2(&actions, report, report);    // this one stays open
  pid_t pid = -1;
  const int error =
      ::posix_spawn(&pid, "/proc/self/exe", &actions, nullptr, arguments.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? pid : -1;
}

// A shell says itself how its solver ended, but for these two.
int unsaid_signal(int status) {
  constexpr int kShellBase = 128;
  if (WIFSIGNALED(status)) return WTERMSIG(status);
  for (const int signal : {SIGINT, SIGPIPE}) {
    if (WEXITSTATUS(status) == kShellBase + signal) return signal;
  }
  return 0;
}

void report_signal(int signal) {
  standard_error() << "The solver ended by signal " << signal << " (" << ::strsignal(signal)
                   << ").\n";
}

}    // namespace

SolverProcess::SolverProcess(const std::string& command) {
  std::signal(SIGCHLD, SIG_DFL);    // who ignores it cannot wait for a child
  std::array<int, 2> ends{};
  if (::pipe2(ends.data(), O_CLOEXEC) != 0) end_without_shell();
  report_ = ends[0];
  catch_interrupts();
  guard_ = start_guard(ends[1], command);
  ::close(ends[1]);
  if (guard_ < 0) {
    ::close(report_);
    release_interrupts();
    end_without_shell();
  }
  guard_pid = guard_;
  if (caught_signal != 0) tell_guard(kAskToEnd);    // it came before there was anyone to tell
}

SolverProcess::~SolverProcess() {
  if (guard_ < 0) return;
  ::kill(guard_, kKill);
  static_cast<void>(end_guard());
  release_interrupts();
}

bool SolverProcess::may_write() {
  constexpr int kMilliseconds = 10;
  if (has_ended_) return false;
  std::array<pollfd, 2> watched{{{report_, POLLIN, 0}, {STDOUT_FILENO, 0, 0}}};
  if (::poll(watched.data(), watched.size(), kMilliseconds) <= 0) return true;
  if ((watched[1].revents & POLLERR) != 0) end_without_reader();
  has_ended_ = watched[0].revents != 0;
  return true;
}

// Returns how the shell ended. A guard that was killed could not tell, and took the shell along.
int SolverProcess::end_guard() {
  int status = kNoShell;
  ssize_t got = 0;
  do {
    got = ::read(report_, &status, sizeof status);
  } while (got < 0 && errno == EINTR);
  ::close(report_);
  int guard_status = 0;
  while (::waitpid(guard_, &guard_status, 0) < 0 && errno == EINTR) {
  }
  guard_ = -1;
  if (got == sizeof status) return status;
  return WIFSIGNALED(guard_status) ? guard_status : kNoShell;
}

void SolverProcess::finish() {
  const int status = end_guard();
  release_interrupts();
  if (caught_signal != 0) die_of_signal();
  if (status == kNoShell) end_without_shell();
  if (const int signal = unsaid_signal(status); signal != 0) report_signal(signal);
}

}    // namespace zarel
