#include "dl/explain/explained_answer.h"

#include <utility>

#include "dl/failure.h"

namespace dl {

ExplainedAnswer::ExplainedAnswer(Program program, const Options& options)
    : program_(std::move(program)), options_(options) {
  if (program_.mistake) throw Failure{*program_.mistake};
}

Program ExplainedAnswer::with(const std::string& further) const {
  Program program = program_;
  if (!further.empty()) survey_text(program, "question", further);
  return program;
}

const FoundAnswer& ExplainedAnswer::find(const AnswerChoice& choice) {
  std::string demands;
  for (const std::string& demand : choice.demands) {
    // A literal that holds is one whose contrary is forbidden.
    if (demand.starts_with("not ")) {
      ((demands += ":- ") += std::string_view(demand).substr(4)) += ".\n";
    } else {
      ((demands += ":- not ") += demand) += ".\n";
    }
  }
  found_ = search_one(with(demands), options_, choice.number);
  const bool is_found =
      found_.outcome == SearchOutcome::kFound || found_.outcome == SearchOutcome::kUnproven;
  if (!is_found) return found_;
  store_.reset();
  index_ = std::make_unique<AnswerIndex>(terms_);
  add_answer_set(found_.text, terms_, *index_);
  found_.text = std::string();    // it may be large
  store_ = std::make_unique<StatementStore>(program_, options_.bound, terms_, *index_);
  return found_;
}

std::string ExplainedAnswer::text() const {
  std::string text("{");
  for (AtomNumber atom = 0; atom < index_->size(); ++atom) {
    if (atom != 0) text += ", ";
    index_->append(text, atom);
  }
  return text += '}';
}

void ExplainedAnswer::look_at_program() {
  store_.reset();
  index_ = std::make_unique<AnswerIndex>(terms_);
  store_ = std::make_unique<StatementStore>(program_, options_.bound, terms_, *index_);
}

}    // namespace dl
