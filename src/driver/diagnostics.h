#pragma once
// diagnostics.h - the one reporter of the program, the counters it shows, and the ways in which a
// run ends. Everything here may be used from every folder; it uses nothing of them.

#include <iosfwd>
#include <string>
#include <string_view>

#include "base/diagnostic.h"

namespace zarel {

// What yyerror puts in front of a message, and what it has been told so far.
struct ReportState {
  std::string WhoAmI;                 // the program's name, as the user called it
  int OptionVerbosity = 0;            // 1 after "-v"
  bool ParserStateInternal = true;    // false while input files are parsed
  std::string parser_file;            // the file being parsed, the last one afterwards
  int parser_line = 0;                // the line that messages show; the scanners advance it
  int parser_errors = 0;              // errors that keep the program from being solved
  std::ostream* output = nullptr;     // where results go; null: std::cout
  std::ostream* errors = nullptr;     // where messages go; null: std::cerr
};

ReportState& report_state();                          // of the current run: see Note [current run]
ReportState* set_report_state(ReportState* state);    // from now on; returns the one before

std::ostream& standard_output();    // where results go in this run
std::ostream& standard_error();     // where messages go in this run

// Writes one line, the place (or "Internal parser invocation: " outside parsing), the message and a
// full stop, to standard_error(). Does not count the error. Returns 0.
int yyerror(std::string_view message);

// yyerror, and one more in parser_errors: the run ends after parsing.
void report_counted_error(std::string_view message);

// Ends the run with the given exit status. See Note [ends as exceptions].
[[noreturn]] void SafeExit(int status);

// Reports a broken invariant in two lines and ends the run with status 99.
[[noreturn]] void InternalError(std::string_view text);

}    // namespace zarel
