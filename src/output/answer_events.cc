#include "output/answer_events.h"

#include <optional>

#include "base/characters.h"
#include "model/generic_encoding.h"
#include "output/flat_atom.h"
#include "output/frame_molecules.h"

namespace zarel {
namespace {

std::string_view leading_digits(std::string_view text) {
  std::size_t end = 0;
  while (end < text.size() && is_digit(text[end])) ++end;
  return text.substr(0, end);
}

bool drop_front(std::string_view& text, std::string_view front) {
  if (!text.starts_with(front)) return false;
  text.remove_prefix(front.size());
  return true;
}

// "[weight:level]" in its quotes, as the solver writes the costs of lower levels.
std::optional<AnswerCost> further_cost(std::string_view text) {
  AnswerCost cost;
  if (!drop_front(text, "\"[")) return std::nullopt;
  cost.weight = leading_digits(text);
  text.remove_prefix(cost.weight.size());
  if (!drop_front(text, ":")) return std::nullopt;
  cost.level = leading_digits(text);
  text.remove_prefix(cost.level.size());
  if (text != "]\"" || cost.weight.empty() || cost.level.empty()) return std::nullopt;
  return cost;
}

}    // namespace

std::string AnswerEvents::take_back(TextRange token) {
  std::string text(text_.view(token));
  text_.drop_last(token);
  return text;
}

void AnswerEvents::set_subject(TextRange word) {
  subject_ = word;
  begins_best_model_ = true;
}

void AnswerEvents::begin_answer_set() {
  AnswerSetStart start;
  if (begins_best_model_) start = {text_.view(title_), text_.view(subject_)};
  begins_best_model_ = false;
  sink_.begin_answer_set(start);
}

void AnswerEvents::short_atom(TextRange word, TextRange relation, TextRange space,
                              TextRange close) {
  sink_.atom({term(relation), text_.view(space), negativeAtom_, {}});
  text_.drop_last({word.begin, close.end});
}

void AnswerEvents::atom(const GenericAtom& parts) {
  const AnswerAtom atom{term(parts.relation), text_.view(parts.space), negativeAtom_,
                        AnswerTerms(text_.view(parts.arguments), options_.namespaces)};
  if (atom.space.find(kFrameMarker) == std::string_view::npos) {
    sink_.atom(atom);
  } else {
    const bool has_a_3 = text_.view(parts.word) == kValuelessPredicate;
    printToNestedFrameSyntax({atom, has_a_3 && atom.relation.text() == kValueOf}, frameMap_, sink_);
  }
  text_.drop_last({parts.word.begin, parts.close.end});
}

void AnswerEvents::flat_atom(TextRange whole) {
  const FlatAtom ends = split_flat_atom(text_.view(whole));
  const auto range = [whole](std::size_t begin, std::size_t end) {
    return TextRange{whole.begin + begin, whole.begin + end};
  };
  const TextRange word = range(0, ends.word_end);
  const TextRange relation = range(ends.word_end + 1, ends.first_end);
  const TextRange space = range(ends.first_end + 1, ends.second_end);
  const TextRange close{whole.end - 1, whole.end};
  if (space.end == close.begin) return short_atom(word, relation, space, close);
  atom({word, relation, space, {space.end + 1, close.begin}, close});
}

void AnswerEvents::end_answer_set() {
  if (!frameMap_.is_empty()) sink_.objects(frameMap_);
  frameMap_.clear();
  sink_.end_answer_set();
}

void AnswerEvents::finish_answer_set() {
  expects_costs_ = false;
  text_.drop_in_front_of(text_.end());
}

void AnswerEvents::finish_best_model(const CostWords& words) {
  sink_.cost({text_.view(words.weight), text_.view(words.level), text_.view(words.title),
              text_.view(words.weight_name), text_.view(words.level_name)});
  expects_costs_ = true;
  text_.drop_in_front_of(text_.end());
}

// A list of terms is complete only when the token behind it was read, whose text is kept.
void AnswerEvents::row(TextRange terms) {
  tell_of_row(text_.view(terms));
  text_.drop_in_front_of(terms.end);
}

void AnswerEvents::tell_of_row(std::string_view terms) {
  if (expects_costs_) {
    if (const auto cost = further_cost(terms)) return sink_.cost(*cost);
    expects_costs_ = false;
  }
  if (options_.query == QueryForm::kGround && (terms == "true" || terms == "false")) {
    return sink_.truth_value(terms == "true");
  }
  sink_.query_row(AnswerTerms(terms, options_.namespaces));
}

}    // namespace zarel
