#pragma once
// answer_set_builder.h - what the grammar of the solver's output calls: items as they are to be
// printed.

#include <string>
#include <string_view>

#include "output/frame_map.h"
#include "output/item_text.h"
#include "output/result_writer.h"

namespace zarel {

// The parts of an atom of the generic encoding: word(relation, space, arguments).
struct GenericAtom {
  TextRange word, relation, space, arguments, close;
};

// The parts of a best-model block, in their order, its answer set left out.
struct BestModel {
  TextRange title, subject, cost, weight_name, level_name, weight, level;
};

// Turns the phrases of the grammar into the text of the item that is being read. Ranges are those
// that add_token gave. Each reading has a builder of its own. Nothing here reports an error; one
// that runs out of memory throws std::bad_alloc or std::length_error.
class AnswerSetBuilder {
 public:
  // Called by the scanner. See Note [text without blanks].
  TextRange add_token(std::string_view text) { return text_.add(text); }
  // The text of the last token, which is dropped.
  std::string take_back(TextRange token);

  void begin_answer_set();
  void set_negativeAtom(bool is_negative) { negativeAtom_ = is_negative; }
  void add_short_atom(TextRange word, TextRange relation, TextRange space, TextRange close);
  void add_atom(const GenericAtom& atom);
  void add_flat_atom(TextRange atom);    // either of these
  void drop_comma(TextRange comma) { text_.drop_last(comma); }
  void end_answer_set();    // adds the frames behind the atoms

  void print_answer_set();
  void print_terms(TextRange terms);
  void print_best_model(const BestModel& words);

  // Prints the items that are complete, at once; false when they are lost.
  bool print_completed() { return writer_.write_out(); }

 private:
  void begin_atom();
  void add_plain_atom(const GenericAtom& atom);
  void add_frame_atom(const GenericAtom& atom);
  void finish_item(std::size_t end);

  ItemText text_;
  std::string item_;    // as it will be printed
  bool has_atoms_ = false;
  bool negativeAtom_ = false;    // the atom being read stands behind a "-"
  FrameMap frameMap_;
  ResultWriter writer_;
};

}    // namespace zarel
