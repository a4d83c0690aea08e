#include "workbench/commands.h"

#include <algorithm>
#include <unistd.h>

#include "workbench/checked_program.h"
#include "workbench/messages/message_json.h"
#include "workbench/pictures/reported_program.h"
#include "workbench/progress/cleared_output.h"

namespace workbench {

ExitStatus run(const CommandLine& line) {
  const bool shows_line = !line.messages.is_quiet && ::isatty(STDERR_FILENO) != 0;
  begin_progress(shows_line ? ProgressLine::kShown : ProgressLine::kNone);
  watch_the_run(line.search.seconds, line.messages);
  ClearedOutput cleared(line.answers.has_messages ? std::cout : std::cerr);
  std::ostream messages(&cleared);
  CheckedProgram checked(line, messages);
  ReportedProgram reported{checked.program().files(), checked.texts()};
  AnswerOptions answers = line.answers;
  if (std::ranges::count(answers.destinations, "report", &Destination::form) != 0) {
    answers.reported = &reported;
    checked.reporter().tell_also([&](const Message& message, Severity severity) {
      if (reported.messages.size() == ReportedProgram::kMostMessages) return;
      reported.messages.push_back(message_as_json(message, severity, checked.texts()));
    });
  }
  std::optional<ExitStatus> status = checked.prepare();
  checked.reporter().release();
  if (line.search.leaves_out_facts) answers.hidden_ranges = checked.ranges();
  if (!status) {
    status = solve(checked.program(), line.search, answers, checked.reporter(), STDOUT_FILENO);
  }
  checked.reporter().finish();
  end_progress();
  return std::cout ? *status : ExitStatus::kOutputFailed;
}

ExitStatus check(const CommandLine& line) {
  CheckedProgram checked(line);
  std::optional<ExitStatus> status = checked.prepare(zarel::PlainFacts::kLeftOut);
  if (!status) status = check_translation(checked.program(), line.search, checked.reporter());
  checked.reporter().finish();
  if (*status != ExitStatus::kFound) return *status;
  return checked.reporter().errors() == 0 ? ExitStatus::kFound : ExitStatus::kProgramErrors;
}

}    // namespace workbench
