#include "dl/explain/single_search.h"

#include <utility>

#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/interruption.h"

namespace dl {
namespace {

// All that the user's filters would hide is of use to who explains.
Options search_options(const Options& options, std::uint64_t number) {
  Options chosen;
  chosen.clingo = options.clingo;
  chosen.threads = options.threads;
  chosen.bound = options.bound;
  chosen.seed = options.seed;
  chosen.answer_sets = number;
  chosen.leaves_out_query = true;
  return chosen;
}

// Waits for the number-th answer set. Of earlier ones nothing is kept.
class AnswerTaker {
 public:
  AnswerTaker(const Translated& program, std::uint64_t number)
      : program_(program), number_(number) {}

  void read_line(std::string_view line) {
    switch (kind_of_line(line)) {
      case LineKind::kAnswerSet:
        return read_answer(line);
      case LineKind::kCosts:
        if (!program_.parts.variable_levels) costs_ = read_costs(line, program_.parts);
        return;
      case LineKind::kOptimumFound:
        is_optimal_ = true;
        return;
      default:
        return;
    }
  }

  FoundAnswer take(Search search) {
    const bool is_complete = search == Search::kComplete;
    if (!has_answer_) return {is_complete ? SearchOutcome::kNone : SearchOutcome::kCut, {}, {}};
    const bool has_costs = program_.parts.traits.has_weak_constraints;
    const bool is_proven = is_complete || is_optimal_ || !has_costs;
    if (has_costs && program_.parts.variable_levels) costs_ = std::move(answer_.costs);
    return {is_proven ? SearchOutcome::kFound : SearchOutcome::kUnproven, std::move(answer_.text),
            std::move(costs_)};
  }

 private:
  void read_answer(std::string_view line) {
    if (++seen_ != number_) return;
    has_answer_ = true;
    read_answer_set(line, program_.parts, answer_);
    if (answer_.fault) {
      throw Failure{diagnostic_of(program_.parts.faults.at(*answer_.fault), program_.sources)};
    }
  }

  const Translated& program_;
  const std::uint64_t number_;
  std::uint64_t seen_ = 0;
  AnswerSet answer_;
  Costs costs_;
  bool has_answer_ = false;
  bool is_optimal_ = false;
};

}    // namespace

// Where clingo optimizes and is cut, it prints the best answer set so far; else each one that it
// prints is one of those asked for.
FoundAnswer search_one(Program program, const Options& options, std::uint64_t number) {
  if (interruption() != Interruption::kNone) return {};
  const Options chosen = search_options(options, number);
  const SearchOutput nowhere;
  ClingoRun clingo(chosen, nowhere);
  TextReceiver receiver;
  if (!program.has_failed()) {
    clingo.start(traits_of(program, chosen));
    receiver = [&clingo](std::string_view text) { clingo.give(text); };
  }
  Translated translated = translate(std::move(program), chosen, receiver);
  if (translated.mistake) throw Failure{std::move(*translated.mistake)};
  AnswerTaker taker(translated, number);
  const Search search =
      clingo.solve(translated, [&taker](std::string_view line) { taker.read_line(line); });
  return taker.take(search);
}

}    // namespace dl
