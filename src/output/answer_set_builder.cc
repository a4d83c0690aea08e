#include "output/answer_set_builder.h"

#include "model/generic_encoding.h"
#include "model/namespaces.h"
#include "output/display_settings.h"
#include "output/filters.h"
#include "output/flat_atom.h"
#include "output/frame_molecules.h"
#include "output/framespace_display.h"

namespace zarel {

std::string AnswerSetBuilder::take_back(TextRange token) {
  std::string text(text_.view(token));
  text_.drop_last(token);
  return text;
}

void AnswerSetBuilder::begin_answer_set() {
  item_ = '{';
  has_atoms_ = false;
}

// Everything in front of an atom that is shown.
void AnswerSetBuilder::begin_atom() {
  if (has_atoms_) item_ += ", ";
  has_atoms_ = true;
  if (negativeAtom_) item_ += '-';
}

void AnswerSetBuilder::add_short_atom(TextRange word, TextRange relation, TextRange space,
                                      TextRange close) {
  const DisplaySettings& settings = display_settings();
  const std::string_view name = text_.view(relation);
  if (passFilters(settings, name, negativeAtom_)) {
    begin_atom();
    item_.append(name).append(getFramespace(settings, text_.view(space)));
  }
  text_.drop_last({word.begin, close.end});
}

void AnswerSetBuilder::add_atom(const GenericAtom& atom) {
  const bool is_frame = text_.view(atom.space).find(kFrameMarker) != std::string_view::npos;
  if (is_frame) {
    add_frame_atom(atom);
  } else {
    add_plain_atom(atom);
  }
  text_.drop_last({atom.word.begin, atom.close.end});
}

void AnswerSetBuilder::add_flat_atom(TextRange atom) {
  const FlatAtom ends = split_flat_atom(text_.view(atom));
  const auto range = [atom](std::size_t begin, std::size_t end) {
    return TextRange{atom.begin + begin, atom.begin + end};
  };
  const TextRange word = range(0, ends.word_end);
  const TextRange relation = range(ends.word_end + 1, ends.first_end);
  const TextRange space = range(ends.first_end + 1, ends.second_end);
  const TextRange close{atom.end - 1, atom.end};
  if (space.end == close.begin) return add_short_atom(word, relation, space, close);
  add_atom({word, relation, space, {space.end + 1, close.begin}, close});
}

void AnswerSetBuilder::add_plain_atom(const GenericAtom& atom) {
  const DisplaySettings& settings = display_settings();
  const std::string_view space = text_.view(atom.space);
  const std::string_view name = text_.view(atom.relation);
  if (space == kServiceSpace || !passFilters(settings, name, negativeAtom_)) return;
  begin_atom();
  const std::string_view arguments = text_.view(atom.arguments);
  item_.append(name).append(1, '(');
  if (settings.address && prefix_was_used()) {
    item_ += returnAddress(vectorName(), arguments);
  } else {
    item_ += arguments;
  }
  item_.append(1, ')').append(getFramespace(settings, space));
}

void AnswerSetBuilder::add_frame_atom(const GenericAtom& atom) {
  FrameAtom frame{text_.view(atom.relation), text_.view(atom.arguments), text_.view(atom.space),
                  negativeAtom_, false};
  if (frame.relation == kValueOf) {
    frame.noValue = text_.view(atom.word) == kValuelessPredicate;
  } else {
    begin_atom();    // even when the relation is none of ours, and gives an empty text
  }
  printToNestedFrameSyntax(frame, frameMap_, item_);
}

void AnswerSetBuilder::end_answer_set() {
  const std::size_t atoms_end = item_.size();
  const bool has_text = atoms_end > 1;    // more than the brace
  frameMap_.stringMolecules(item_);
  if (has_text && item_.size() > atoms_end) item_.insert(atoms_end, ", ");
  frameMap_.clear();
  item_ += '}';
}

void AnswerSetBuilder::print_answer_set() {
  item_ += '\n';
  finish_item(text_.end());
}

void AnswerSetBuilder::print_terms(TextRange terms) {
  item_ = text_.view(terms);
  item_ += '\n';
  finish_item(terms.end);
}

void AnswerSetBuilder::print_best_model(const BestModel& words) {
  const auto view = [this](TextRange range) { return text_.view(range); };
  std::string front(view(words.title));
  front.append(" ").append(view(words.subject)).append(": ");
  item_.insert(0, front);
  item_.append("\n").append(view(words.cost));
  item_.append(" ([").append(view(words.weight_name));
  item_.append(":").append(view(words.level_name));
  item_.append("]): <[").append(view(words.weight));
  item_.append(":").append(view(words.level)).append("]>\n");
  finish_item(text_.end());
}

// A list of terms is complete only when the token behind it was read, whose text is kept.
void AnswerSetBuilder::finish_item(std::size_t end) {
  writer_.add(item_);
  item_.clear();
  text_.drop_in_front_of(end);
}

}    // namespace zarel
