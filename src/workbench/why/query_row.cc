#include "workbench/why/query_row.h"

#include <algorithm>
#include <string>

#include "workbench/messages/words.h"

namespace workbench {

std::optional<QueryRow> query_row(const AtomQuestion& question, dl::ExplainedAnswer& answer,
                                  Reporter& reporter) {
  const auto statements = answer.store().statements();
  const auto query =
      std::ranges::find(statements, dl::StatementKind::kQuery, &dl::StoredStatement::kind);
  if (query == statements.end()) {
    reporter.report(
        {"no-atom", {}, "the program has no query", {}, {}, "ask about an atom, such as p(a)"});
    return std::nullopt;
  }
  QueryRow row{static_cast<dl::StatementNumber>(query - statements.begin()),
               dl::Binding(query->variables.size(), dl::kNoTerm), question.row.empty()};
  // The values of a row are those of the named variables, in their order.
  std::size_t value = 0;
  for (dl::VariableId id = 0; id < query->variables.size(); ++id) {
    if (query->variables[id] == "_" || query->is_outer[id] == 0) continue;
    if (value < question.row.size())
      row.start[id] = dl::read_ground_term(question.row[value], answer.terms());
    ++value;
  }
  if (question.row.empty() || value == question.row.size()) return row;
  reporter.report({"no-atom",
                   {},
                   "a row of the query has " + counted(value, "value") + ", not " +
                       std::to_string(question.row.size()),
                   {},
                   {},
                   "write them as zrl prints them: ?(a, b)"});
  return std::nullopt;
}

}    // namespace workbench
