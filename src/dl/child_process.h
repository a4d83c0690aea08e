#pragma once
// child_process.h - programs that are started with an argument list and never outlive the one that
// starts them.

#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <utility>
#include <vector>

namespace dl {

// A file descriptor that is closed with its owner.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { close(); }

  int number() const { return number_; }    // -1: none
  bool is_open() const { return number_ >= 0; }
  void close();

 private:
  int number_ = -1;
};

struct Pipe {
  Descriptor reading, writing;
};

// All throw Failure where the system refuses. What they make is not inherited by children.
Pipe make_pipe();
Descriptor make_memory_file(const char* name);    // an empty one, without a name in any folder
void append_to(const Descriptor& file, std::string_view text);

// How a child ended.
struct ProcessEnd {
  bool signalled = false;
  int code = 0;          // exit status, or the signal's number
  std::string errors;    // the first part of what it wrote on standard error
};

// A child that may start others is killed with these, if they are in a group of their own.
enum class ProcessGroup : std::uint8_t { kOurs, kOwn };

// A child's standard streams.
struct ChildStreams {
  int input, output, errors;
};

// Starts the program, bound to our life. Throws Failure when no process can be made. A program that
// cannot be run ends with kCannotRun, and the reason on its standard error.
pid_t start_child(const std::string& program, const std::vector<std::string>& arguments,
                  ChildStreams streams, ProcessGroup group = ProcessGroup::kOurs);

// Waits for its end. `errors` is the file that it had as standard error.
ProcessEnd wait_for_child(pid_t child, int errors);

constexpr int kCannotRun = 127;

// Note [bound to the life of dl]
// When dl is killed outright, a clingo deep in a search would go on for hours: it notices the
// closed pipe only when it writes. A process can ask to die with its parent, but only for itself,
// and posix_spawn runs no code of ours in the child. So dl runs itself, with this first argument,
// and that second dl asks, and then becomes clingo.
constexpr std::string_view kBecomeClingo = "--become-clingo";
// Becomes the program `arguments[1]` with the arguments after it, bound to the life of the process
// `arguments[0]`.
[[noreturn]] void become_clingo(char** arguments);

}    // namespace dl
