#include "workbench/search/solving.h"

#include <array>
#include <cstdio>
#include <sstream>
#include <string_view>
#include <sys/resource.h>
#include <utility>

#include "base/file_table.h"
#include "dl/interruption.h"
#include "dl/search_plan.h"
#include "model/run.h"
#include "workbench/messages/words.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/printed_search.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

// Between asking a search to end and ending it: a time limit is kept within a second.
constexpr double kGrace = 0.4;

// Set once, before anything else; told behind it.
double time_limit = 0;

std::string reason_of(dl::Interruption interruption) {
  if (interruption != dl::Interruption::kTime) return "interrupted";
  char seconds[32];
  std::snprintf(seconds, sizeof seconds, "%g", time_limit);
  return std::string("ended by the time limit after ") + seconds + " s";
}

// The line as the reporter would give it: a signal handler cannot ask it.
std::string noted(const MessageOptions& options, std::string_view text) {
  const zarel::FileTable no_files;
  SourceTexts no_texts(no_files);
  std::ostringstream line;
  if (has_progress_line()) line << kClearLine;
  Reporter(options, no_texts, line).note(text);
  return std::move(line).str();
}

// The clauses that there are before the search takes them.
struct ClauseCounts {
  std::size_t written, generated;
};

ClauseCounts clause_counts(zarel::Program& program) {
  const zarel::Run& run = program.run();
  const auto generated = static_cast<std::size_t>(run.generated_clauses);
  return {run.clauses.size() - generated, generated};
}

std::string megabytes(std::uint64_t bytes) {
  return std::to_string((bytes + 500'000) / 1'000'000) + " MB";
}

bool is_divided(const SearchOptions& options) {
  return options.cuts != dl::Cuts::kNone || options.configuration == dl::kRaceWord;
}

void tell_statistics(const SearchOptions& options, const SearchResult& result,
                     const ClauseCounts& clauses, Reporter& reporter) {
  for (const PhaseFigures& figures : end_progress()) {
    std::array<char, 64> seconds{};
    std::snprintf(seconds.data(), seconds.size(), ": %.2f s, memory up to ", figures.seconds);
    std::string line(name_of(figures.phase));
    reporter.note((line += seconds.data()) += megabytes(figures.peak_memory));
  }
  reporter.note(counted(clauses.written, "clause") + " read, " + std::to_string(clauses.generated) +
                " made by templates");
  rusage solver{};
  ::getrusage(RUSAGE_CHILDREN, &solver);
  // Of several processes, the largest is known.
  const std::string_view whose = is_divided(options) ? "each solver" : "the solver";
  reporter.note(std::string("memory of ").append(whose) + " up to " +
                megabytes(static_cast<std::uint64_t>(solver.ru_maxrss) * 1024));
  for (const std::string& line : result.figures) reporter.note("clingo: " + line);
}

}    // namespace

void watch_the_run(double seconds, const MessageOptions& messages) {
  time_limit = seconds;
  constexpr std::string_view kUnread = "ended with answers that nobody reads";
  const auto line = [&messages](dl::Interruption interruption) {
    return noted(messages, reason_of(interruption) + " before the search began");
  };
  dl::InterruptionPlan plan;
  plan.seconds = seconds;
  plan.grace = kGrace;
  plan.hangs_up = plan.ends_while_feeding = plan.ends_while_writing = true;
  plan.status = static_cast<int>(ExitStatus::kIncomplete);
  plan.time_line = line(dl::Interruption::kTime);
  plan.signal_line = line(dl::Interruption::kSignal);
  plan.stuck_line = noted(messages, kUnread);
  dl::watch_interruptions(std::move(plan));
}

std::string interruption_in_words() {
  return reason_of(dl::interruption());
}

ExitStatus solve(zarel::Program& program, const SearchOptions& options,
                 const AnswerOptions& answers, Reporter& reporter, int output) {
  KeptStages kept(options.keep_folder);
  ExitStatus status = ExitStatus::kSolverFailed;
  const ClauseCounts clauses = clause_counts(program);
  const auto search = [&](AnswerPrinter& printer) {
    return options.solver.empty() ? search_with_clingo(program, options, kept, printer)
                                  : search_with_solver(program, options, kept, printer);
  };
  const auto tell_more = [&](const SearchResult& result, bool has_no_answer_set) {
    if (has_no_answer_set && options.solver.empty()) reporter.note(kConflictHint);
    for (const std::string& line : result.profile) reporter.note(line);
    if (options.tells_statistics) tell_statistics(options, result, clauses, reporter);
  };
  if (!kept.has_failed()) {
    status = print_search(program.run(), answers, reporter, {output, search, tell_more});
  }
  const std::optional<Message> unkept = kept.finish();
  if (!unkept) return status;
  reporter.report(*unkept);
  return ExitStatus::kOutputFailed;
}

ExitStatus check_translation(zarel::Program& program, const SearchOptions& options,
                             Reporter& reporter) {
  const std::vector<Message> mistakes = translation_mistakes(program, options);
  for (const Message& mistake : mistakes) reporter.report(mistake);
  return mistakes.empty() ? ExitStatus::kFound : workbench::status_of(mistakes.front());
}

}    // namespace workbench
