#include "dl/interruption.h"

#include <cerrno>
#include <csignal>
#include <string>
#include <sys/types.h>
#include <unistd.h>

namespace dl {
namespace {

constexpr unsigned kGraceSeconds = 2;    // between asking the search to end and ending it
constexpr std::sig_atomic_t kNotBegun = 0;
constexpr std::sig_atomic_t kEnded = -1;

// A signal handler has no other way to know these.
volatile std::sig_atomic_t searching = kNotBegun;    // or the process, or kEnded
volatile std::sig_atomic_t reason = static_cast<int>(Interruption::kNone);
std::string time_text;    // both as interruption_text() gives them
constexpr std::string_view kSignalText = "the search was interrupted";
int cut_status = 0;

[[noreturn]] void end_at_once() {
  for (const std::string_view text :
       {std::string_view("dl: "), interruption_text(), std::string_view("\n")}) {
    if (::write(STDERR_FILENO, text.data(), text.size()) < 0) break;
  }
  ::_exit(cut_status);
}

// A further signal hurries nothing: a terminal's interrupt may come twice, from it and from who
// started dl.
void on_signal(int signal) {
  const int saved_errno = errno;
  if (interruption() == Interruption::kNone) {
    reason = static_cast<int>(signal == SIGALRM ? Interruption::kTime : Interruption::kSignal);
    if (searching == kNotBegun) end_at_once();
    if (searching != kEnded) ::kill(static_cast<pid_t>(searching), SIGTERM);
    ::alarm(kGraceSeconds);
  } else if (signal == SIGALRM && searching != kEnded) {
    ::kill(static_cast<pid_t>(searching), SIGKILL);
  }
  errno = saved_errno;
}

}    // namespace

void watch_interruptions(unsigned seconds, int status) {
  cut_status = status;
  time_text = "the search was cut after " + std::to_string(seconds) + " s";
  struct sigaction action {};
  action.sa_handler = on_signal;
  sigemptyset(&action.sa_mask);
  sigset_t watched;
  sigemptyset(&watched);
  for (const int signal : {SIGINT, SIGTERM, SIGALRM}) {
    ::sigaction(signal, &action, nullptr);
    sigaddset(&watched, signal);
  }
  ::alarm(seconds);    // and none of those who started us
  ::sigprocmask(SIG_UNBLOCK, &watched, nullptr);
}

void begin_search(int process) {
  searching = process;
}

void end_search() {
  searching = kEnded;
}

Interruption interruption() {
  return static_cast<Interruption>(reason);
}

std::string_view interruption_text() {
  return interruption() == Interruption::kTime ? std::string_view(time_text) : kSignalText;
}

}    // namespace dl
