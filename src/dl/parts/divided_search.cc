#include "dl/parts/divided_search.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <span>
#include <sys/signalfd.h>
#include <unistd.h>

#include "dl/clingo_run.h"
#include "dl/failure.h"

namespace dl {
namespace {

constexpr int kFailed = 65;    // clingo's status for errors of its input

bool write_all(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) return false;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

// Signals that ask for the end come by a descriptor, between two looks at the crew. Children get
// none of this: they are started with no signal blocked.
Descriptor hold_signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGTERM, SIGINT}) sigaddset(&signals, signal);
  ::sigprocmask(SIG_BLOCK, &signals, nullptr);
  return Descriptor(::signalfd(-1, &signals, SFD_CLOEXEC));
}

int divide(const SearchPlan& plan) {
  const Descriptor signals = hold_signals();
  try {
    Crew crew(plan.clingo, signals.number());
    std::optional<std::string> text = ground(crew, STDIN_FILENO);
    if (!text) {
      print_for_host("UNKNOWN\n");
      return kInterrupted;
    }
    return plan.kind == SearchKind::kRace ? race(plan, std::move(*text), crew)
                                          : solve_parts(plan, std::move(*text), crew);
  } catch (const FailedWorker& failed) {
    return fail_as(failed.end);
  } catch (const Failure& failure) {
    std::fprintf(stderr, "*** ERROR: (clingo): %s\n", failure.diagnostic.text.c_str());
  } catch (const std::bad_alloc&) {
    return kOutOfMemory;
  }
  return kFailed;
}

}    // namespace

void print_for_host(std::string_view text) {
  if (!write_all(STDOUT_FILENO, text)) std::_Exit(kFailed);
}

void note_for_host(std::string_view text) {
  std::string line(kSearchNote);
  print_for_host((line += text) += '\n');
}

int fail_as(const ProcessEnd& end) {
  write_all(STDERR_FILENO, end.errors);
  if (!end.signalled) return end.code;
  ::raise(end.code);
  return kFailed;
}

void become_helper(int count, char** arguments) {
  if (count > 3 && arguments[1] == kBecomeClingo) become_clingo(arguments + 2);
  if (count < 2 || arguments[1] != kDivideSearch) return;
  const std::optional<SearchPlan> plan =
      read_plan(std::span(arguments, static_cast<std::size_t>(count)).subspan(2));
  std::_Exit(plan ? divide(*plan) : kFailed);
}

}    // namespace dl
