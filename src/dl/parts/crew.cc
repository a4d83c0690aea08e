#include "dl/parts/crew.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

namespace dl {

Crew::Crew(std::string clingo, int watched) : clingo_(std::move(clingo)), watched_(watched) {
  std::signal(SIGCHLD, SIG_DFL);    // who ignores it cannot wait for a child
}

Crew::~Crew() {
  dismiss_all();
}

Crew::Id Crew::start(const std::vector<std::string>& arguments, int input) {
  Member member;
  Pipe pipe = make_pipe();
  member.output = std::move(pipe.reading);
  member.errors = make_memory_file("clingo-errors");
  member.process =
      start_child(clingo_, arguments, {input, pipe.writing.number(), member.errors.number()});
  members_.emplace(next_, std::move(member));
  return next_++;
}

Crew::Waiting Crew::wait(const std::function<void(const Event&)>& take, int milliseconds) {
  std::vector<pollfd> descriptors;
  std::vector<Id> ids;
  for (const auto& [id, member] : members_) {
    if (!member.is_heard) continue;
    descriptors.push_back({member.output.number(), POLLIN, 0});
    ids.push_back(id);
  }
  if (ids.empty()) return Waiting::kNothing;
  if (watched_ >= 0) descriptors.push_back({watched_, POLLIN, 0});
  const int ready = ::poll(descriptors.data(), descriptors.size(), milliseconds);
  if (ready == 0) return Waiting::kNothing;
  if (ready < 0) return errno == EINTR ? Waiting::kNothing : Waiting::kAsked;
  if (watched_ >= 0 && descriptors.back().revents != 0) {
    watched_ = -1;    // one interruption is enough
    return Waiting::kAsked;
  }
  for (std::size_t i = 0; i < ids.size(); ++i) {
    if (descriptors[i].revents != 0 && members_.contains(ids[i])) take_from(ids[i], take);
  }
  return Waiting::kHeard;
}

void Crew::take_from(Id id, const std::function<void(const Event&)>& take) {
  static std::array<char, std::size_t{1} << 16> buffer;
  const Member& member = members_.at(id);
  const ssize_t got = ::read(member.output.number(), buffer.data(), buffer.size());
  if (got < 0 && errno == EINTR) return;
  if (got > 0) {
    return take({id, std::string_view(buffer.data(), static_cast<std::size_t>(got)), nullptr});
  }
  const ProcessEnd end = wait_for_child(member.process, member.errors.number());
  members_.erase(id);
  take({id, {}, &end});
}

void Crew::listen(Id id, bool does) {
  if (const auto found = members_.find(id); found != members_.end()) found->second.is_heard = does;
}

void Crew::put_back(Id id) {
  constexpr int kLast = 19;
  const auto found = members_.find(id);
  if (found == members_.end()) return;
  ::setpriority(PRIO_PROCESS, static_cast<id_t>(found->second.process), kLast);
}

void Crew::dismiss(Id id) {
  const auto found = members_.find(id);
  if (found == members_.end()) return;
  ::kill(found->second.process, SIGKILL);
  wait_for_child(found->second.process, found->second.errors.number());
  members_.erase(found);
}

void Crew::dismiss_all() {
  for (const auto& [id, member] : members_) ::kill(member.process, SIGKILL);
  while (!members_.empty()) dismiss(members_.begin()->first);
}

void Crew::ask_all_to_end() {
  for (const auto& [id, member] : members_) ::kill(member.process, SIGTERM);
}

std::optional<std::string> ground(Crew& crew, int program) {
  std::string text;
  std::optional<ProcessEnd> end;
  crew.start({"--mode=gringo", "--warn=none", "-"}, program);
  while (!end) {
    const Crew::Waiting waiting = crew.wait([&](const Crew::Event& event) {
      text += event.output;
      if (event.end != nullptr) end = *event.end;
    });
    if (waiting == Crew::Waiting::kAsked) return std::nullopt;
  }
  if (end->signalled || end->code != 0) throw FailedWorker{*end};
  return text;
}

}    // namespace dl
