#pragma once
// clingo_process.h - the clingo that solves for us: started with an argument list, fed through its
// standard input, read through its standard output. It never outlives dl.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dl {

// How clingo ended.
struct ProcessEnd {
  bool signalled = false;
  int code = 0;          // exit status, or the signal's number
  std::string errors;    // the first part of what it wrote on standard error
};

class ClingoProcess {
 public:
  ClingoProcess();     // SIGPIPE and SIGCHLD are from now on as it needs them, for all of dl
  ~ClingoProcess();    // kills it if it still runs
  ClingoProcess(const ClingoProcess&) = delete;
  ClingoProcess& operator=(const ClingoProcess&) = delete;

  // Throws Failure when no process can be made. A program that cannot be run shows in end(). One
  // that may start others is killed with these, if they are in a group of their own.
  enum class Group : bool { kOurs, kOwn };
  void start(const std::string& program, const std::vector<std::string>& arguments,
             Group group = Group::kOurs);
  bool is_running() const { return pid_ > 0; }
  void write(
      std::string_view text);    // text that clingo no longer wants is dropped: end() tells why
  void finish_input();
  // Waits until there is output, or none will come. Returns false when nobody reads any more what
  // we write to the descriptor.
  bool wait_for_output(int written_to) const;
  // Waits for output and returns how much was put into `buffer`, 0 at the end.
  std::size_t read(char* buffer, std::size_t size);
  ProcessEnd end();    // waits for it; after the output was read to its end

 private:
  int target() const { return group_ == Group::kOwn ? -pid_ : pid_; }    // of signals

  int pid_ = -1;
  Group group_ = Group::kOurs;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
};

// Exit status of a child that could not run the program; the text is on its standard error.
constexpr int kCannotRun = 127;

// The first argument with which dl runs itself to become clingo.
constexpr std::string_view kBecomeClingo = "--become-clingo";
// Becomes the program `arguments[1]` with the arguments after it, bound to the life of the process
// `arguments[0]`.
[[noreturn]] void become_clingo(char** arguments);

}    // namespace dl
