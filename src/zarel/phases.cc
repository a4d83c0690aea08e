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

// The clause in a line. A variable that has lost its name, behind a query, ends a run where it is to
// be printed: what is found comes before that, without the clause.
std::string line_of(const CLAUSET& clause) {
  Text text;
  try {
    append_text(text, clause);
  } catch (const RunEnd&) {
    return {};
  }
  text += '\n';
  return text.str();
}

[[noreturn]] void end_for_unsafe(const CLAUSET& clause, const TERMT& variable) {
  const ClauseSource& source = clause.source();
  const std::optional<NameId> known = Variables().name_of(variable.index());
  const std::string_view name = known ? names().spelling(*known) : "";
  Diagnostic finding{Code::kUnsafeRule, {}, "Warning: suspected unsafe Rule."};
  finding.detail = line_of(clause);
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
    if (const auto variable = unsafe_variable(clause.head(), clause.body()))
      end_for_unsafe(clause, *variable);
  }
}

}    // namespace zarel
