// race.cc - the same search in several configurations; see docs/dl.md.

#include <algorithm>
#include <map>
#include <string>
#include <unistd.h>

#include "dl/clingo_run.h"
#include "dl/parts/divided_search.h"
#include "dl/parts/ground_program.h"
#include "dl/parts/part_arguments.h"
#include "dl/parts/part_output.h"

namespace dl {
namespace {

// In the order in which they are taken: those that differed most in what they are quick at.
constexpr std::string_view kRacers[] = {"auto", "trendy", "jumpy", "crafty", "handy", "frumpy"};

struct Racer {
  std::string_view name;
  PartOutput output;
  std::optional<ProcessEnd> end = {};
};

std::string names_of(std::size_t count) {
  std::string names;
  for (std::size_t i = 0; i < count; ++i) {
    if (i != 0) names += i + 1 == count ? " and " : ", ";
    names += kRacers[i];
  }
  return names;
}

// Which of two has more to show.
bool shows_more(const PartOutput& output, const PartOutput& other) {
  if (are_better(output.costs, other.costs)) return true;
  if (are_better(other.costs, output.costs)) return false;
  return output.count > other.count || (output.consequences && !other.consequences);
}

class Race {
 public:
  Race(const SearchPlan& plan, std::string ground, Crew& crew)
      : aim_(aim_of(plan.arguments)), program_(std::move(ground)), crew_(crew) {
    const std::size_t count = std::clamp<std::size_t>(plan.workers, 1, std::size(kRacers));
    for (std::size_t i = 0; i < count; ++i) {
      std::vector<std::string> arguments = part_arguments(plan.arguments);
      set_configuration(arguments, kRacers[i]);
      const Descriptor input = program_.part({});
      racers_.emplace(crew_.start(arguments, input.number()), Racer{kRacers[i], PartOutput(aim_)});
    }
  }

  int run() {
    print_for_host("Solving...\n");
    while (winner_ == nullptr && crew_.size() != 0) {
      if (crew_.wait([this](const Crew::Event& event) { hear(event); }) == Crew::Waiting::kAsked)
        return show_best();
    }
    if (winner_ == nullptr) return fail_as(*racers_.begin()->second.end);
    crew_.dismiss_all();
    std::string note(winner_->name);
    note_for_host((note += " was the first to finish of ") += names_of(racers_.size()));
    print_answers(*winner_, status_text(aim_, winner_->output.has_found()));
    return winner_->end->code;
  }

 private:
  // One that fails leaves the race to the others.
  void hear(const Crew::Event& event) {
    Racer& racer = racers_.at(event.id);
    racer.output.read(event.output);
    if (!aim_.has_query && are_better(racer.output.costs, best_)) {
      best_ = racer.output.costs;
      print_for_host(costs_text(*best_));    // as clingo does, when they are found
    }
    if (event.end == nullptr) return;
    racer.end = *event.end;
    if (winner_ == nullptr && racer.output.is_complete(*event.end)) winner_ = &racer;
  }

  int show_best() {
    crew_.ask_all_to_end();
    while (crew_.size() != 0 && crew_.wait([this](const Crew::Event& event) { hear(event); },
                                           kLastWords) != Crew::Waiting::kNothing) {
    }
    const Racer* best = &racers_.begin()->second;
    for (const auto& [id, racer] : racers_) {
      if (shows_more(racer.output, best->output)) best = &racer;
    }
    print_answers(*best, "UNKNOWN\n");
    return kSomeInterrupted;
  }

  void print_answers(const Racer& racer, std::string_view status) const {
    print_for_host(answers_text(racer.output));
    print_for_host(status);
  }

  const SearchAim aim_;
  const GroundProgram program_;
  Crew& crew_;
  std::map<Crew::Id, Racer> racers_;
  const Racer* winner_ = nullptr;
  std::optional<PartCosts> best_;
};

}    // namespace

int race(const SearchPlan& plan, std::string ground, Crew& crew) {
  return Race(plan, std::move(ground), crew).run();
}

}    // namespace dl
