#include "dl/explain/question_atom.h"

#include <limits>

#include "dl/explain/literal_words.h"
#include "dl/explain/statement_reader.h"
#include "dl/failure.h"
#include "dl/parse.h"

namespace dl {
namespace {

using zarel::Code;

// Takes what must be a query of one atom, and nothing else.
class OneAtom : public StatementReader {
 public:
  bool is_one() const { return queries_ == 1 && !has_other_; }
  bool needs_bound() const { return needs_bound_; }
  bool has_variables() const { return has_variables_; }

  MaybeMistake query(const Statement& statement) override {
    ++queries_;
    const bool is_atom = statement.body.size() == 1 && statement.body.front().kind == kAtom &&
                         !statement.body.front().negated;
    if (!is_atom) has_other_ = true;
    if (is_atom)
      has_variables_ = !statement.uses_of(statement.terms[statement.body[0].term]).empty();
    return {};
  }
  MaybeMistake fact(const Statement&) override { return other(); }
  MaybeMistake rule(const Statement&) override { return other(); }
  MaybeMistake weak_constraint(const Statement&, const Piece&, const Piece&) override {
    return other();
  }
  MaybeMistake integer_bound(std::int64_t, const Piece&) override { return other(); }
  void include(std::string_view, const Piece&) override { has_other_ = true; }
  void needs_bound(std::uint32_t, const Piece&) override { needs_bound_ = true; }

 private:
  MaybeMistake other() {
    has_other_ = true;
    return {};
  }

  std::uint32_t queries_ = 0;
  bool has_other_ = false;
  bool needs_bound_ = false;
  bool has_variables_ = false;
};

// A comment at the end of the atom ends at the line's.
std::string query_of(std::string_view text) {
  return std::string(text) + "\n?";
}

OneAtom checked(std::string_view text) {
  std::string query = query_of(text);
  query.append(kEndMarks, '\0');
  OneAtom receiver;
  const Folding nothing_folded;
  StatementBuilder builder(receiver, nothing_folded);
  if (parse_text(query, builder) && receiver.is_one()) return receiver;
  std::string message = "\"";
  message += text;
  throw Failure{{Code::kOptionValue,
                 {},
                 message += "\" is no atom; one is written p(a), -p(a,X) or p(f(b),_), without a "
                            "full stop"}};
}

}    // namespace

void QuestionAtom::check(std::string_view text, Variables variables) {
  if (!checked(text).has_variables() || variables == Variables::kAllowed) return;
  std::string message = "\"";
  message += text;
  throw Failure{{Code::kOptionValue,
                 {},
                 message += "\" has variables; what is not there has to be a single atom"}};
}

QuestionAtom::QuestionAtom(std::string_view text, std::optional<std::int64_t> bound,
                           GroundTerms& terms, AnswerIndex& index) {
  if (checked(text).needs_bound() && !bound) {
    throw Failure{{Code::kMissingBound, {}, "#maxint stands in the question and is not given"}};
  }
  const std::string query = query_of(text);
  const Source source{"question", query};
  Program program = survey_texts({&source, 1});
  const StatementStore store(program, bound, terms, index);
  statement_ = store.statement(0);
  statement_.written = {};    // the text goes
  const Binding nothing(statement_.variables.size(), kNoTerm);
  BodyEvaluator evaluator(terms, index, store);
  const PlainSpeller speller(terms);
  text_ = LiteralWords({evaluator, terms, index, speller}, statement_, nothing).atom(atom());
  for (const PatternNumber argument : atom().arguments) {
    arguments_.push_back(evaluator.value(statement_, argument, nothing));
    if (arguments_.back() == kNoTerm) is_ground_ = false;
  }
}

std::vector<AtomNumber> QuestionAtom::instances(BodyEvaluator& evaluator, std::size_t most) const {
  const Binding nothing(statement_.variables.size(), kNoTerm);
  return evaluator.atoms_of(statement_, atom(), nothing, most);
}

// Behind "not", a literal with variables would be unsafe; those in braces are their own.
std::string QuestionAtom::demand() const {
  if (is_ground_) return text_;
  return std::string("0<#count{1 : ").append(text_) += '}';
}

}    // namespace dl
