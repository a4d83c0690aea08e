#pragma once
// literal_words.h - literals of statements in words, with the values of their variables put in:
// "30!=31", "not p(a,_)", "50<#sum{P,Z : stake(gamma,Z,fenix,P)}".

#include <span>
#include <string>
#include <string_view>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/told.h"

namespace dl {

// As it is written: "#count".
std::string_view aggregate_name(AggregateFunction function);

// A term in words: a ground one, or what there is to say of one with variables that have no value.
struct WordedTerm {
  GroundTerm ground = kNoTerm;
  std::string words;    // where it is not ground
};

// Spells atoms and terms. Other languages than dl's have spellers of their own.
class Speller {
 public:
  virtual ~Speller() = default;
  virtual void append_term(std::string& out, GroundTerm term) const = 0;
  // A compound that is not ground.
  virtual void append_compound(std::string& out, std::string_view functor,
                               std::span<const WordedTerm> arguments) const = 0;
  virtual void append_atom(std::string& out, const Predicate& predicate,
                           std::span<const WordedTerm> arguments) const = 0;

  void append_term(std::string& out, const WordedTerm& term) const {
    if (term.ground == kNoTerm) {
      out += term.words;
    } else {
      append_term(out, term.ground);
    }
  }
};

// As the solver's language has them.
class PlainSpeller : public Speller {
 public:
  using Speller::append_term;
  explicit PlainSpeller(const GroundTerms& terms) : terms_(terms) {}

  void append_term(std::string& out, GroundTerm term) const override { terms_.append(out, term); }
  void append_compound(std::string& out, std::string_view functor,
                       std::span<const WordedTerm> arguments) const override;
  void append_atom(std::string& out, const Predicate& predicate,
                   std::span<const WordedTerm> arguments) const override;

 private:
  const GroundTerms& terms_;
};

// What words are made of. All must outlive who uses it.
struct Vocabulary {
  BodyEvaluator& evaluator;
  const GroundTerms& terms;
  const AnswerIndex& index;
  const Speller& speller;
};

// The words of what stands in one statement, with a binding: variables without a value are as they
// were written.
class LiteralWords {
 public:
  // All must outlive this.
  LiteralWords(const Vocabulary& vocabulary, const StoredStatement& statement,
               const Binding& binding)
      : vocabulary_(vocabulary), statement_(statement), binding_(binding) {}

  std::string literal(const StoredLiteral& literal) const;    // with its "not"
  std::string atom(const AtomPattern& atom) const;
  WordedTerm term(PatternNumber pattern) const;
  // The outer variables that somebody named and that have a value.
  ToldValues values() const;

 private:
  void append_literal(std::string& out, const StoredLiteral& literal) const;
  void append_operand(std::string& out, PatternNumber pattern) const;
  void append_call(std::string& out, const StoredLiteral& literal) const;
  void append_builtin(std::string& out, const StoredLiteral& literal) const;
  void append_aggregate(std::string& out, const StoredAggregate& aggregate) const;

  const Vocabulary& vocabulary_;
  const StoredStatement& statement_;
  const Binding& binding_;
};

// "a,f(b)".
std::string tuple_words(const Speller& speller, std::span<const GroundTerm> terms);

// A statement of the solver's language, or of the input's, on one line: line ends, the blanks around
// them and comments become one blank, but for those in strings.
std::string on_one_line(std::string_view written);

}    // namespace dl
