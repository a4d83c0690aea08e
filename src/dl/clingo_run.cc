#include "dl/clingo_run.h"

#include <charconv>
#include <cstring>
#include <utility>

#include "dl/failure.h"
#include "dl/interruption.h"

namespace dl {
namespace {

using zarel::Code;

std::string_view first_line(std::string_view text) {
  return text.substr(0, text.find('\n'));
}

[[noreturn]] void fail_with(Code code, std::string text) {
  throw Failure{{code, {}, std::move(text)}};
}

}    // namespace

bool has_finished(const ProcessEnd& end) {
  return !end.signalled &&
         (end.code == kSomeFound || end.code == kNoneExists || end.code == kAllFound);
}

OutputSource output_of(ClingoProcess& process) {
  return [&process](char* buffer, std::size_t size) { return process.read(buffer, size); };
}

// Without --fast-exit clingo takes its tables apart at the end, which costs 6 to 10 % of the time
// of a large program.
std::vector<std::string> clingo_arguments(const Options& options, const Traits& traits) {
  std::vector<std::string> words{"--verbose=0", "--warn=none", "--fast-exit"};
  const bool is_one_best = options.one_best && traits.has_weak_constraints;
  if (traits.has_weak_constraints) {
    words.emplace_back(is_one_best ? "--opt-mode=opt" : "--opt-mode=optN");
    if (options.by_cores) words.emplace_back("--opt-strategy=usc");
  }
  if (options.differ_in_shown) words.emplace_back("--project=show");
  if (traits.has_weak_constraints || traits.has_query) words.emplace_back("--quiet=1,0,2");
  if (traits.has_query) {
    words.emplace_back(options.reasoning == Reasoning::kBrave ? "--enum-mode=brave"
                                                              : "--enum-mode=cautious");
  }
  if (options.threads > 1) words.push_back("--parallel-mode=" + std::to_string(options.threads));
  if (options.seed) {
    words.push_back("--seed=" + std::to_string(*options.seed));
    // A seed alone changes nothing: it needs decisions that are made at random.
    for (const char* const word : {"--rand-freq=0.2", "--sign-def=rnd", "--sign-def-disj=rnd"})
      words.emplace_back(word);
  }
  const bool is_limited = !traits.has_query && !is_one_best;
  words.push_back("--models=" + std::to_string(is_limited ? options.answer_sets : 0));
  words.emplace_back("-");
  return words;
}

void ClingoRun::start(const Traits& traits) {
  traits_ = traits;
  process_.start(options_.clingo, clingo_arguments(options_, traits));
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
    while (reader.next(line)) answers.read_line(line);
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
  const bool finished = has_result && has_finished(end);
  if (!finished && !is_cut) fail(end, program);
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

// See Note [sums that could wrap].
std::optional<std::size_t> sum_at_fault(const std::string& clingo, std::string_view translation,
                                        const ProgramParts& parts) {
  ClingoProcess grounder;
  grounder.start(clingo, {"--mode=gringo", "--warn=none", "-"});
  grounder.write(translation);
  grounder.finish_input();
  std::optional<std::size_t> first;
  LineReader reader(output_of(grounder));
  do {
    std::string_view line;
    while (reader.next(line)) {
      const std::size_t atom = line.starts_with("4 ") ? line.find(" _fault(") : line.npos;
      if (atom == line.npos) continue;
      const std::optional<std::size_t> fault = numbered_helper(line.substr(atom + 1), "_fault(");
      const bool is_sum = parts.faults.at(*fault).kind == FaultKind::kSum;
      if (is_sum && (!first || *fault < *first)) first = fault;
    }
  } while (reader.wait());
  return first;
}

// A program's start costs time, so a clingo that answers as it should is not asked.
std::string untested_version(const std::string& clingo) {
  ClingoProcess process;
  process.start(clingo, {"--version"});
  process.finish_input();
  constexpr std::string_view kBegin = "clingo version ";
  std::string version;
  LineReader reader(output_of(process));
  do {
    std::string_view line;
    while (reader.next(line)) {
      if (version.empty() && line.starts_with(kBegin)) version = line.substr(kBegin.size());
    }
  } while (reader.wait());
  if (version.empty() || version.starts_with(kClingoMajor)) return {};
  std::string text("this is clingo ");
  return ((text += version) += ", and it was tested with ") += kTestedClingo;
}

void ClingoRun::fail(const ProcessEnd& end, const Translated& program) const {
  if (end.signalled) {
    std::string text = "clingo died of signal ";
    (((text += std::to_string(end.code)) += " (") += ::strsignal(end.code)) += ')';
    fail_with(Code::kSolverKilled, std::move(text));
  }
  if (end.code == kCannotRun) {
    fail_with(Code::kSolverMissing,
              "cannot run \"" + options_.clingo + "\": " + std::string(first_line(end.errors)));
  }
  if (end.code == kOutOfMemory) fail_with(Code::kSolverMemory, "clingo ran out of memory");
  if (std::optional<zarel::Diagnostic> error = clingo_error(end.errors, program)) {
    if (const std::string version = untested_version(options_.clingo); !version.empty())
      (error->text += "; ") += version;
    throw Failure{std::move(*error)};
  }
  std::string status(" (status ");
  (status += std::to_string(end.code)) += ')';
  if (const std::string version = untested_version(options_.clingo); !version.empty())
    (status += "; ") += version;
  if ((end.code & kInterrupted) != 0) {
    fail_with(Code::kSolverInterrupted,
              "clingo was interrupted before its search was complete" + status);
  }
  fail_with(Code::kSolverIncomplete, "clingo ended without a complete answer" + status);
}

// clingo's first error, with the place in the input instead of the one in the translation:
// "-:12:3-4: error: text".
std::optional<zarel::Diagnostic> ClingoRun::clingo_error(std::string_view errors,
                                                         const Translated& program) const {
  // clasp counts in 32 bits, too, but it notices.
  const bool has_overflow = errors.find("Integer overflow!") != std::string_view::npos;
  if (traits_.has_sums && has_overflow) {
    if (const std::optional<std::size_t> fault =
            sum_at_fault(options_.clingo, given_, program.parts)) {
      return diagnostic_of(program.parts.faults.at(*fault), program.sources);
    }
  }
  if (has_overflow || errors.find("weight too large") != std::string_view::npos) {
    return zarel::Diagnostic{
        Code::kSolverWeights, {}, "the weights of weak constraints leave the 32 bits of clingo"};
  }
  constexpr std::string_view kLoud = "ERROR: (clingo): ";
  const std::size_t found = errors.find("rror: ");
  const std::size_t loud = errors.find(kLoud);
  if (found == std::string_view::npos && loud == std::string_view::npos) return {};
  zarel::Diagnostic diagnostic{Code::kSolverError, {}, "clingo: "};
  if (loud < found) {
    diagnostic.text += first_line(errors.substr(loud + kLoud.size()));
    return diagnostic;
  }
  const std::size_t begin = errors.rfind('\n', found) + 1;
  std::string_view line = first_line(errors.substr(begin));
  diagnostic.text += line.substr(line.find("rror: ") + 6);
  std::size_t number = 0;
  const std::size_t colon = line.find(':');
  const auto [end, error] =
      std::from_chars(line.data() + colon + 1, line.data() + line.size(), number);
  if (!line.starts_with("-:") || error != std::errc()) return diagnostic;
  const zarel::SourceLocation location = program.lines.source_of(number).location;
  diagnostic.place = program.sources.place(location);
  diagnostic.parser_line = static_cast<int>(location.line);
  return diagnostic;
}

}    // namespace dl
