#include "workbench/search/printed_search.h"

#include <cerrno>
#include <cstring>
#include <optional>
#include <sstream>
#include <string_view>

#include "workbench/answers/forms.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

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
  for (const std::string& line : result.notes) reporter.note(line);
  std::string text = in_words(found, result.asked, result.judgement);
  if (result.judgement.end == SearchEnd::kCut) {
    const std::string reason = result.reason.empty() ? interruption_in_words() : result.reason;
    text = reason + ": " + text;
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

ExitStatus print_found(AnswerPrinter& printer, Reporter& reporter, bool has_messages,
                       const PrintedSearch& steps) {
  std::optional<AnswerOutputs::Failure> failure = printer.failure();
  if (!failure) {
    const SearchResult result = steps.search(printer);
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
      steps.tell_more(result, has_no_answer_set(printer.found(), result));
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

}    // namespace

ExitStatus report_failure(const SearchFailure& failure, Reporter& reporter) {
  reporter.report(failure.message);
  for (const Message& message : failure.further) reporter.report(message);
  return workbench::status_of(failure.message);
}

ExitStatus print_search(const zarel::Run& run, const AnswerOptions& answers, Reporter& reporter,
                        const PrintedSearch& steps) {
  std::optional<AnswerPrinter> printer;
  try {
    printer.emplace(run, answers, reporter, steps.output);
    return print_found(*printer, reporter, answers.has_messages, steps);
  } catch (const SearchFailure& failure) {
    if (printer) printer->flush();    // what was found stands in front
    return report_failure(failure, reporter);
  } catch (const AnswersRefused& refusal) {
    if (printer) printer->flush();
    return report_failure({{"form-misfit", {}, refusal.text, {}, {}, refusal.help}}, reporter);
  }
}

}    // namespace workbench
