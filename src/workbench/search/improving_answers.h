#pragma once
// improving_answers.h - the answer sets on the way to a best one, told from the best ones.

#include <optional>
#include <string>
#include <string_view>

#include "dl/answer_reader.h"
#include "dl/translate.h"

namespace workbench {

// Note [improving answer sets]
// Asked for all it finds, clingo prints every answer set that is better than the one before, and
// its costs behind it. Once it knows the best costs it begins anew and prints each answer set that
// has these: the first costs that are those of the answer set before are where the best ones begin.
// Of what comes in front, the last one is the best so far when the search is cut.
class ImprovingAnswers {
 public:
  // The translation must outlive this, and what reads the best answer sets.
  ImprovingAnswers(const dl::Translated& program, dl::AnswerReader& best)
      : program_(program), best_(best) {}

  // Takes the next line. Returns an answer set that is better than all before it, as the reader
  // writes it; or nothing, when `best` got the line or there is more to come.
  std::string read_line(std::string_view line);
  // Nothing follows: `best` gets the best one so far.
  void finish();

 private:
  std::string take_answer_set(std::string_view line);
  std::string take_costs(std::string_view line);
  std::string better() const;

  const dl::Translated& program_;
  dl::AnswerReader& best_;
  std::string answer_set_, costs_;     // the best so far
  std::optional<std::string> next_;    // an answer set whose costs are to come
  bool has_best_ = false;              // best ones come now
};

}    // namespace workbench
