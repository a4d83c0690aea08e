#pragma once
// diagnostics.h - the established texts of what is wrong, and the ways in which the driver ends.

#include <iosfwd>
#include <string>
#include <string_view>

#include "base/diagnostic.h"
#include "model/report.h"

namespace zarel {

// What yyerror puts in front of a message, and where messages go.
struct ReportState {
  std::string WhoAmI;                 // the program's name, as the user called it
  int OptionVerbosity = 0;            // 1 after "-v"
  bool ParserStateInternal = true;    // false while input files are parsed
  std::ostream* errors = nullptr;     // null: std::cerr
};

ReportState& report_state();    // of the current run
std::ostream& standard_error();

// Prints the current run's results and findings as they come: results on `output`, messages on
// `errors`.
void show_findings(std::ostream& output, std::ostream& errors);

// The finding as the established command line shows it.
void show(const Diagnostic& finding);

// Writes one line, the place (or "Internal parser invocation: " outside parsing), the message and a
// full stop, to standard_error().
void show_with_line(std::string_view message, int line);

// Ends the run with the given exit status. See Note [ends as exceptions].
[[noreturn]] void SafeExit(int status);

}    // namespace zarel
