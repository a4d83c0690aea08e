#include "dl/interruption.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <string>
#include <sys/time.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace dl {
namespace {

constexpr double kPatience = 0.3;    // with a reader that takes nothing
constexpr std::sig_atomic_t kNotBegun = 0;
constexpr std::sig_atomic_t kEnded = -1;

// A signal handler has no other way to know these.
volatile std::sig_atomic_t searching = kNotBegun;    // or the process, or kEnded
volatile std::sig_atomic_t has_group = 0;            // it is the group of that process
volatile std::sig_atomic_t is_feeding = 0;
volatile std::sig_atomic_t was_killed = 0;
volatile std::sig_atomic_t is_writing = 0;
volatile std::sig_atomic_t progress = 0;         // made in writing
volatile std::sig_atomic_t progress_seen = 0;    // by the handler
volatile std::sig_atomic_t reason = static_cast<int>(Interruption::kNone);
InterruptionPlan plan;
std::string time_text;    // both as interruption_text() gives them
constexpr std::string_view kSignalText = "the search was interrupted";

void send(int signal) {
  if (searching == kNotBegun || searching == kEnded) return;
  ::kill(static_cast<pid_t>(has_group != 0 ? -searching : searching), signal);
}

[[noreturn]] void end_at_once(const std::string& line) {
  send(SIGKILL);
  if (::write(STDERR_FILENO, line.data(), line.size()) < 0) ::_exit(plan.status);
  ::_exit(plan.status);
}

void set_alarm(double seconds) {
  constexpr double kForever = 1e9;
  double whole = 0;
  const double part = std::modf(std::min(seconds, kForever), &whole);
  itimerval timer{};
  timer.it_value.tv_sec = static_cast<time_t>(whole);
  timer.it_value.tv_usec = static_cast<suseconds_t>(part * 1e6);
  if (seconds > 0 && whole == 0 && timer.it_value.tv_usec == 0) timer.it_value.tv_usec = 1;
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

// The alarm comes again after the grace: who does not listen is killed, and who waits for a reader
// that takes nothing waits no longer.
void insist() {
  const bool is_searching = searching != kNotBegun && searching != kEnded;
  if (was_killed == 0 && is_searching) {
    was_killed = 1;
    send(SIGKILL);
  } else if (is_writing != 0 && progress == progress_seen) {
    end_at_once(plan.stuck_line);
  }
  progress_seen = progress;
  if (plan.ends_while_writing) set_alarm(kPatience);
}

// A further signal hurries nothing: a terminal's interrupt may come twice, from it and from who
// started the program.
void on_signal(int signal) {
  const int saved_errno = errno;
  if (interruption() == Interruption::kNone) {
    reason = static_cast<int>(signal == SIGALRM ? Interruption::kTime : Interruption::kSignal);
    if (searching == kNotBegun || is_feeding != 0) {
      end_at_once(signal == SIGALRM ? plan.time_line : plan.signal_line);
    }
    send(SIGTERM);
    set_alarm(plan.grace);
  } else if (signal == SIGALRM) {
    insist();
  }
  errno = saved_errno;
}

bool is_ignored(int signal) {
  struct sigaction now {};
  ::sigaction(signal, nullptr, &now);
  return now.sa_handler == SIG_IGN;
}

}    // namespace

void watch_interruptions(InterruptionPlan chosen) {
  plan = std::move(chosen);
  struct sigaction action {};
  action.sa_handler = on_signal;
  sigemptyset(&action.sa_mask);
  // One at a time: each looks at what the one before has noted.
  for (const int signal : {SIGINT, SIGTERM, SIGALRM, SIGHUP}) sigaddset(&action.sa_mask, signal);
  sigset_t watched;
  sigemptyset(&watched);
  for (const int signal : {SIGINT, SIGTERM, SIGALRM, SIGHUP}) {
    if (signal == SIGHUP && (!plan.hangs_up || is_ignored(signal))) continue;
    ::sigaction(signal, &action, nullptr);
    sigaddset(&watched, signal);
  }
  set_alarm(plan.seconds);    // and none of those who started us
  ::sigprocmask(SIG_UNBLOCK, &watched, nullptr);
}

void watch_interruptions(unsigned seconds, int status) {
  InterruptionPlan as_dl;
  as_dl.seconds = seconds;
  as_dl.status = status;
  time_text = "the search was cut after " + std::to_string(seconds) + " s";
  as_dl.time_line = "dl: " + time_text + '\n';
  ((as_dl.signal_line = "dl: ") += kSignalText) += '\n';
  watch_interruptions(std::move(as_dl));
}

void hold_interruptions() {
  searching = kEnded;
  is_feeding = 0;
}

void begin_search(int process) {
  is_feeding = plan.ends_while_feeding && process > 0 ? 1 : 0;    // a group gets no input
  has_group = process < 0 ? 1 : 0;
  searching = process < 0 ? -process : process;
  if (interruption() != Interruption::kNone) send(SIGTERM);    // it came while it was held
}

void end_feeding() {
  is_feeding = 0;
}

void end_search() {
  hold_interruptions();
}

void note_writing(bool begins) {
  is_writing = begins ? 1 : 0;
}

void note_progress() {
  progress = progress == SIG_ATOMIC_MAX ? 0 : progress + 1;
}

Interruption interruption() {
  return static_cast<Interruption>(reason);
}

std::string_view interruption_text() {
  return interruption() == Interruption::kTime ? std::string_view(time_text) : kSignalText;
}

}    // namespace dl
