#include "zarel/phases.h"

#include <optional>
#include <utility>

#include "model/printer.h"
#include "model/run.h"
#include "model/safety.h"
#include "parser/written_clause.h"
#include "templates/checks.h"
#include "templates/inflation.h"

namespace zarel {
namespace {

// Where invocations are written that led to the clause, from the inside outwards.
void add_invocations(std::vector<Note>& notes, const ClauseSource& source) {
  const OriginTable& origins = current_run().origins;
  for (const Origin* origin = &origins[source.origin]; origin->template_name;
       origin = &origins[origin->invocation.origin]) {
    std::string text = "expanded for this use of the template ";
    notes.push_back({place_of(origin->invocation.location),
                     text.append(names().spelling(*origin->template_name))});
  }
}

[[noreturn]] void end_for_unsafe(const CLAUSET& clause, const TERMT& variable) {
  const ClauseSource& source = clause.source();
  const std::string_view name = getVariableName(variable.index());
  Diagnostic finding{Code::kUnsafeRule, {}, "Warning: suspected unsafe Rule."};
  Text text;
  append_text(text, clause);
  text += '\n';
  finding.detail = text.str();
  const WrittenClause written = written_clause(source.location, name);
  finding.place = place_of(written.clause);
  if (written.word) {
    finding.notes.push_back(
        {place_of(*written.word), std::string(name).append(" is bound by no positive literal")});
  }
  add_invocations(finding.notes, source);
  report_and_end(std::move(finding));
}

}    // namespace

void expand_templates(std::ostream& legend) {
  if (!control_of_template()) end_run(1);
  Inflation(legend);
}

void check_safety() {
  for (const CLAUSET& clause : CLAUSES()) {
    if (clause.kind() != CLAUSET::Kind::kRule) continue;
    if (const auto variable = unsafe_variable(clause.rule())) end_for_unsafe(clause, *variable);
  }
}

}    // namespace zarel
