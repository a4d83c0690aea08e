#include "workbench/search/solving.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string_view>
#include <utility>

#include "base/file_table.h"
#include "dl/interruption.h"
#include "model/run.h"
#include "output/display_settings.h"
#include "output/sinks.h"
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
  Reporter(options, no_texts, line).note(text);
  return std::move(line).str();
}

const std::vector<std::string>& shown_alone(zarel::Program& program,
                                            const std::vector<std::string>& filters) {
  program.run().parts.get<zarel::DisplaySettings>().set_filters(filters, {});
  return filters;
}

ExitStatus status_of(const Found& found, const SearchResult& result) {
  if (result.judgement.end == SearchEnd::kCut) return ExitStatus::kIncomplete;
  const bool is_true = result.judgement.holds.value_or(false);
  const bool has_found = result.asked.is_ground   ? is_true
                         : result.asked.has_query ? found.rows != 0
                                                  : found.answer_sets != 0;
  return has_found ? ExitStatus::kFound : ExitStatus::kNoneFound;
}

void tell(const Found& found, const SearchResult& result, Reporter& reporter) {
  std::istringstream said(result.said);
  for (std::string line; std::getline(said, line);) reporter.note("the solver says: " + line);
  std::string text = in_words(found, result.asked, result.judgement);
  if (result.judgement.end == SearchEnd::kCut) {
    text = reason_of(dl::interruption()) + ": " + text;
  }
  reporter.note(text);
}

std::optional<Message> output_failure(const AnswerPrinter& printer) {
  if (printer.error() == 0 || printer.error() == EPIPE) return std::nullopt;
  std::string text("the answers cannot be written: ");
  return Message{"output-failure", {}, text += std::strerror(printer.error())};
}

ExitStatus run_search(zarel::Program& program, const SearchOptions& options, KeptStages& kept,
                      AnswerPrinter& printer, Reporter& reporter) {
  const SearchResult result = options.solver.empty()
                                  ? search_with_clingo(program, options, kept, printer)
                                  : search_with_solver(program, options, kept, printer);
  if (printer.has_unreadable_answers()) return ExitStatus::kSolverFailed;
  if (printer.error() != 0) {
    if (const std::optional<Message> failure = output_failure(printer)) reporter.report(*failure);
    return ExitStatus::kOutputFailed;
  }
  tell(printer.found(), result, reporter);
  return status_of(printer.found(), result);
}

ExitStatus report_failure(const SearchFailure& failure, Reporter& reporter) {
  reporter.report(failure.message);
  for (const Message& message : failure.further) reporter.report(message);
  return workbench::status_of(failure.message);
}

}    // namespace

AnswerPrinter::AnswerPrinter(zarel::Program& program, const std::vector<std::string>& filters,
                             int output)
    : program_(program),
      output_(output),
      stream_(&output_),
      sink_((shown_alone(program, filters), zarel::make_sink("text", stream_, program.run()))) {}

bool AnswerPrinter::print(std::string_view answers) {
  if (answers.empty()) return error() == 0;
  const int status = program_.read_answers(answers, sink_);
  if (error() != 0) return false;
  has_unreadable_answers_ = has_unreadable_answers_ || status != 0;
  return !has_unreadable_answers_;
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

ExitStatus solve(zarel::Program& program, const SearchOptions& options, Reporter& reporter,
                 int output) {
  KeptStages kept(options.keep_folder);
  AnswerPrinter printer(program, options.filters, output);
  ExitStatus status = ExitStatus::kSolverFailed;
  try {
    if (!kept.has_failed()) status = run_search(program, options, kept, printer, reporter);
  } catch (const SearchFailure& failure) {
    status = report_failure(failure, reporter);
  }
  const std::optional<Message> unkept = kept.finish();
  if (!unkept) return status;
  reporter.report(*unkept);
  return ExitStatus::kOutputFailed;
}

ExitStatus check_translation(zarel::Program& program, const SearchOptions& options,
                             Reporter& reporter) {
  const std::optional<Message> mistake = translation_mistake(program, options);
  if (!mistake) return ExitStatus::kFound;
  reporter.report(*mistake);
  return workbench::status_of(*mistake);
}

}    // namespace workbench
