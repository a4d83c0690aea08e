#pragma once
// crew.h - several clingos at work at once, and what they print.

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "dl/child_process.h"

namespace dl {

class Crew {
 public:
  using Id = std::size_t;

  // `watched`, if there is one, interrupts waiting once, as soon as it can be read.
  explicit Crew(std::string clingo, int watched = -1);
  ~Crew();    // kills those that are still at work
  Crew(const Crew&) = delete;
  Crew& operator=(const Crew&) = delete;

  // Starts clingo, which reads the descriptor to its end. Throws Failure as start_child() does.
  Id start(const std::vector<std::string>& arguments, int input);

  // A piece of what one printed; or, behind all of these, how it ended.
  struct Event {
    Id id = 0;
    std::string_view output;
    const ProcessEnd* end = nullptr;
  };
  enum class Waiting { kHeard, kNothing, kAsked };
  // Waits until some have printed or ended, at most so many milliseconds (-1: for ever), and takes
  // what there is of it. Returns kNothing when the time is over, or none is at work.
  Waiting wait(const std::function<void(const Event&)>& take, int milliseconds = -1);

  // What it prints is left to wait, and it in the end, too; or taken again.
  void listen(Id id, bool does);
  // It works only when nothing else wants the core.
  void put_back(Id id);
  void dismiss(Id id);    // kills it; no further event comes
  void dismiss_all();
  void ask_all_to_end();    // those that search show the best they have
  std::size_t size() const { return members_.size(); }

 private:
  struct Member {
    pid_t process = -1;
    Descriptor output, errors;
    bool is_heard = true;
  };
  void take_from(Id id, const std::function<void(const Event&)>& take);

  std::string clingo_;
  int watched_;
  Id next_ = 0;
  std::map<Id, Member> members_;    // in the order in which they were started
};

// Thrown where a clingo fails that has no substitute.
struct FailedWorker {
  ProcessEnd end;
};

// Has a program grounded, which is read from the descriptor to its end: aspif. Nothing after an
// interruption. Throws FailedWorker, and Failure.
std::optional<std::string> ground(Crew& crew, int program);

}    // namespace dl
