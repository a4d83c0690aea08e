#include "driver/phases.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "driver/diagnostics.h"
#include "driver/input_file.h"
#include "driver/program_text.h"
#include "frames/frame.h"
#include "frames/frame_encoding.h"
#include "model/generic_atoms.h"
#include "model/predicate_table.h"
#include "model/printer.h"
#include "model/run.h"
#include "model/safety.h"
#include "parser/parse.h"
#include "parser/program_builder.h"
#include "templates/checks.h"
#include "templates/inflation.h"
#include "templates/linking.h"

namespace zarel {
namespace {

// Room for about as many clauses as the file can hold. Growing step by step, their list would touch
// twice the memory.
void make_room_for_clauses(const std::string& path) {
  constexpr std::uintmax_t kShortClause = 16;    // bytes of text
  constexpr std::uintmax_t kMost = 4'000'000;    // clauses; memory that is not touched costs little
  std::error_code no_size;
  const std::uintmax_t size = std::filesystem::file_size(path, no_size);
  if (no_size) return;
  const std::size_t wanted = CLAUSES().size() + std::min(size / kShortClause, kMost);
  const std::size_t capacity = CLAUSES().capacity();
  if (wanted > capacity) CLAUSES().reserve(std::max(wanted, 2 * capacity));
}

// Messages name the file as `shown_name`.
void read_file(const std::string& path, const std::string& shown_name, ProgramBuilder& builder,
               std::ostream& verbatim) {
  ReportState& report = report_state();
  report.parser_file = shown_name;
  report.parser_line = 0;
  const InputFile file(path);
  if (!file.is_open()) {
    yyerror("can't open input");
    return;
  }
  if (report.OptionVerbosity != 0) standard_output() << "Reading \"" << path << "\"\n";
  report.parser_line = 1;
  make_room_for_clauses(path);
  parse_file(file.handle(), builder, verbatim);
}

// The one place where rules of a semantics join the program, behind the user's own.
void read_semantics(const std::string& name, ProgramBuilder& builder, std::ostream& verbatim) {
  if (name.empty()) return;
  const std::string path = name == "constrained" ? "zareltests/constrainedSemantic.zrf" : name;
  read_file(path, name, builder, verbatim);
}

}    // namespace

void read_program(const std::vector<std::string>& files, const std::string& semantics,
                  std::ostream& verbatim) {
  ReportState& report = report_state();
  report.ParserStateInternal = false;
  ProgramBuilder builder;
  for (const std::string& path : files) read_file(path, path, builder, verbatim);
  read_semantics(semantics, builder, verbatim);
  report.ParserStateInternal = true;
  if (report.parser_errors == 0) return;
  standard_error() << "Aborting due to parser errors.\n";
  SafeExit(1);
}

void expand_templates(std::ostream& legend) {
  if (!control_of_template()) SafeExit(1);
  Inflation(legend);
}

void check_safety() {
  for (const CLAUSET& clause : CLAUSES()) {
    if (clause.kind() != CLAUSET::Kind::kRule || clause.rule().isSafe()) continue;
    report_state().ParserStateInternal = false;    // the message shows the last place that was read
    yyerror("Warning: suspected unsafe Rule.");
    standard_error() << clause << '\n';
    SafeExit(1);
  }
}

RewrittenProgram rewrite(const std::vector<std::string>& files, const RewriteOptions& options) {
  std::ostringstream output;
  std::ostringstream messages;
  std::ostringstream verbatim;
  std::ostringstream legend;
  RewrittenProgram result;
  Run run({options.has_arity_check, options.has_linked_templates});
  const Run::Scope scope(run);
  run.report.output = &output;
  run.report.errors = &messages;
  try {
    read_program(files, options.semantics, verbatim);
    expand_templates(legend);
    if (options.has_safety_check) check_safety();
    std::ostringstream clauses;
    write_clauses(clauses, CLAUSES());
    write_queries(clauses);
    result.clauses = std::move(clauses).str();
    for (const CLAUSET& clause : written_clauses()) result.places.push_back(clause.location());
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
