#include "dl/clingo_run.h"

#include <cerrno>
#include <charconv>
#include <cstring>
#include <iostream>
#include <unistd.h>
#include <utility>

#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/query_answers.h"

namespace dl {
namespace {

// clingo's exit status is a set of bits.
constexpr int kInterrupted = 1;
constexpr int kSomeFound = 10;
constexpr int kNoneExists = 20;
constexpr int kAllFound = 30;
constexpr int kOutOfMemory = 33;

void write_standard_output(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(STDOUT_FILENO, text.data(), text.size());
    if (written >= 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      throw Failure{std::string("dl: cannot write to standard output: ") + std::strerror(errno)};
    }
  }
}

std::string_view first_line(std::string_view text) {
  return text.substr(0, text.find('\n'));
}

}    // namespace

// Without --fast-exit clingo takes its tables apart at the end, which costs 6 to 10 % of the time
// of a large program.
std::vector<std::string> ClingoRun::arguments() const {
  std::vector<std::string> words{"--verbose=0", "--warn=none", "--fast-exit"};
  if (parts_.has_weak_constraints) words.emplace_back("--opt-mode=optN");
  if (parts_.has_weak_constraints || parts_.has_query) words.emplace_back("--quiet=1,0,2");
  if (parts_.has_query) {
    words.emplace_back(options_.reasoning == Reasoning::kBrave ? "--enum-mode=brave"
                                                               : "--enum-mode=cautious");
  }
  if (options_.threads > 1) words.push_back("--parallel-mode=" + std::to_string(options_.threads));
  words.push_back("--models=" + std::to_string(parts_.has_query ? 0 : options_.answer_sets));
  words.emplace_back("-");
  return words;
}

void ClingoRun::read_along(Translation& translation) {
  process_.start(options_.clingo, arguments());
  translation.receiver = [this](std::string_view text) { give(text); };
}

void ClingoRun::give(std::string_view text) {
  process_.write(text);
  if (parts_.has_sums) given_ += text;
}

int ClingoRun::solve(std::string& program) {
  if (!process_.is_running()) process_.start(options_.clingo, arguments());
  give(program);
  program = std::string();
  process_.finish_input();
  LineReader reader(process_);
  do {
    std::string_view line;
    while (reader.next(line)) read_line(line);
    flush();
  } while (reader.wait());
  return judge(!reader.has_rest());
}

void ClingoRun::read_line(std::string_view line) {
  const LineKind kind = kind_of_line(line);
  if (kind == LineKind::kAnswerSet) {
    read_answer(line);
  } else if (kind != LineKind::kCosts) {
    if (kind != LineKind::kOther) status_ = kind;
  } else if (!parts_.variable_levels) {
    // Costs that come before the next answer set are its own: only optimal ones are printed, which
    // have the same, or the one that was best so far.
    if (!parts_.query) costs_ = read_costs(line, parts_);
  }
}

// Note [held back]
// While it optimizes, clingo prints the optimal answer sets only; but when it is interrupted, it
// prints the best one so far, too. So an answer set waits until the next one, or the final line,
// proves it optimal; or until a cut search has nothing better, which is said.
void ClingoRun::read_answer(std::string_view line) {
  if (parts_.query) {
    consequences_ = line;
    has_consequences_ = true;
    return;
  }
  print_held();
  read_answer_set(line, parts_, answer_);
  has_held_ = !parts_.weak_constraints.empty();
  if (has_held_) return;
  check_fault(answer_.fault);
  // One answer set may be all there is, and large: it is not copied.
  if (output_.empty()) {
    output_.swap(answer_.text);
  } else {
    output_ += answer_.text;
  }
  output_ += '\n';
}

void ClingoRun::print_held() {
  if (!std::exchange(has_held_, false)) return;
  check_fault(answer_.fault);
  append_best_model(output_, answer_, parts_.variable_levels ? answer_.costs : costs_);
}

void ClingoRun::check_fault(std::optional<std::size_t> fault) const {
  if (!fault) return;
  throw Failure{parts_.message(parts_.faults.at(*fault))};
}

void ClingoRun::flush() {
  write_standard_output(output_);
  output_.clear();
}

// Only what the exit status, the final line and the whole output agree on is a finished search.
int ClingoRun::judge(bool complete_lines) {
  const ProcessEnd end = process_.end();
  const bool is_cut = interruption() != Interruption::kNone;
  const bool finished =
      !end.signalled && complete_lines &&
      (end.code == kSomeFound || end.code == kNoneExists || end.code == kAllFound) &&
      (status_ == LineKind::kSatisfiable || status_ == LineKind::kUnsatisfiable ||
       status_ == LineKind::kOptimumFound);
  const bool optimal = parts_.weak_constraints.empty() || status_ == LineKind::kOptimumFound;
  if (!finished && !is_cut) fail(end);
  const bool is_unproven = has_held_ && !finished && !optimal;
  print_held();
  if (parts_.query && (finished || (optimal && has_brave_answer()))) print_query();
  flush();
  if (finished) return kSuccess;
  std::cerr << interruption_text()
            << (is_unproven ? "; the best answer set so far is not proven to be optimal\n"
                            : "; there may be more answers\n");
  return kCut;
}

// Whether a search that was cut has shown something that holds; what it has not found yet may hold,
// too.
bool ClingoRun::has_brave_answer() const {
  return options_.reasoning == Reasoning::kBrave && has_consequences_ &&
         (!parts_.query->variables.empty() || query_holds(consequences_));
}

void ClingoRun::print_query() {
  const bool holds_in_all = options_.reasoning == Reasoning::kCautious;
  if (has_consequences_) {
    check_fault(query_fault(consequences_, holds_in_all, parts_.faults.size()));
  } else {
    std::cerr << parts_.at(parts_.query->place, "note: the program has no answer set") << '\n';
  }
  if (!parts_.query->variables.empty()) {
    output_ += query_answers(consequences_);
  } else {
    output_ += query_holds(consequences_) ? "true\n" : "false\n";
  }
}

// The sum for which clasp gave up: see Note [sums that could wrap].
std::optional<std::size_t> ClingoRun::sum_at_fault() const {
  ClingoProcess grounder;
  grounder.start(options_.clingo, {"--mode=gringo", "--warn=none", "-"});
  grounder.write(given_);
  grounder.finish_input();
  std::optional<std::size_t> first;
  LineReader reader(grounder);
  do {
    std::string_view line;
    while (reader.next(line)) {
      const std::size_t atom = line.starts_with("4 ") ? line.find(" _fault(") : line.npos;
      if (atom == line.npos) continue;
      const std::optional<std::size_t> fault = numbered_helper(line.substr(atom + 1), "_fault(");
      const bool is_sum = parts_.faults.at(*fault).kind == FaultKind::kSum;
      if (is_sum && (!first || *fault < *first)) first = fault;
    }
  } while (reader.wait());
  return first;
}

void ClingoRun::fail(const ProcessEnd& end) const {
  if (end.signalled) {
    throw Failure{"dl: clingo died of signal " + std::to_string(end.code) + " (" +
                  ::strsignal(end.code) + ")"};
  }
  if (end.code == kCannotRun) {
    throw Failure{"dl: cannot run \"" + options_.clingo +
                  "\": " + std::string(first_line(end.errors))};
  }
  if (end.code == kOutOfMemory) throw Failure{"dl: clingo ran out of memory"};
  const std::string error = clingo_error(end.errors);
  if (!error.empty()) throw Failure{error};
  if ((end.code & kInterrupted) != 0) {
    throw Failure{"dl: clingo was interrupted before its search was complete (status " +
                  std::to_string(end.code) + ")"};
  }
  throw Failure{"dl: clingo ended without a complete answer (status " + std::to_string(end.code) +
                ")"};
}

// clingo's first error, with the place in the input instead of the one in the translation:
// "-:12:3-4: error: text".
std::string ClingoRun::clingo_error(std::string_view errors) const {
  // clasp counts in 32 bits, too, but it notices.
  if (parts_.has_sums && errors.find("Integer overflow!") != std::string_view::npos) {
    if (const std::optional<std::size_t> fault = sum_at_fault()) {
      return parts_.message(parts_.faults.at(*fault));
    }
  }
  if (errors.find("Integer overflow!") != std::string_view::npos ||
      errors.find("weight too large") != std::string_view::npos) {
    return "dl: the weights of weak constraints leave the 32 bits of clingo";
  }
  constexpr std::string_view kLoud = "ERROR: (clingo): ";
  const std::size_t found = errors.find("rror: ");
  const std::size_t loud = errors.find(kLoud);
  if (found == std::string_view::npos && loud == std::string_view::npos) return {};
  if (loud < found) {
    return "dl: clingo: " + std::string(first_line(errors.substr(loud + kLoud.size())));
  }
  const std::size_t begin = errors.rfind('\n', found) + 1;
  std::string_view line = first_line(errors.substr(begin));
  const std::string text = "clingo: " + std::string(line.substr(line.find("rror: ") + 6));
  std::size_t number = 0;
  const std::size_t colon = line.find(':');
  const auto [end, error] =
      std::from_chars(line.data() + colon + 1, line.data() + line.size(), number);
  if (!line.starts_with("-:") || error != std::errc()) return "dl: " + text;
  return parts_.at(lines_.place_of(number), text);
}

}    // namespace dl
