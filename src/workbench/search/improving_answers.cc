#include "workbench/search/improving_answers.h"

#include <utility>

#include "dl/failure.h"
#include "dl/model_reader.h"

namespace workbench {

std::string ImprovingAnswers::read_line(std::string_view line) {
  const dl::LineKind kind = dl::kind_of_line(line);
  if (!has_best_ && kind == dl::LineKind::kAnswerSet) return take_answer_set(line);
  if (!has_best_ && kind == dl::LineKind::kCosts) return take_costs(line);
  if (kind != dl::LineKind::kOther) finish();
  best_.read_line(line);
  return {};
}

// Without a weak constraint that applies, there are no costs at all.
std::string ImprovingAnswers::take_answer_set(std::string_view line) {
  if (next_) {
    finish();
    best_.read_line(line);
  } else {
    next_ = line;
  }
  return {};
}

std::string ImprovingAnswers::take_costs(std::string_view line) {
  if (!next_) return {};
  answer_set_ = *std::exchange(next_, std::nullopt);
  const bool is_better = costs_ != line;
  costs_ = line;
  if (is_better) return better();
  finish();
  return {};
}

// One that cannot be trusted is no reason to end the search: a best one may be.
std::string ImprovingAnswers::better() const {
  dl::AnswerReader reader(program_, dl::Reasoning::kCautious);
  try {
    reader.read_line(answer_set_);
    reader.read_line(costs_);
    reader.finish(dl::Search::kCut, [](const zarel::Diagnostic&) {});
  } catch (const dl::Failure&) {
    return {};
  }
  return std::move(reader.text());
}

// An answer set whose costs did not come any more is none.
void ImprovingAnswers::finish() {
  if (std::exchange(has_best_, true)) return;
  if (!costs_.empty()) {
    best_.read_line(answer_set_);
    best_.read_line(costs_);
  } else if (next_) {
    best_.read_line(*next_);
  }
}

}    // namespace workbench
