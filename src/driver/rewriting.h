#pragma once
// rewriting.h - the reading of the input, and all of the rewriting as one call, with the
// established texts.

#include <iosfwd>
#include <string>
#include <vector>

#include "base/line_map.h"
#include "model/origin.h"
#include "model/run.h"

namespace zarel {

// Reads every file into one program, and then the library of a semantics: "constrained", a file's
// name, or none. A file that cannot be opened is reported and left out. Ends the run with status 1
// when an error was counted.
void read_program(const std::vector<std::string>& files, const std::string& semantics,
                  std::ostream& verbatim);

struct RewriteOptions {
  RunOptions run = {};
  std::string semantics = {};    // as read_program takes it
};
struct RewrittenProgram {
  int status = 0;          // the exit status that a run would have ended with
  std::string clauses;     // clauses and queries, a line each; empty when the status is not 0
  std::string verbatim;    // the verbatim sections
  std::string legend;      // of template invocations
  std::string output;      // what reading said on standard output
  std::string messages;    // and on standard error
  std::vector<ClauseSource> sources;    // of the clauses that no template made, in their order
};

// Rewrites the program of these files, in a run of its own, without a solver, fixed files, or an
// end of the process.
RewrittenProgram rewrite(const std::vector<std::string>& files, const RewriteOptions& options);

}    // namespace zarel
