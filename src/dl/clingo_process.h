#pragma once
// clingo_process.h - the clingo that solves for us: started with an argument list, fed through its
// standard input, read through its standard output. It never outlives dl.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dl/child_process.h"

namespace dl {

class ClingoProcess {
 public:
  ClingoProcess();     // SIGPIPE and SIGCHLD are from now on as it needs them, for all of dl
  ~ClingoProcess();    // kills it if it still runs
  ClingoProcess(const ClingoProcess&) = delete;
  ClingoProcess& operator=(const ClingoProcess&) = delete;

  // Throws Failure when no process can be made. A program that cannot be run shows in end().
  void start(const std::string& program, const std::vector<std::string>& arguments,
             ProcessGroup group = ProcessGroup::kOurs);
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
  int target() const { return group_ == ProcessGroup::kOwn ? -pid_ : pid_; }    // of signals

  int pid_ = -1;
  ProcessGroup group_ = ProcessGroup::kOurs;
  Descriptor input_;
  Descriptor output_;
  Descriptor errors_;
};

}    // namespace dl
