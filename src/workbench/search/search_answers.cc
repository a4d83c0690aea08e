#include "workbench/search/search_answers.h"

namespace workbench {

SearchAnswers::SearchAnswers(const dl::Translated& program, dl::Reasoning reasoning,
                             AnswerPrinter& printer, SearchResult& result)
    : printer_(printer), result_(result), reader_(program, reasoning) {
  const dl::ProgramParts& parts = program.parts;
  result.asked.has_query = parts.query.has_value();
  result.asked.is_ground = parts.query && parts.query->variables.empty();
  result.asked.is_brave = reasoning == dl::Reasoning::kBrave;
  result.asked.has_weak_constraints = !parts.weak_constraints.empty();
  if (parts.query) printer.expect_query(parts.query->variables);
}

bool SearchAnswers::print() {
  const bool goes_on =
      printer_.print(reader_.text()) && printer_.settle() && !printer_.has_enough();
  reader_.text().clear();
  return goes_on;
}

void SearchAnswers::finish() {
  Judgement& judgement = result_.judgement;
  const auto note = [&judgement](const zarel::Diagnostic& found) {
    if (found.code == zarel::Code::kNoAnswerSet) judgement.has_no_answer_set = true;
  };
  const bool is_complete = judgement.end != SearchEnd::kCut;
  judgement.is_unproven =
      reader_.finish(is_complete ? dl::Search::kComplete : dl::Search::kCut, note);
  // Whether the word is a truth value is not known to who reads it, when the query is verbatim.
  if (result_.asked.is_ground && !reader_.text().empty()) {
    judgement.holds = reader_.text() == "true\n";
  }
  print();
}

}    // namespace workbench
