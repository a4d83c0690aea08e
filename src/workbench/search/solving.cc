#include "workbench/search/solving.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string_view>
#include <sys/resource.h>
#include <utility>

#include "base/file_table.h"
#include "dl/interruption.h"
#include "model/run.h"
#include "workbench/answers/terminal_width.h"
#include "workbench/messages/words.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/search.h"
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

// Prefixes that the program does not use are not shown.
const zarel::NamespaceTable* shown_namespaces(const zarel::Run& run) {
  return run.prefix_was_used ? &run.namespaces : nullptr;
}

FormSettings form_settings(const zarel::Run& run, const AnswerOptions& options,
                           Reporter& reporter) {
  FormSettings settings;
  settings.namespaces = shown_namespaces(run);
  settings.has_one_set = options.has_one_set;
  settings.wrapping = options.wrapping;
  settings.limit = options.row_limit;
  settings.differs_from_facts = options.differs_from_facts;
  settings.counts_only = options.shown_sets == 0;
  settings.picture = options.picture;
  settings.reported = options.reported;
  settings.note = [&reporter](std::string_view text) { reporter.note(text); };
  return settings;
}

ExitStatus status_of(const Found& found, const SearchResult& result) {
  if (result.judgement.end == SearchEnd::kCut) return ExitStatus::kIncomplete;
  const bool is_true = result.judgement.holds.value_or(false);
  const bool has_found = result.asked.is_ground   ? is_true
                         : result.asked.has_query ? found.rows != 0
                                                  : found.answer_sets != 0;
  return has_found ? ExitStatus::kFound : ExitStatus::kNoneFound;
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

void tell_statistics(const SearchResult& result, const ClauseCounts& clauses, Reporter& reporter) {
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
  reporter.note("memory of the solver up to " +
                megabytes(static_cast<std::uint64_t>(solver.ru_maxrss) * 1024));
  for (const std::string& line : result.figures) reporter.note("clingo: " + line);
}

void tell(const Found& found, const SearchResult& result, Reporter& reporter) {
  std::istringstream said(result.said);
  for (std::string line; std::getline(said, line);) reporter.note("the solver says: " + line);
  for (const std::string& line : result.notes) reporter.note(line);
  std::string text = in_words(found, result.asked, result.judgement);
  if (result.judgement.end == SearchEnd::kCut) {
    text = reason_of(dl::interruption()) + ": " + text;
  }
  reporter.note(text);
}

bool has_no_answer_set(const Found& found, const SearchResult& result) {
  if (result.asked.has_query) return result.judgement.has_no_answer_set;
  return result.judgement.end == SearchEnd::kAll && found.answer_sets == 0;
}

// Whoever closes a pipe knows.
void tell(const AnswerOutputs::Failure& failure, Reporter& reporter) {
  if (failure.error == EPIPE && failure.file.empty()) return;
  std::string text("the answers cannot be written");
  if (!failure.file.empty()) (text += " to ") += failure.file;
  reporter.report({"output-failure", {}, (text += ": ") += std::strerror(failure.error)});
}

ExitStatus run_search(zarel::Program& program, const SearchOptions& options, KeptStages& kept,
                      AnswerPrinter& printer, Reporter& reporter, bool has_messages) {
  std::optional<AnswerOutputs::Failure> failure = printer.failure();
  if (!failure) {
    const ClauseCounts clauses = clause_counts(program);
    const SearchResult result = options.solver.empty()
                                    ? search_with_clingo(program, options, kept, printer)
                                    : search_with_solver(program, options, kept, printer);
    if (!printer.reading_error().empty()) {
      std::string text("the solver's answer cannot be read: ");
      reporter.report({"answer-syntax", {}, text += printer.reading_error()});
      return ExitStatus::kSolverFailed;
    }
    enter(Phase::kWriting);
    const ExitStatus status = status_of(printer.found(), result);
    failure = printer.failure();
    // In one stream, what is said of the run stands in front of its end.
    const bool tells_first = has_messages && !failure;
    const auto tell_all = [&] {
      tell(printer.found(), result, reporter);
      if (has_no_answer_set(printer.found(), result) && options.solver.empty())
        reporter.note(kConflictHint);
      for (const std::string& line : result.profile) reporter.note(line);
      if (options.tells_statistics) tell_statistics(result, clauses, reporter);
    };
    if (tells_first) tell_all();
    if (!failure) {
      printer.finish(
          {status, seconds_since_begin(), printer.found(), result.asked, result.judgement});
      failure = printer.put_files();
    }
    if (!failure) {
      if (!tells_first) tell_all();
      return status;
    }
  }
  tell(*failure, reporter);
  return ExitStatus::kOutputFailed;
}

ExitStatus report_failure(const SearchFailure& failure, Reporter& reporter) {
  reporter.report(failure.message);
  for (const Message& message : failure.further) reporter.report(message);
  return workbench::status_of(failure.message);
}

}    // namespace

AnswerPrinter::AnswerPrinter(zarel::Program& program, const AnswerOptions& options,
                             Reporter& reporter, int standard_output)
    : settings_(form_settings(program.run(), options, reporter)),
      outputs_(options.destinations, settings_, standard_output),
      limit_(options.different_sets),
      stages_(outputs_, options, found_),
      reader_(stages_.first(), settings_.namespaces) {
  settings_.terminal_width = terminal_width(outputs_.descriptor());
  if (settings_.terminal_width != 0) settings_.terminal = outputs_.standard_stream();
}

void AnswerPrinter::expect_query(std::vector<std::string> variables) {
  reader_.expect_truth_value(variables.empty());
  settings_.query_variables = std::move(variables);
}

bool AnswerPrinter::print(std::string_view answers) {
  reader_.read(answers);
  return is_fine();
}

bool AnswerPrinter::settle() {
  reader_.settle();
  return flush();
}

bool AnswerPrinter::flush() {
  stages_.first().flush();
  return is_fine();
}

bool AnswerPrinter::end() {
  reader_.finish();
  return flush();
}

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

ExitStatus solve(zarel::Program& program, const SearchOptions& options,
                 const AnswerOptions& answers, Reporter& reporter, int output) {
  KeptStages kept(options.keep_folder);
  std::optional<AnswerPrinter> printer;
  ExitStatus status = ExitStatus::kSolverFailed;
  try {
    printer.emplace(program, answers, reporter, output);
    if (!kept.has_failed())
      status = run_search(program, options, kept, *printer, reporter, answers.has_messages);
  } catch (const SearchFailure& failure) {
    if (printer) printer->flush();    // what was found stands in front
    status = report_failure(failure, reporter);
  } catch (const AnswersRefused& refusal) {
    if (printer) printer->flush();
    status = report_failure({{"form-misfit", {}, refusal.text, {}, {}, refusal.help}}, reporter);
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
