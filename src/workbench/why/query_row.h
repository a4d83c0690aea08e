#pragma once
// query_row.h - a row of the program's query, as a body of it with values.

#include <optional>

#include "dl/explain/explained_answer.h"
#include "workbench/messages/reporter.h"
#include "workbench/why/atom_question.h"

namespace workbench {

struct QueryRow {
  dl::StatementNumber query = 0;
  dl::Binding start;      // the values that the question gives
  bool is_any = false;    // "?" alone was asked
};

// Reads the question's row. What is wrong with it is reported; nothing is returned then.
std::optional<QueryRow> query_row(const AtomQuestion& question, dl::ExplainedAnswer& answer,
                                  Reporter& reporter);

}    // namespace workbench
