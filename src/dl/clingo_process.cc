#include "dl/clingo_process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include "dl/failure.h"
#include "dl/interruption.h"

extern char** environ;

namespace dl {
namespace {

constexpr int kPipe = 1 << 20;
constexpr std::size_t kKeptErrors = std::size_t{1} << 16;

[[noreturn]] void fail(const char* what) {
  std::string text(what);
  (text += ": ") += std::strerror(errno);
  throw Failure{{zarel::Code::kProcessFailure, {}, std::move(text)}};
}

void close_if_open(int& descriptor) {
  if (descriptor >= 0) ::close(descriptor);
  descriptor = -1;
}

// The child's view of the world: our pipes as its standard streams, and no signal blocked or
// ignored, whatever started us.
class SpawnSetup {
 public:
  SpawnSetup(int input, int output, int errors, ClingoProcess::Group group) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, errors, STDERR_FILENO);
    ::posix_spawnattr_init(&attributes_);
    sigset_t all;
    sigset_t none;
    ::sigfillset(&all);
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;
    if (group == ClingoProcess::Group::kOwn) flags |= POSIX_SPAWN_SETPGROUP;
    ::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
  }
  ~SpawnSetup() {
    ::posix_spawn_file_actions_destroy(&actions_);
    ::posix_spawnattr_destroy(&attributes_);
  }
  SpawnSetup(const SpawnSetup&) = delete;
  SpawnSetup& operator=(const SpawnSetup&) = delete;

  posix_spawn_file_actions_t* actions() { return &actions_; }
  posix_spawnattr_t* attributes() { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}    // namespace

ClingoProcess::ClingoProcess() {
  std::signal(SIGPIPE, SIG_IGN);    // a write that fails is looked at where it is made
  std::signal(SIGCHLD, SIG_DFL);    // who ignores it cannot wait for a child
}

// Note [bound to the life of dl]
// When dl is killed outright, a clingo deep in a search would go on for hours: it notices the
// closed pipe only when it writes. A process can ask to die with its parent, but only for itself,
// and posix_spawn runs no code of ours in the child. So dl runs itself, and that second dl asks,
// and then becomes clingo.
void ClingoProcess::start(const std::string& program, const std::vector<std::string>& arguments,
                          Group group) {
  group_ = group;
  int to_child[2];
  int from_child[2];
  if (::pipe2(to_child, O_CLOEXEC) != 0) fail("pipe");
  input_ = to_child[1];
  if (::pipe2(from_child, O_CLOEXEC) != 0) {
    ::close(to_child[0]);
    fail("pipe");
  }
  output_ = from_child[0];
  // Fewer changes between the processes: where the system allows no more, it stays as it is.
  for (const int pipe : {input_, output_}) ::fcntl(pipe, F_SETPIPE_SZ, kPipe);
  // A file takes all that clingo has to say, so that it never waits for us to listen.
  errors_ = ::memfd_create("clingo-errors", MFD_CLOEXEC);
  std::vector<std::string> words{"dl", std::string(kBecomeClingo), std::to_string(::getpid()),
                                 program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  SpawnSetup setup(to_child[0], from_child[1], errors_, group);
  pid_t pid = -1;
  const int error = errors_ < 0 ? errno
                                : ::posix_spawn(&pid, "/proc/self/exe", setup.actions(),
                                                setup.attributes(), pointers.data(), environ);
  ::close(to_child[0]);
  ::close(from_child[1]);
  if (error != 0) {
    errno = error;
    fail("cannot start a process");
  }
  pid_ = pid;
  begin_search(target());
}

ClingoProcess::~ClingoProcess() {
  close_if_open(input_);
  close_if_open(output_);
  close_if_open(errors_);
  if (pid_ <= 0) return;
  end_search();
  ::kill(target(), SIGKILL);
  while (::waitpid(pid_, nullptr, 0) < 0 && errno == EINTR) {
  }
}

void ClingoProcess::write(std::string_view text) {
  while (!text.empty() && input_ >= 0) {
    const ssize_t written = ::write(input_, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      close_if_open(input_);    // its end will tell why it does not listen
    }
  }
}

void ClingoProcess::finish_input() {
  close_if_open(input_);
  end_feeding();
}

bool ClingoProcess::wait_for_output(int written_to) const {
  std::array<pollfd, 2> watched{{{output_, POLLIN, 0}, {written_to, 0, 0}}};
  while (::poll(watched.data(), watched.size(), -1) < 0) {
    if (errno != EINTR) fail("cannot wait for clingo's output");
  }
  return (watched[1].revents & (POLLERR | POLLHUP)) == 0;
}

std::size_t ClingoProcess::read(char* buffer, std::size_t size) {
  for (;;) {
    const ssize_t got = ::read(output_, buffer, size);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) fail("cannot read clingo's output");
  }
}

ProcessEnd ClingoProcess::end() {
  ProcessEnd end;
  int status = 0;
  while (::waitpid(pid_, &status, 0) < 0) {
    if (errno != EINTR) fail("cannot wait for clingo");
  }
  end_search();
  pid_ = -1;
  end.signalled = WIFSIGNALED(status);
  end.code = end.signalled ? WTERMSIG(status) : WEXITSTATUS(status);
  end.errors.resize(kKeptErrors);
  const ssize_t got = ::pread(errors_, end.errors.data(), end.errors.size(), 0);
  end.errors.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return end;
}

void become_clingo(char** arguments) {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // The parent may have gone before it could be asked to take us along.
  if (std::to_string(::getppid()) != arguments[0]) std::_Exit(kCannotRun);
  ::execvp(arguments[1], arguments + 1);
  std::fprintf(stderr, "%s", std::strerror(errno));
  std::_Exit(kCannotRun);
}

}    // namespace dl
