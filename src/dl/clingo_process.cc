#include "dl/clingo_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "dl/failure.h"
#include "dl/interruption.h"

namespace dl {
namespace {

constexpr int kPipe = 1 << 20;

[[noreturn]] void fail(const char* what) {
  std::string text(what);
  (text += ": ") += std::strerror(errno);
  throw Failure{{zarel::Code::kProcessFailure, {}, std::move(text)}};
}

}    // namespace

ClingoProcess::ClingoProcess() {
  std::signal(SIGPIPE, SIG_IGN);    // a write that fails is looked at where it is made
  std::signal(SIGCHLD, SIG_DFL);    // who ignores it cannot wait for a child
}

void ClingoProcess::start(const std::string& program, const std::vector<std::string>& arguments,
                          ProcessGroup group) {
  group_ = group;
  Pipe to_child = make_pipe();
  Pipe from_child = make_pipe();
  input_ = std::move(to_child.writing);
  output_ = std::move(from_child.reading);
  // Fewer changes between the processes: where the system allows no more, it stays as it is.
  for (const int pipe : {input_.number(), output_.number()}) ::fcntl(pipe, F_SETPIPE_SZ, kPipe);
  // A file takes all that clingo has to say, so that it never waits for us to listen.
  errors_ = make_memory_file("clingo-errors");
  pid_ = start_child(program, arguments,
                     {to_child.reading.number(), from_child.writing.number(), errors_.number()},
                     group);
  begin_search(target());
}

ClingoProcess::~ClingoProcess() {
  input_.close();
  output_.close();
  if (pid_ <= 0) return;
  end_search();
  ::kill(target(), SIGKILL);
  while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void ClingoProcess::write(std::string_view text) {
  while (!text.empty() && input_.is_open()) {
    const ssize_t written = ::write(input_.number(), text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      input_.close();    // its end will tell why it does not listen
    }
  }
}

void ClingoProcess::finish_input() {
  input_.close();
  end_feeding();
}

bool ClingoProcess::wait_for_output(int written_to) const {
  std::array<pollfd, 2> watched{{{output_.number(), POLLIN, 0}, {written_to, 0, 0}}};
  while (::poll(watched.data(), watched.size(), -1) < 0) {
    if (errno != EINTR) fail("cannot wait for clingo's output");
  }
  return (watched[1].revents & (POLLERR | POLLHUP)) == 0;
}

std::size_t ClingoProcess::read(char* buffer, std::size_t size) {
  for (;;) {
    const ssize_t got = ::read(output_.number(), buffer, size);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) fail("cannot read clingo's output");
  }
}

ProcessEnd ClingoProcess::end() {
  ProcessEnd end = wait_for_child(pid_, errors_.number());
  end_search();
  pid_ = -1;
  return end;
}

}    // namespace dl
