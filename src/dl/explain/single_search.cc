#include "dl/explain/single_search.h"

#include <utility>

#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/interruption.h"

namespace dl {
namespace {

// Of answer sets before the first one to be kept nothing is kept.
class AnswerTaker {
 public:
  AnswerTaker(const Translated& program, std::uint64_t first)
      : program_(program),
        first_(first),
        has_costs_(program.parts.traits.has_weak_constraints),
        has_variable_levels_(program.parts.variable_levels) {}

  void read_line(std::string_view line) {
    const LineKind kind = kind_of_line(line);
    if (kind == LineKind::kAnswerSet) return read_answer(line);
    if (kind == LineKind::kOptimumFound) is_optimal_ = true;
    if (kind == LineKind::kCosts && !has_variable_levels_)
      costs_ = read_costs(line, program_.parts);
  }

  // Where clingo optimizes and is cut, it prints the best answer set so far; else each one that it
  // prints is one of those asked for.
  SearchOutcome outcome(Search search) const {
    const bool is_complete = search == Search::kComplete;
    if (texts_.empty()) return is_complete ? SearchOutcome::kNone : SearchOutcome::kCut;
    const bool is_proven = is_complete || is_optimal_ || !has_costs_;
    return is_proven ? SearchOutcome::kFound : SearchOutcome::kUnproven;
  }
  std::vector<std::string>& texts() { return texts_; }
  Costs& costs() { return costs_; }

 private:
  void read_answer(std::string_view line) {
    if (++seen_ < first_) return;
    AnswerSet answer;
    read_answer_set(line, program_.parts, answer);
    if (answer.fault) {
      throw Failure{diagnostic_of(program_.parts.faults.at(*answer.fault), program_.sources)};
    }
    if (has_variable_levels_) costs_ = std::move(answer.costs);
    texts_.push_back(std::move(answer.text));
  }

  const Translated& program_;
  const std::uint64_t first_;
  const bool has_costs_;
  const bool has_variable_levels_;
  std::uint64_t seen_ = 0;
  std::vector<std::string> texts_;
  Costs costs_;
  bool is_optimal_ = false;
};

// Calls `take` with what was found.
template <typename Take>
auto solved(Program program, const Options& options, std::uint64_t first, Take&& take) {
  const SearchOutput nowhere;
  ClingoRun clingo(options, nowhere);
  TextReceiver receiver;
  if (!program.has_failed()) {
    clingo.start(traits_of(program, options));
    receiver = [&clingo](std::string_view text) { clingo.give(text); };
  }
  Translated translated = translate(std::move(program), options, receiver);
  if (translated.mistake) throw Failure{std::move(*translated.mistake)};
  AnswerTaker answers(translated, first);
  const Search search =
      clingo.solve(translated, [&answers](std::string_view line) { answers.read_line(line); });
  return take(answers, answers.outcome(search));
}

}    // namespace

// All that the user's filters would hide is of use to who explains.
Options own_options(const Options& options) {
  Options chosen;
  chosen.clingo = options.clingo;
  chosen.threads = options.threads;
  chosen.bound = options.bound;
  chosen.seed = options.seed;
  chosen.leaves_out_query = true;
  return chosen;
}

FoundAnswer search_one(Program program, const Options& options, std::uint64_t number) {
  if (interruption() != Interruption::kNone) return {};
  Options chosen = own_options(options);
  chosen.answer_sets = number;
  return solved(std::move(program), chosen, number,
                [](AnswerTaker& answers, SearchOutcome outcome) -> FoundAnswer {
                  if (answers.texts().empty()) return {outcome, {}, {}};
                  return {outcome, std::move(answers.texts().front()), std::move(answers.costs())};
                });
}

FoundAnswers search_all(Program program, const Options& options) {
  if (interruption() != Interruption::kNone) return {};
  return solved(std::move(program), options, 1,
                [](AnswerTaker& answers, SearchOutcome outcome) -> FoundAnswers {
                  return {outcome, std::move(answers.texts()), std::move(answers.costs())};
                });
}

}    // namespace dl
