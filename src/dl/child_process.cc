#include "dl/child_process.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include "dl/failure.h"

extern char** environ;

namespace dl {
namespace {

constexpr std::size_t kKeptErrors = std::size_t{1} << 16;

[[noreturn]] void fail(const char* what) {
  std::string text(what);
  (text += ": ") += std::strerror(errno);
  throw Failure{{zarel::Code::kProcessFailure, {}, std::move(text)}};
}

// The child's view of the world: our descriptors as its standard streams, and no signal blocked or
// ignored, whatever started us.
class SpawnSetup {
 public:
  SpawnSetup(const ChildStreams& streams, ProcessGroup group) {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawn_file_actions_adddup2(&actions_, streams.input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, streams.output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions_, streams.errors, STDERR_FILENO);
    ::posix_spawnattr_init(&attributes_);
    sigset_t all;
    sigset_t none;
    ::sigfillset(&all);
    ::sigemptyset(&none);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setsigmask(&attributes_, &none);
    int flags = POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK;
    if (group == ProcessGroup::kOwn) flags |= POSIX_SPAWN_SETPGROUP;
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

void Descriptor::close() {
  if (number_ >= 0) ::close(number_);
  number_ = -1;
}

Pipe make_pipe() {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) fail("pipe");
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

Descriptor make_memory_file(const char* name) {
  Descriptor file(::memfd_create(name, MFD_CLOEXEC));
  if (!file.is_open()) fail("cannot make a file in memory");
  return file;
}

void append_to(const Descriptor& file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file.number(), text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail("cannot write to a file in memory");
    }
  }
}

pid_t start_child(const std::string& program, const std::vector<std::string>& arguments,
                  ChildStreams streams, ProcessGroup group) {
  std::vector<std::string> words{"dl", std::string(kBecomeClingo), std::to_string(::getpid()),
                                 program};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  SpawnSetup setup(streams, group);
  pid_t child = -1;
  errno = ::posix_spawn(&child, "/proc/self/exe", setup.actions(), setup.attributes(),
                        pointers.data(), environ);
  if (errno != 0) fail("cannot start a process");
  return child;
}

ProcessEnd wait_for_child(pid_t child, int errors) {
  ProcessEnd end;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) fail("cannot wait for clingo");
  }
  end.signalled = WIFSIGNALED(status);
  end.code = end.signalled ? WTERMSIG(status) : WEXITSTATUS(status);
  end.errors.resize(kKeptErrors);
  const ssize_t got = ::pread(errors, end.errors.data(), end.errors.size(), 0);
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
