#include "driver/diagnostics.h"

#include <iostream>
#include <utility>

namespace zarel {
namespace {

constinit thread_local ReportState* state_of_run = nullptr;

}    // namespace

ReportState& report_state() {
  return *state_of_run;
}

ReportState* set_report_state(ReportState* state) {
  return std::exchange(state_of_run, state);
}

std::ostream& standard_output() {
  std::ostream* const output = report_state().output;
  return output != nullptr ? *output : std::cout;
}

std::ostream& standard_error() {
  std::ostream* const errors = report_state().errors;
  return errors != nullptr ? *errors : std::cerr;
}

int yyerror(std::string_view message) {
  const ReportState& state = report_state();
  const bool is_verbose = state.OptionVerbosity != 0;
  std::string line;
  if (state.ParserStateInternal) {
    line = "Internal parser invocation: ";
  } else {
    if (is_verbose) line += state.WhoAmI + " (";
    if (!state.parser_file.empty()) line += state.parser_file + ": ";
    line += "line " + std::to_string(state.parser_line);
    if (is_verbose) line += ')';
    line += ": ";
  }
  line.append(message).append(".\n");
  standard_error() << line << std::flush;
  return 0;
}

void report_counted_error(std::string_view message) {
  yyerror(message);
  ++report_state().parser_errors;
}

void SafeExit(int status) {
  throw RunEnd{status};
}

void InternalError(std::string_view text) {
  standard_error()
      << "\nAn internal error occurred (" << text << ").\n"
      << "Please report it to the maintainers of Zarel, with the program that led to it.\n"
      << std::flush;
  SafeExit(99);
}

}    // namespace zarel
