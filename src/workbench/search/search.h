#pragma once
// search.h - what the searches have in common: answers on their way from a solver to the user.

#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/messages/exit_status.h"
#include "workbench/messages/reporter.h"
#include "workbench/search/answer_output.h"
#include "workbench/search/found.h"
#include "workbench/search/kept_stages.h"
#include "workbench/search/solving.h"
#include "zarel/program.h"

namespace workbench {

// Thrown where a search cannot go on.
struct SearchFailure {
  Message message;
  std::vector<Message> further = {};
};

// Reads answers and prints them, in the user's words.
class AnswerPrinter {
 public:
  // The program and the descriptor must outlive the printer; the filters are names of predicates.
  AnswerPrinter(zarel::Program& program, const std::vector<std::string>& filters, int output);

  // Takes whole answers. Returns false when these cannot be read, or not be written: then there is
  // no use in a further search.
  bool print(std::string_view answers);

  void note_closed() { output_.note_closed(); }    // nobody reads what is printed
  bool has_unreadable_answers() const { return has_unreadable_answers_; }
  int error() const { return output_.error(); }    // as errno has it, 0 for none
  int descriptor() const { return output_.descriptor(); }
  const Found& found() const { return sink_.found(); }

 private:
  zarel::Program& program_;
  AnswerOutput output_;
  std::ostream stream_;
  CountingSink sink_;
  bool has_unreadable_answers_ = false;
};

// How a search ended that did not fail.
struct SearchResult {
  Asked asked;
  Judgement judgement;
  std::string said = {};    // by the solver, on its standard error
};

// What the translation finds wrong first; nothing when it is a program for clingo.
std::optional<Message> translation_mistake(zarel::Program& program, const SearchOptions& options);

// Each solves the program's text, with what its user asked for. Throws SearchFailure.
SearchResult search_with_clingo(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer);
SearchResult search_with_solver(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer);

}    // namespace workbench
