#include "dl/clingo_run.h"

#include <utility>

#include "dl/clingo_failure.h"
#include "dl/interruption.h"
#include "dl/search_plan.h"

namespace dl {
namespace {

using zarel::Code;

}    // namespace

bool has_finished(const ProcessEnd& end) {
  return !end.signalled &&
         (end.code == kSomeFound || end.code == kNoneExists || end.code == kAllFound);
}

namespace {

bool has_limit(const Options& options, const Traits& traits) {
  const bool is_one_best = options.one_best && traits.has_weak_constraints;
  return options.answer_sets != 0 && !traits.has_query && !is_one_best;
}

}    // namespace

bool has_finished(const ProcessEnd& end, const Options& options, const Traits& traits) {
  return has_finished(end) && (end.code != kSomeFound || has_limit(options, traits));
}

OutputSource output_of(ClingoProcess& process) {
  return [&process](char* buffer, std::size_t size) { return process.read(buffer, size); };
}

// Note [several levels]
// clasp 3.3.5, which is that of clingo 5.4.1, goes wrong where it improves the costs of several
// levels: in one of some 200 small programs it finds the same answer set for ever, and in one of
// some thousands it gives an answer set costs that are not its own, with every way of improving
// (bb, with and without --eq=0). Its authors say that 3.3.10, which came with clingo 5.7, mended
// the first. From below, by unsatisfiable cores, it did neither in 3672 programs whose answer sets
// were all looked at; but then there is often nothing to show when the search is interrupted.
constexpr int kLevelsMended = 7;

// Without --fast-exit clingo takes its tables apart at the end, which costs 6 to 10 % of the time
// of a large program.
std::vector<std::string> clingo_arguments(const Options& options, const Traits& traits) {
  std::vector<std::string> words{"--verbose=0", "--warn=none", "--fast-exit"};
  const bool is_one_best = options.one_best && traits.has_weak_constraints;
  if (traits.has_weak_constraints) {
    words.emplace_back(is_one_best ? "--opt-mode=opt" : "--opt-mode=optN");
    if (options.by_cores ||
        (traits.has_several_levels && is_older_clingo(options.clingo, kLevelsMended))) {
      words.emplace_back("--opt-strategy=usc");
    }
  }
  if (options.differ_in_shown) words.emplace_back("--project=show");
  if (traits.has_weak_constraints || traits.has_query) words.emplace_back("--quiet=1,0,2");
  if (traits.has_query) {
    words.emplace_back(options.reasoning == Reasoning::kBrave ? "--enum-mode=brave"
                                                              : "--enum-mode=cautious");
  }
  if (!options.configuration.empty() && options.configuration != kRaceWord) {
    words.push_back("--configuration=" + options.configuration);
  }
  if (options.threads > 1) words.push_back("--parallel-mode=" + std::to_string(options.threads));
  if (options.seed) {
    words.push_back("--seed=" + std::to_string(*options.seed));
    // A seed alone changes nothing: it needs decisions that are made at random.
    for (const char* const word : {"--rand-freq=0.2", "--sign-def=rnd", "--sign-def-disj=rnd"})
      words.emplace_back(word);
  }
  const bool is_limited = has_limit(options, traits);
  words.push_back("--models=" + std::to_string(is_limited ? options.answer_sets : 0));
  words.emplace_back("-");
  return words;
}

void ClingoRun::start(const Traits& traits) {
  traits_ = traits;
  const SearchCommand command = command_of(plan_search(options_, traits));
  process_.start(command.program, command.arguments);
}

void ClingoRun::give(std::string_view text) {
  process_.write(text);
  if (traits_.has_sums) given_ += text;
}

void ClingoRun::give_rest(Translated& program) {
  give(program.text);
  program.text = std::string();
  process_.finish_input();
}

Search ClingoRun::solve(Translated& program) {
  give_rest(program);
  AnswerReader answers(program, options_.reasoning);
  LineReader reader(output_of(process_));
  do {
    std::string_view line;
    while (reader.next(line)) {
      if (line.starts_with(kSearchNote)) {
        output_.said(line.substr(kSearchNote.size()));
      } else {
        answers.read_line(line);
      }
    }
    if (answers.takes_pieces() && reader.next_piece(line)) answers.read_piece(line);
    flush(answers);
  } while (reader.wait());
  return end(answers, program, !reader.has_rest());
}

Search ClingoRun::solve(Translated& program, const std::function<void(std::string_view)>& take) {
  give_rest(program);
  LineReader reader(output_of(process_));
  LineKind status = LineKind::kOther;
  do {
    std::string_view line;
    while (reader.next(line)) {
      const LineKind kind = kind_of_line(line);
      if (kind != LineKind::kAnswerSet && kind != LineKind::kCosts && kind != LineKind::kOther)
        status = kind;
      take(line);
    }
  } while (reader.wait());
  const bool has_result = status != LineKind::kOther && status != LineKind::kUnknown;
  return judge(has_result && !reader.has_rest(), program);
}

void ClingoRun::flush(AnswerReader& answers) const {
  output_.answers(answers.whole_answers());
  answers.drop_whole_answers();
}

// Only what the exit status, the final line and the whole output agree on is a finished search.
Search ClingoRun::judge(bool has_result, const Translated& program) {
  const ProcessEnd end = process_.end();
  const bool is_cut = interruption() != Interruption::kNone;
  const bool finished = has_result && has_finished(end, options_, traits_);
  if (!finished && !is_cut) fail_search(end, {options_.clingo, program, given_});
  return finished ? Search::kComplete : Search::kCut;
}

Search ClingoRun::end(AnswerReader& answers, const Translated& program, bool complete_lines) {
  const Search search = judge(complete_lines && answers.has_result(), program);
  const bool is_unproven = answers.finish(search, output_.notes);
  flush(answers);
  if (search == Search::kComplete) return search;
  std::string text(interruption_text());
  text += is_unproven ? "; the best answer set so far is not proven to be optimal"
                      : "; there may be more answers";
  output_.notes({is_unproven ? Code::kUnprovenBest : Code::kSearchCut, {}, std::move(text)});
  return search;
}

}    // namespace dl
