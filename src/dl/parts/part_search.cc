// part_search.cc - a search in parts on the cores of this machine; see docs/dl.md.
//
// Note [order of parts]
// Answer sets are printed in the order of the parts, whichever was faster: the first part that is
// not finished prints as clingo does, and what later parts find waits, or they do. So the output is
// the same from run to run. Only where a few answer sets are asked for, any come as they are found.

#include <algorithm>
#include <chrono>
#include <map>
#include <string>
#include <utility>

#include "dl/clingo_run.h"
#include "dl/parts/cut.h"
#include "dl/parts/divided_search.h"
#include "dl/parts/ground_program.h"
#include "dl/parts/part_arguments.h"
#include "dl/parts/part_output.h"

namespace dl {
namespace {

using Clock = std::chrono::steady_clock;

// A search that ends so soon is not worth being cut.
constexpr std::chrono::milliseconds kSoon(1000);
constexpr std::size_t kMostHeld = std::size_t{1} << 28;    // answers that wait for their turn

struct Part {
  PartOutput output;
  std::optional<Crew::Id> worker = {};
  bool has_ended = false;
};

class PartSearch {
 public:
  PartSearch(const SearchPlan& plan, std::string ground, Crew& crew)
      : plan_(plan),
        aim_(aim_of(plan.arguments)),
        arguments_(part_arguments(plan.arguments)),
        program_(std::move(ground)),
        crew_(crew),
        whole_(aim_) {}

  int run() {
    print_for_host("Solving...\n");
    if (plan_.kind == SearchKind::kAuto && !outlasts_patience()) return ended_as_whole();
    if (!cut()) return is_interrupted_ ? show_found() : ended_as_whole();
    if (whole_worker_) {
      if (cubes_.size() <= 1) return wait_for_whole();
      crew_.put_back(*whole_worker_);
      note_for_host("it takes long, so it was cut into " + std::to_string(cubes_.size()) +
                    " parts");
    }
    return solve();
  }

 private:
  bool outlasts_patience();
  bool cut();
  int wait_for_whole();
  int ended_as_whole();
  int solve();
  void start_parts();
  void hear(const Crew::Event& event);
  void hear_whole(const Crew::Event& event);
  void note_costs(const PartOutput& output);
  void hear_part(std::size_t index, const Crew::Event& event);
  void end_part(std::size_t index, const ProcessEnd& end);
  void print_sets(PartOutput& output);
  void begin_printing();
  void advance();
  std::size_t held() const;
  bool is_enough() const { return aim_.limit != 0 && printed_ >= aim_.limit; }
  bool print_consequences();
  int finish();
  void print_best();
  void print_found_sets();
  int show_found();

  const SearchPlan& plan_;
  const SearchAim aim_;
  const std::vector<std::string> arguments_;
  const GroundProgram program_;
  Crew& crew_;
  std::vector<Cube> cubes_;
  std::vector<Part> parts_;
  std::map<Crew::Id, std::size_t> index_of_;
  std::size_t next_ = 0;     // to be started
  std::size_t first_ = 0;    // that has not ended
  std::uint64_t printed_ = 0;
  std::optional<PartCosts> best_;
  std::optional<ProcessEnd> failure_;
  PartOutput whole_;
  std::optional<Crew::Id> whole_worker_;    // while it is at work
  std::optional<ProcessEnd> whole_end_;
  bool is_interrupted_ = false;
};

// Returns whether the whole search has not ended by itself so soon.
bool PartSearch::outlasts_patience() {
  whole_worker_ = crew_.start(arguments_, program_.part({}).number());
  const Clock::time_point deadline = Clock::now() + kSoon;
  while (!whole_end_) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return true;
    is_interrupted_ = crew_.wait([this](const Crew::Event& event) { hear_whole(event); },
                                 static_cast<int>(left)) == Crew::Waiting::kAsked;
    if (is_interrupted_) return false;
  }
  return false;
}

bool PartSearch::cut() {
  const std::size_t workers =
      whole_worker_ ? std::max<std::size_t>(plan_.workers, 2) - 1 : plan_.workers;
  const CutSettings settings{arguments_, plan_.parts, workers, plan_.cuts_easy_parts};
  std::optional<std::vector<Cube>> cubes =
      dl::cut(program_, {}, crew_, settings, [this](const Crew::Event& event) {
        hear_whole(event);
        return !whole_end_;
      });
  if (!cubes) {
    is_interrupted_ = !whole_end_;
    return false;
  }
  cubes_ = std::move(*cubes);
  return true;
}

int PartSearch::wait_for_whole() {
  while (!whole_end_) {
    is_interrupted_ = crew_.wait([this](const Crew::Event& event) { hear_whole(event); }) ==
                      Crew::Waiting::kAsked;
    if (is_interrupted_) return show_found();
  }
  return ended_as_whole();
}

int PartSearch::ended_as_whole() {
  if (is_interrupted_) return show_found();
  crew_.dismiss_all();
  if (!whole_.is_complete(*whole_end_)) return fail_as(*whole_end_);
  print_for_host(answers_text(whole_));
  print_for_host(status_text(aim_, whole_.has_found()));
  return whole_end_->code;
}

int PartSearch::solve() {
  parts_.assign(cubes_.size(), Part{PartOutput(aim_)});
  while (first_ < parts_.size() && !is_enough() && !failure_) {
    start_parts();
    if (crew_.wait([this](const Crew::Event& event) { hear(event); }) == Crew::Waiting::kAsked)
      return show_found();
    if (whole_end_) {
      // What was printed cannot be taken back, and the whole is dismissed before.
      if (whole_.is_complete(*whole_end_)) return ended_as_whole();
      whole_end_.reset();
    }
  }
  crew_.dismiss_all();
  return failure_ ? fail_as(*failure_) : finish();
}

void PartSearch::start_parts() {
  while (next_ < parts_.size() && next_ - first_ < 64 * plan_.workers &&
         index_of_.size() < plan_.workers && (next_ == first_ || held() < kMostHeld)) {
    std::vector<std::string> arguments = arguments_;
    if (best_) bound_costs(arguments, best_->front());
    const Crew::Id worker = crew_.start(arguments, program_.part(cubes_[next_]).number());
    parts_[next_].worker = worker;
    index_of_.emplace(worker, next_++);
  }
}

std::size_t PartSearch::held() const {
  std::size_t size = 0;
  for (std::size_t i = first_; i < next_; ++i) size += parts_[i].output.sets.size();
  return size;
}

void PartSearch::hear(const Crew::Event& event) {
  if (event.id == whole_worker_) return hear_whole(event);
  if (const auto found = index_of_.find(event.id); found != index_of_.end())
    hear_part(found->second, event);
}

void PartSearch::hear_whole(const Crew::Event& event) {
  whole_.read(event.output);
  note_costs(whole_);
  if (event.end == nullptr) return;
  whole_end_ = *event.end;
  whole_worker_.reset();
}

// As clingo does, it tells costs when they are found, and the answer sets that have them behind
// the last ones.
void PartSearch::note_costs(const PartOutput& output) {
  if (!are_better(output.costs, best_)) return;
  best_ = output.costs;
  if (!aim_.has_query) print_for_host(costs_text(*best_));
}

void PartSearch::hear_part(std::size_t index, const Crew::Event& event) {
  PartOutput& output = parts_[index].output;
  output.read(event.output);
  note_costs(output);
  if (aim_.enumerates()) {
    if (index == first_ || aim_.limit != 0) {
      print_sets(output);
    } else if (held() >= kMostHeld) {
      crew_.listen(event.id, false);
    }
  }
  if (event.end != nullptr) end_part(index, *event.end);
}

void PartSearch::end_part(std::size_t index, const ProcessEnd& end) {
  Part& part = parts_[index];
  if (!part.output.is_complete(end)) {
    failure_ = end;
    return;
  }
  part.has_ended = true;
  index_of_.erase(*part.worker);
  part.worker.reset();
  if (aim_.has_costs && best_ && part.output.costs != best_) part.output.sets = std::string();
  advance();
}

void PartSearch::advance() {
  while (first_ < parts_.size() && parts_[first_].has_ended) {
    if (aim_.enumerates()) print_sets(parts_[first_].output);
    ++first_;
  }
  if (first_ == parts_.size() || !aim_.enumerates()) return;
  print_sets(parts_[first_].output);
  for (const auto& [worker, index] : index_of_) {
    if (index == first_ || held() < kMostHeld) crew_.listen(worker, true);
  }
}

void PartSearch::print_sets(PartOutput& output) {
  if (output.sets.empty()) return;
  std::string_view text(output.sets);
  if (aim_.limit != 0) {
    std::size_t end = 0;
    for (; end < text.size() && !is_enough(); ++printed_) end = text.find('\n', end) + 1;
    text = text.substr(0, end);
  } else {
    printed_ += static_cast<std::uint64_t>(std::ranges::count(text, '\n'));
  }
  // The whole search would print them again.
  if (whole_worker_) crew_.dismiss(*std::exchange(whole_worker_, {}));
  if (&output != &whole_) whole_ = PartOutput(aim_);
  print_for_host(text);
  output.sets.clear();
}

int PartSearch::finish() {
  if (aim_.has_query) {
    const bool has_any = print_consequences();
    print_for_host(status_text(aim_, has_any));
    return has_any ? kAllFound : kNoneExists;
  }
  if (aim_.has_costs) print_best();
  print_for_host(status_text(aim_, printed_ != 0));
  if (printed_ == 0) return kNoneExists;
  return is_enough() && first_ < parts_.size() ? kSomeFound : kAllFound;
}

void PartSearch::print_best() {
  if (!best_) return;
  print_for_host(costs_text(*best_));
  for (Part& part : parts_) {
    if (part.output.costs != best_ || is_enough()) continue;
    part.output.sort_sets();
    print_sets(part.output);
  }
}

bool PartSearch::print_consequences() {
  Consequences all(aim_.is_brave);
  for (const Part& part : parts_) {
    if (part.output.consequences && part.output.costs == best_) all.add(*part.output.consequences);
  }
  const std::optional<std::string> line = all.line();
  if (!line) return false;
  if (best_) print_for_host(costs_text(*best_));
  print_for_host(*line + '\n');
  return true;
}

// Those of the whole search or those of the parts, which are some of the same.
void PartSearch::print_found_sets() {
  std::uint64_t in_parts = printed_;
  for (const Part& part : parts_) in_parts += part.output.count;
  if (printed_ == 0 && whole_.count > in_parts) return print_sets(whole_);
  for (Part& part : parts_) print_sets(part.output);
}

// After an interruption: what is known so far. What holds in some of the answer sets that were
// looked at holds in some of all.
int PartSearch::show_found() {
  crew_.ask_all_to_end();
  const auto listen = [this](const Crew::Event& event) {
    if (event.id == whole_worker_) return hear_whole(event);
    if (const auto found = index_of_.find(event.id); found != index_of_.end())
      parts_[found->second].output.read(event.output);
  };
  while (crew_.size() != 0 && crew_.wait(listen, kLastWords) != Crew::Waiting::kNothing) {
  }
  if (aim_.enumerates()) {
    print_found_sets();
  } else {
    parts_.push_back({std::move(whole_)});
    for (const Part& part : parts_) {
      if (are_better(part.output.costs, best_)) best_ = part.output.costs;
    }
    if (!aim_.has_query) print_best();
    if (aim_.is_brave && !aim_.has_costs) print_consequences();
  }
  print_for_host("UNKNOWN\n");
  return kSomeInterrupted;
}

}    // namespace

int solve_parts(const SearchPlan& plan, std::string ground, Crew& crew) {
  return PartSearch(plan, std::move(ground), crew).run();
}

}    // namespace dl
