#include "parser/program_builder.h"

#include <string>

#include "functions/function_terms.h"
#include "model/run.h"
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
  report(message == kSyntaxError ? Code::kSyntaxError : Code::kInputTooDeep, std::string(message));
}

}    // namespace zarel
