#pragma once
// answer_reader.h - what a search says: clingo's lines in, answers as users read them out. Knows no
// process; hosts that want values instead of text find them in answer_writer.h and query_answers.h.

#include <optional>
#include <string>
#include <string_view>

#include "base/diagnostic.h"
#include "dl/answer_writer.h"
#include "dl/model_reader.h"
#include "dl/translate.h"

namespace dl {

// Whether a search was complete, as far as its process tells.
enum class Search : bool { kCut, kComplete };

class AnswerReader {
 public:
  // The translation must outlive the reader.
  AnswerReader(const Translated& program, Reasoning reasoning)
      : program_(program), parts_(program.parts), reasoning_(reasoning) {}

  // Takes the next line, without its end, or what is left of it. Throws Failure when the answers
  // before it cannot be trusted: an integer or a sum left 32 bits, or costs are not what they should
  // be.
  void read_line(std::string_view line);

  // Takes the next piece of an answer set's line, which ends between atoms; only if such a set may
  // be shown before the next one has come.
  bool takes_pieces() const { return !parts_.query && parts_.weak_constraints.empty(); }
  void read_piece(std::string_view piece);

  // Whether the line came that ends a complete search.
  bool has_result() const;

  // After the last line: the answers that waited for it. Throws Failure like read_line(). `note`
  // takes what is to be said of them. Returns whether the last answer set may not be optimal.
  bool finish(Search search, const zarel::DiagnosticSink& note);

  // The answers that were found, and nothing is known to be wrong with; the caller takes them away.
  // The last one may be an answer set that pieces have begun.
  std::string& text() { return text_; }
  bool is_inside_answer_set() const { return is_inside_; }

  // The same without one that was begun, for a caller who takes nothing else.
  std::string_view whole_answers() const;
  void drop_whole_answers();

 private:
  void read_answer(std::string_view line);
  void end_answer();
  void note_costs(std::string_view line);
  void print_held();
  bool has_brave_answer() const;
  void print_query(const zarel::DiagnosticSink& note);
  void check_fault(std::optional<std::size_t> fault) const;

  const Translated& program_;
  const ProgramParts& parts_;
  Reasoning reasoning_;
  std::string text_;
  AnswerSet answer_;
  Costs costs_;
  std::string consequences_;       // the query's last line
  std::string costs_line_;         // the last one,
  std::size_t costs_lines_ = 0;    // and how often it came with no answer set between
  LineKind status_ = LineKind::kOther;
  bool is_inside_ = false;          // an answer set of which pieces came,
  std::size_t inside_begin_ = 0;    // whose text begins there
  bool has_held_ = false;           // an answer set that may not be optimal
  bool has_consequences_ = false;
};

}    // namespace dl
