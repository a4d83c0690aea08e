#include "workbench/solving.h"

namespace workbench {

void watch_the_run(double /*seconds*/) {}

ExitStatus solve(zarel::Program& /*program*/, const SearchOptions& /*options*/,
                 Reporter& /*reporter*/, std::ostream& /*out*/) {
  return ExitStatus::kSolverFailed;
}

void check_translation(zarel::Program& /*program*/, const SearchOptions& /*options*/,
                       Reporter& /*reporter*/) {}

}    // namespace workbench
