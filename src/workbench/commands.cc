#include "workbench/commands.h"

#include <unistd.h>

#include "workbench/session.h"

namespace workbench {

ExitStatus run(const CommandLine& line) {
  watch_the_run(line.search.seconds, line.messages);
  Session session(line);
  std::optional<ExitStatus> status = session.prepare();
  if (!status) status = solve(session.program(), line.search, session.reporter(), STDOUT_FILENO);
  session.reporter().finish();
  return *status;
}

ExitStatus check(const CommandLine& line) {
  Session session(line);
  std::optional<ExitStatus> status = session.prepare(zarel::PlainFacts::kLeftOut);
  if (!status) status = check_translation(session.program(), line.search, session.reporter());
  session.reporter().finish();
  if (*status != ExitStatus::kFound) return *status;
  return session.reporter().errors() == 0 ? ExitStatus::kFound : ExitStatus::kProgramErrors;
}

}    // namespace workbench
