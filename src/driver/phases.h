#pragma once
// phases.h - the phases of the rewriting, in the order in which a run goes through them; and all of
// them as one call.

#include <iosfwd>
#include <string>
#include <vector>

#include "base/place.h"

namespace zarel {

// Reads every file into one program, and then the library of a semantics: "constrained", a file's
// name, or none. A file that cannot be opened is reported and left out. Ends
// the run with status 1 when an error was counted.
void read_program(const std::vector<std::string>& files, const std::string& semantics,
                  std::ostream& verbatim);

// Checks all template invocations, ending the run with status 1 at the first fault, and expands
// them.
void expand_templates(std::ostream& legend);

// Ends the run with status 1 at the first rule that is not safe, shown on standard error.
void check_safety();

// The rewriting for tests, fuzzers and other programs: no shell, no fixed files, no end of the
// process.
struct RewriteOptions {
  bool has_arity_check = false;
  bool has_safety_check = false;
  std::string semantics = {};    // as read_program takes it
  bool has_linked_templates = false;
};
struct RewrittenProgram {
  int status = 0;          // the exit status that a run would have ended with
  std::string clauses;     // clauses and queries, a line each; empty when the status is not 0
  std::string verbatim;    // the verbatim sections
  std::string legend;      // of template invocations
  std::string output;      // what reading said on standard output
  std::string messages;    // and on standard error
  std::vector<SourceLocation> places;    // of the clauses that are not generated, in their order
};

// Rewrites the program of these files, in a run of its own.
RewrittenProgram rewrite(const std::vector<std::string>& files, const RewriteOptions& options);

}    // namespace zarel
