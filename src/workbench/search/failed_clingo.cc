#include "workbench/search/failed_clingo.h"

#include <optional>

#include "dl/clingo_failure.h"
#include "dl/clingo_run.h"

namespace workbench {

std::vector<Message> mistakes_of(const dl::Translated& translated, SolverMessages& messages) {
  std::vector<Message> mistakes;
  if (!translated.mistake) return mistakes;
  mistakes.push_back(messages.message(*translated.mistake));
  for (const zarel::Diagnostic& each : translated.further) {
    mistakes.push_back(messages.message(each));
  }
  return mistakes;
}

void fail_with_clingo(const dl::ProcessEnd& end, const FailedClingo& search,
                      SolverMessages& messages) {
  const auto& [clingo, program, given] = search;
  // clasp counts in 32 bits, but it notices.
  const bool has_overflow = end.errors.find("Integer overflow!") != std::string::npos;
  if (has_overflow && program.parts.traits.has_sums) {
    const std::optional<std::size_t> fault = dl::sum_at_fault(clingo, given, program.parts);
    if (fault) {
      throw SearchFailure{
          messages.message(dl::diagnostic_of(program.parts.faults.at(*fault), program.sources))};
    }
  }
  if (has_overflow || end.errors.find("weight too large") != std::string::npos) {
    throw SearchFailure{messages.message({zarel::Code::kSolverWeights, {}, {}})};
  }
  SearchFailure failure{solver_failure(clingo, end)};
  const std::vector<zarel::Diagnostic> errors = clingo_errors(end.errors, program);
  if (end.signalled || end.code == dl::kCannotRun || end.code == dl::kOutOfMemory) throw failure;
  const std::string version = dl::untested_version(clingo);
  if (!version.empty()) failure.message.help = version;
  if (end.errors.empty() && (end.code == dl::kInterrupted || end.code == dl::kSomeInterrupted)) {
    failure.message = {"solver-interrupted", {}, clingo + " was interrupted"};
  }
  if (errors.empty()) throw failure;
  failure.message = messages.message(errors.front());
  if (!version.empty()) failure.message.help = version;
  for (std::size_t i = 1; i < errors.size(); ++i)
    failure.further.push_back(messages.message(errors[i]));
  throw failure;
}

}    // namespace workbench
