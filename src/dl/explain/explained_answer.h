#pragma once
// explained_answer.h - a program and one of its answer sets, with all that questions are asked of.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "dl/explain/answer_text.h"
#include "dl/explain/single_search.h"
#include "dl/explain/statement_store.h"

namespace dl {

// Which answer set is meant.
struct AnswerChoice {
  std::uint64_t number = 1;    // of those that hold the demands
  std::vector<std::string>
      demands;    // literals of the solver's language that hold: "a(b)", "not c"
};

class ExplainedAnswer {
 public:
  // The options must outlive this. Throws Failure for a program with mistakes.
  ExplainedAnswer(Program program, const Options& options);

  // Looks for the answer set. Where one is found, all members below are about it; what was there of
  // an earlier one is gone. Throws Failure as search_one() does.
  const FoundAnswer& find(const AnswerChoice& choice);
  // The same without an answer set, for questions that need none: the store has no facts then.
  void look_at_program();

  // Of the last find(), but for its text, which the index has.
  const FoundAnswer& found() const { return found_; }
  // What the index has, as dl prints it.
  std::string text() const;
  GroundTerms& terms() { return terms_; }
  AnswerIndex& index() { return *index_; }
  const StatementStore& store() const { return *store_; }    // after find(), look_at_program()
  const Options& options() const { return options_; }

  // The program with a text behind it.
  Program with(const std::string& further) const;

 private:
  Program program_;    // its sources are what the store looks into
  const Options& options_;
  FoundAnswer found_;
  GroundTerms terms_;
  std::unique_ptr<AnswerIndex> index_;
  std::unique_ptr<StatementStore> store_;
};

}    // namespace dl
