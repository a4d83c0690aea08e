#pragma once
// question_atom.h - the atom that a question is about, as one writes it in the solver's language:
// "-p(a,f(b))", and with variables or "_", for all of its instances, "p(X,_,X)".

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/body_evaluator.h"

namespace dl {

enum class Variables : bool { kAllowed, kRefused };

class QuestionAtom {
 public:
  // Reads the text by the language's grammar; `bound` is what #maxint stands for. Throws Failure
  // when the text is not one atom.
  QuestionAtom(std::string_view text, std::optional<std::int64_t> bound, GroundTerms& terms,
               AnswerIndex& index);

  // Throws Failure likewise, where there is no answer set yet; also for refused variables.
  static void check(std::string_view text, Variables variables = Variables::kAllowed);

  bool is_ground() const { return is_ground_; }
  PredicateNumber predicate() const { return atom().predicate; }
  // Of a ground one. Where others have variables, their arguments are no terms.
  const std::vector<GroundTerm>& arguments() const { return arguments_; }
  // The instances in the answer set, in its order, but no more than `most`.
  std::vector<AtomNumber> instances(BodyEvaluator& evaluator, std::size_t most) const;

  // As the language spells it.
  const std::string& text() const { return text_; }
  // A literal that holds in the answer sets with an instance.
  std::string demand() const;

 private:
  const AtomPattern& atom() const { return statement_.body.front().atom; }

  StoredStatement statement_;    // a query of the atom alone
  std::vector<GroundTerm> arguments_;
  bool is_ground_ = true;
  std::string text_;
};

}    // namespace dl
