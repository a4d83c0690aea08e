#include "driver/diagnostics.h"

#include <iostream>

#include "model/run.h"

namespace zarel {
namespace {

// "name: line 3: ", with more around it after "-v".
std::string shown_place(const ReportState& state, int line) {
  if (state.ParserStateInternal) return "Internal parser invocation: ";
  const FileTable& files = current_run().files;
  const bool is_verbose = state.OptionVerbosity != 0;
  std::string text;
  if (is_verbose) text.append(state.WhoAmI).append(" (");
  if (files.size() != 0 && !files.last().name.empty()) {
    text.append(files.last().name).append(": ");
  }
  text.append("line ").append(std::to_string(line));
  return text.append(is_verbose ? "): " : ": ");
}

}    // namespace

ReportState& report_state() {
  return current_run().parts.get<ReportState>();
}

std::ostream& standard_error() {
  std::ostream* const errors = report_state().errors;
  return errors != nullptr ? *errors : std::cerr;
}

void show_findings(std::ostream& output, std::ostream& errors) {
  Run& run = current_run();
  run.output = &output;
  run.findings.sink = show;
  report_state().errors = &errors;
}

void show_with_line(std::string_view message, int line) {
  std::string text = shown_place(report_state(), line);
  text.append(message).append(".\n");
  standard_error() << text << std::flush;
}

void show(const Diagnostic& finding) {
  switch (kind_of(finding.code).shown) {
    case Shown::kWithLastLine:
      report_state().ParserStateInternal = false;
      [[fallthrough]];
    case Shown::kWithLine:
      show_with_line(finding.text, finding.parser_line);
      standard_error() << finding.detail;
      break;
    case Shown::kAlone:
      standard_output() << finding.detail;
      standard_error() << finding.text << '\n';
      break;
    case Shown::kAsOutput:
      standard_output() << finding.text;
      break;
    case Shown::kNever:
      break;
  }
}

void SafeExit(int status) {
  end_run(status);
}

}    // namespace zarel
