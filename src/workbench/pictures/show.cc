// show.cc - the command that draws what a program consists of.

#include <cstring>
#include <iostream>

#include "workbench/answers/output_file.h"
#include "workbench/checked_program.h"
#include "workbench/commands.h"
#include "workbench/pictures/dot_text.h"
#include "workbench/pictures/graphviz.h"
#include "workbench/pictures/program_graph.h"

namespace workbench {
namespace {

// Returns the error, as errno has it; 0 for none.
int write(const std::string& text, const std::string& path) {
  if (path.empty()) return (std::cout << text).flush() ? 0 : errno;
  OutputFile file(path);
  file.stream() << text;
  return file.put();
}

ExitStatus draw_to(const Destination& to, const Graph& graph, Reporter& reporter) {
  std::string text;
  if (to.form == "svg") {
    Drawing drawing = draw(graph, kDrawingSeconds);
    if (drawing.failure) {
      reporter.report(*drawing.failure);
      return ExitStatus::kSolverFailed;
    }
    if (!drawing.left_out.empty()) {
      reporter.note("too large to be drawn as a whole: " + drawing.left_out + " are left out");
    }
    text = std::move(drawing.svg);
  } else {
    text = dot_text(graph);
  }
  const int error = write(text, to.file);
  if (error == 0) return ExitStatus::kFound;
  std::string said("the picture cannot be written");
  if (!to.file.empty()) (said += " to ") += to.file;
  reporter.report({"output-failure", {}, (said += ": ") += std::strerror(error)});
  return ExitStatus::kOutputFailed;
}

}    // namespace

ExitStatus show(const CommandLine& line) {
  CheckedProgram checked(line);
  const std::unique_ptr<ProgramWatch> watch = watch_for(line.shown, checked.program());
  std::optional<ExitStatus> status = checked.prepare(zarel::PlainFacts::kLeftOut);
  for (const Destination& to : line.answers.destinations) {
    if (status) break;
    const auto missing = to.form == "svg" ? graphviz_missing() : std::nullopt;
    if (missing) checked.reporter().report(*missing);
    if (missing) status = ExitStatus::kSolverFailed;
  }
  for (const Destination& to : line.answers.destinations) {
    if (status) break;
    const ExitStatus drawn = draw_to(to, watch->graph(), checked.reporter());
    if (drawn != ExitStatus::kFound) status = drawn;
  }
  if (!status && !watch->left_out().empty()) checked.reporter().note(watch->left_out());
  checked.reporter().finish();
  return status.value_or(ExitStatus::kFound);
}

}    // namespace workbench
