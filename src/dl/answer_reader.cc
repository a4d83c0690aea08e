#include "dl/answer_reader.h"

#include <utility>

#include "dl/failure.h"
#include "dl/query_answers.h"

namespace dl {

void AnswerReader::read_line(std::string_view line) {
  const LineKind kind = is_inside_ ? LineKind::kAnswerSet : kind_of_line(line);
  if (kind == LineKind::kAnswerSet) {
    read_answer(line);
  } else if (kind != LineKind::kCosts) {
    if (kind != LineKind::kOther) status_ = kind;
  } else {
    note_costs(line);
  }
}

// A search that goes on for ever finds the same costs again and again: see Note [several levels].
void AnswerReader::note_costs(std::string_view line) {
  constexpr std::size_t kForEver = 10'000;
  if (line != costs_line_) costs_lines_ = 0;
  costs_line_ = line;
  if (++costs_lines_ == kForEver && !parts_.query) {
    throw Failure{{zarel::Code::kSolverIncomplete,
                   {},
                   "clingo finds the same costs again and again, which is a fault of its version; "
                   "clingo 5.7 or another configuration may find the best"}};
  }
  if (!parts_.variable_levels) {
    // Costs that come before the next answer set are its own: only optimal ones are printed, which
    // have the same, or the one that was best so far.
    if (!parts_.query) costs_ = read_costs(line, parts_);
  }
}

// Note [held back]
// While it optimizes, clingo prints the optimal answer sets only; but when it is interrupted, it
// prints the best one so far, too. So an answer set waits until the next one, or the final line,
// proves it optimal; or until a cut search has nothing better, which is said.
void AnswerReader::read_answer(std::string_view line) {
  if (parts_.query) {
    consequences_ = line;
    has_consequences_ = true;
    return;
  }
  if (parts_.weak_constraints.empty()) {
    read_piece(line);
    return end_answer();
  }
  costs_lines_ = 0;
  print_held();
  read_answer_set(line, parts_, answer_);
  has_held_ = true;
}

void AnswerReader::read_piece(std::string_view piece) {
  answer_.text.clear();
  if (!std::exchange(is_inside_, true)) {
    inside_begin_ = text_.size();
    begin_answer_set(answer_);
  }
  add_atoms(piece, parts_, answer_);
  text_ += answer_.text;
}

void AnswerReader::end_answer() {
  check_fault(answer_.fault);
  text_ += "}\n";
  is_inside_ = false;
}

std::string_view AnswerReader::whole_answers() const {
  return std::string_view(text_).substr(0, is_inside_ ? inside_begin_ : text_.size());
}

void AnswerReader::drop_whole_answers() {
  text_.erase(0, whole_answers().size());
  inside_begin_ = 0;
}

void AnswerReader::print_held() {
  if (!std::exchange(has_held_, false)) return;
  check_fault(answer_.fault);
  append_best_model(text_, answer_, parts_.variable_levels ? answer_.costs : costs_);
}

void AnswerReader::check_fault(std::optional<std::size_t> fault) const {
  if (fault) throw Failure{diagnostic_of(parts_.faults.at(*fault), program_.sources)};
}

bool AnswerReader::has_result() const {
  return status_ == LineKind::kSatisfiable || status_ == LineKind::kUnsatisfiable ||
         status_ == LineKind::kOptimumFound;
}

bool AnswerReader::finish(Search search, const zarel::DiagnosticSink& note) {
  const bool is_complete = search == Search::kComplete;
  const bool is_optimal = parts_.weak_constraints.empty() || status_ == LineKind::kOptimumFound;
  const bool is_unproven = has_held_ && !is_complete && !is_optimal;
  print_held();
  if (parts_.query && (is_complete || (is_optimal && has_brave_answer()))) print_query(note);
  return is_unproven;
}

// Whether a search that was cut has shown something that holds; what it has not found yet may hold,
// too.
bool AnswerReader::has_brave_answer() const {
  return reasoning_ == Reasoning::kBrave && has_consequences_ &&
         (!parts_.query->variables.empty() || query_holds(consequences_));
}

void AnswerReader::print_query(const zarel::DiagnosticSink& note) {
  const bool holds_in_all = reasoning_ == Reasoning::kCautious;
  if (has_consequences_) {
    check_fault(query_fault(consequences_, holds_in_all, parts_.faults.size()));
  } else {
    zarel::Diagnostic none{zarel::Code::kNoAnswerSet, program_.sources.place(parts_.query->range),
                           "note: the program has no answer set"};
    none.parser_line = static_cast<int>(parts_.query->line);
    note(std::move(none));
  }
  if (!parts_.query->variables.empty()) {
    text_ += query_text(query_rows(consequences_));
  } else {
    text_ += query_holds(consequences_) ? "true\n" : "false\n";
  }
}

}    // namespace dl
