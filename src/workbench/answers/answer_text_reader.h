#pragma once
// answer_text_reader.h - reads what a solver answers, exactly: nothing that a term holds is lost.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/namespaces.h"
#include "workbench/answers/answer_consumer.h"

namespace workbench {

// Note [pushed text]
// Answers come in pieces that end anywhere, so the reader keeps where it stands: between answers,
// in an answer set, or in a line of another kind. An answer set goes on as soon as it is whole; one
// with costs only when something follows that is none, or the reader is told that nothing does.
class AnswerTextReader {
 public:
  // The consumer gets the answers. Constants are of the name spaces; null: none are qualified.
  AnswerTextReader(AnswerConsumer& consumer, const zarel::NamespaceTable* namespaces)
      : consumer_(consumer), set_(namespaces), namespaces_(namespaces) {}

  // Whether a line "true" is the answer of a query without variables; else it is a value.
  void expect_truth_value(bool is_ground) { is_ground_ = is_ground; }

  // Takes more text. Returns false when it is no answer; then nothing more can be read.
  bool read(std::string_view text);
  // Takes one answer set with its costs, better than those before. Returns like read().
  bool read_improving(std::string_view text);
  // Nothing follows for the moment: an answer set whose costs are there goes on.
  void settle();
  // Nothing follows. Returns false when something is not whole.
  bool finish();

  const std::string& error() const { return error_; }    // what was found, in words

 private:
  enum class State : std::uint8_t { kBetween, kLine, kSet };

  struct End {    // of an item
    std::size_t position;
    bool has_blanks;    // in front of it, outside strings
  };

  std::size_t read_between(std::string_view text);
  std::size_t read_line(std::string_view text);
  std::size_t read_set(std::string_view text);
  void begin_set();
  void take_items();
  void take_item(std::size_t begin, std::size_t size);
  void end_of_empty(std::size_t begin);
  void end_set();
  void hand_on();    // the answer set that is whole
  void end_line();
  bool read_costs(std::string_view line);
  void fail(std::string_view what);

  AnswerConsumer& consumer_;
  AnswerSet set_;
  const zarel::NamespaceTable* namespaces_;
  bool is_ground_ = false;

  State state_ = State::kBetween;
  std::string line_;         // so far, of another kind than an answer set
  std::vector<End> ends_;    // of the items that are being taken
  std::uint64_t sets_ = 0;
  std::uint64_t improving_sets_ = 0;
  bool is_improving_ = false;
  bool is_best_ = false;      // the answer set stands behind two words and a colon
  bool has_set_ = false;      // one is whole and waits for its costs
  bool in_string_ = false;    // these four of the set or line that is being read
  bool has_blanks_ = false;
  std::size_t depth_ = 0;
  std::size_t item_begin_ = 0;    // in the set's text
  std::string error_;
};

}    // namespace workbench
