#include "workbench/commands.h"

#include <iostream>

#include "workbench/session.h"

namespace workbench {

ExitStatus run(const CommandLine& line) {
  watch_the_run(line.search.seconds);
  Session session(line);
  std::optional<ExitStatus> status = session.prepare();
  if (!status) status = solve(session.program(), line.search, session.reporter(), std::cout);
  session.reporter().finish();
  return *status;
}

ExitStatus check(const CommandLine& line) {
  Session session(line);
  const std::optional<ExitStatus> status = session.prepare(zarel::PlainFacts::kLeftOut);
  if (!status) check_translation(session.program(), line.search, session.reporter());
  session.reporter().finish();
  if (status) return *status;
  return session.reporter().errors() == 0 ? ExitStatus::kFound : ExitStatus::kProgramErrors;
}

}    // namespace workbench
