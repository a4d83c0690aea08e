#include "parser/program_builder.h"

#include <algorithm>
#include <string>
#include <utility>

#include "functions/function_terms.h"
#include "model/run.h"
#include "parser/expected_words.h"
#include "parser/syntax_error.h"

namespace zarel {

void ProgramBuilder::start_file() {
  frame_spaces_.start_file();
  templates_.leave();
  end_statement();
  tree_.start_file(current_run().statement_observer);
}

void ProgramBuilder::end_statement() {
  terms_.clear();
  aggregates_.clear();
  frames_.clear();
  bodies_.clear();
  clauses_.clear();
  invocations_.clear();
  if (hasFunctionTerm()) FTermTable().clear();
  tree_.end_statement();
}

// What is left of a template body with an error in it is read as statements of the program.
void ProgramBuilder::skipped_statement() {
  ++current_run().findings.parser_errors;
  templates_.leave();
  end_statement();
}

void ProgramBuilder::parser_failed(std::string_view message) const {
  report(Code::kInputTooDeep, std::string(message));
}

void ProgramBuilder::refuse(const SourceRange& token, std::vector<std::string_view> expected) {
  expected_ = std::move(expected);
  refused_ = token;
  read_last_ = *work_.reading;
}

// A query may end where its question mark could stand: of the beginning of a statement the parser
// does not know yet whether it is a head or a query.
bool ProgramBuilder::could_end_statement() const {
  const auto is_end = [](std::string_view word) {
    return word == kFullStop || word == kQuestionMark;
  };
  return refused_ && std::any_of(expected_.begin(), expected_.end(), is_end);
}

void ProgramBuilder::report_refusal(const SourceRange& statement, bool lacks_full_stop) {
  if (!refused_) return;
  Refusal refusal{place_in_file(statement), std::move(expected_), lacks_full_stop};
  report({Code::kSyntaxError,
          place_in_file(*refused_),
          std::string(kSyntaxError),
          {},
          {},
          0,
          std::move(refusal)});
  refused_.reset();
}

Place ProgramBuilder::place_in_file(const SourceRange& range) const {
  return place_of(SourceSpan{work_.span.file, range});
}

}    // namespace zarel
