#pragma once
// answer_events.h - what the grammar of the solver's output calls: phrases become events of a sink.

#include <string>
#include <string_view>

#include "output/answer_set_reader.h"
#include "output/answer_sink.h"
#include "output/frame_map.h"
#include "output/item_text.h"

namespace zarel {

// The parts of an atom of the generic encoding: word(relation, space, arguments).
struct GenericAtom {
  TextRange word, relation, space, arguments, close;
};

// The words of a best model's cost, in their order.
struct CostWords {
  TextRange title, weight_name, level_name, weight, level;
};

// Decodes the phrases of the grammar and tells the sink of each at once, of objects when their
// answer set ends. Ranges are those that add_token gave. Each reading has events of its own.
// Nothing here reports an error; what runs out of memory throws std::bad_alloc or
// std::length_error.
class AnswerEvents {
 public:
  // The sink, and the name spaces of the options, outlive this.
  AnswerEvents(AnswerSink& sink, const ReadingOptions& options)
      : sink_(sink), options_(options), frameMap_(options.namespaces) {}

  // Called by the scanner. See Note [text without blanks].
  TextRange add_token(std::string_view text) { return text_.add(text); }
  // The text of the last token, which is dropped.
  std::string take_back(TextRange token);

  // The words in front of a best model, whose answer set begins next.
  void set_title(TextRange word) { title_ = word; }
  void set_subject(TextRange word);

  void begin_answer_set();
  void set_negative_atom(bool is_negative) { negativeAtom_ = is_negative; }
  void short_atom(TextRange word, TextRange relation, TextRange space, TextRange close);
  void atom(const GenericAtom& atom);
  void flat_atom(TextRange atom);    // either of these
  void drop_comma(TextRange comma) { text_.drop_last(comma); }
  void end_answer_set();

  void finish_answer_set();    // one that is no best model
  void finish_best_model(const CostWords& words);
  void row(TextRange terms);    // of a query, or a further cost of a best model

  // The sink's: false when something is lost.
  bool flush() { return sink_.flush(); }

 private:
  AnswerTerm term(TextRange range) const {
    return AnswerTerm(text_.view(range), options_.namespaces);
  }
  void tell_of_row(std::string_view terms);

  AnswerSink& sink_;
  ReadingOptions options_;
  ItemText text_;
  TextRange title_{}, subject_{};
  bool begins_best_model_ = false;    // these two stand in front
  bool negativeAtom_ = false;         // the atom being read stands behind a "-"
  bool expects_costs_ = false;        // a best model is the last item, its costs aside
  FrameMap frameMap_;
};

}    // namespace zarel
