#include "driver/rewriting.h"

#include <sstream>

#include "driver/diagnostics.h"
#include "model/run.h"
#include "zarel/input_reader.h"
#include "zarel/phases.h"
#include "zarel/program_text.h"

namespace zarel {
namespace {

void read_file(InputReader& reader, const std::string& path, const std::string& shown_name) {
  reader.read_file(path, shown_name, [&path] {
    if (report_state().OptionVerbosity != 0) standard_output() << "Reading \"" << path << "\"\n";
  });
}

// The one place where rules of a semantics join the program, behind the user's own.
void read_semantics(InputReader& reader, const std::string& name) {
  if (name.empty()) return;
  read_file(reader, name == "constrained" ? "zareltests/constrainedSemantic.zrf" : name, name);
}

}    // namespace

void read_program(const std::vector<std::string>& files, const std::string& semantics,
                  std::ostream& verbatim) {
  report_state().ParserStateInternal = false;
  InputReader reader(verbatim);
  for (const std::string& path : files) read_file(reader, path, path);
  read_semantics(reader, semantics);
  report_state().ParserStateInternal = true;
  if (current_run().findings.parser_errors == 0) return;
  standard_error() << "Aborting due to parser errors.\n";
  SafeExit(1);
}

RewrittenProgram rewrite(const std::vector<std::string>& files, const RewriteOptions& options) {
  std::ostringstream output;
  std::ostringstream messages;
  std::ostringstream verbatim;
  std::ostringstream legend;
  RewrittenProgram result;
  Run run(options.run);
  const Run::Scope scope(run);
  show_findings(output, messages);
  try {
    read_program(files, options.semantics, verbatim);
    expand_templates(legend);
    if (options.run.OptionSafetyCheck) check_safety();
    std::ostringstream clauses;
    write_clauses(clauses, CLAUSES());
    write_queries(clauses);
    result.clauses = std::move(clauses).str();
    for (const CLAUSET& clause : written_clauses()) result.sources.push_back(clause.source());
  } catch (const RunEnd& end) {
    result.status = end.status;
  }
  result.verbatim = std::move(verbatim).str();
  result.legend = std::move(legend).str();
  result.output = std::move(output).str();
  result.messages = std::move(messages).str();
  return result;
}

}    // namespace zarel
