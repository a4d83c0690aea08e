#pragma once
// plain_teller.h - tells what was found in the words of the solver's language: atoms as the input
// spells them, places in its files.

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/failure_search.h"
#include "dl/explain/literal_words.h"
#include "dl/explain/paid_costs.h"
#include "dl/explain/proof_search.h"
#include "dl/explain/relaxation.h"
#include "dl/explain/told.h"

namespace dl {

// What an answer set pays for instances that differ in nothing that somebody named.
struct PaidTogether {
  ToldPayment told;
  PaidInstance paid;    // without values of what nobody named, and so each of them
};

class PlainTeller {
 public:
  // The tables are those of the answer set that is told about, and must outlive the teller.
  PlainTeller(const StatementStore& store, GroundTerms& terms, AnswerIndex& index)
      : store_(store),
        terms_(terms),
        index_(index),
        evaluator_(terms, index, store),
        speller_(terms),
        vocabulary_{evaluator_, terms_, index_, speller_} {}
  PlainTeller(const PlainTeller&) = delete;
  PlainTeller& operator=(const PlainTeller&) = delete;

  // Of what lies deeper than so many nodes below the roots only the first are told, and nothing of
  // what they rest on; 0: all is told.
  ToldProof proof(const Proof& proof, std::uint32_t depth);
  ToldMissing missing(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                      const MissingAtom& missing);

  ToldInstance instance(const ConstraintInstance& instance);
  std::vector<ToldInstance> instances(const std::vector<ConstraintInstance>& instances);
  ToldLines constraints(const ConstraintSet& constraints, bool is_proven) const;
  ToldLines rules(const std::vector<StatementNumber>& rules, bool is_proven) const;

  // In the order of the first of those that are told together.
  std::vector<PaidTogether> payments(const std::vector<PaidInstance>& paid);

  ToldStatement statement(StatementNumber number) const;
  std::string atom(AtomNumber atom) const;

 private:
  class ProofTeller;
  ToldStatement fact(AtomNumber atom) const;
  void tell_other_rules(const MissingAtom& missing, ToldMissing& told) const;
  ToldFailure failure(const FailedRule& rule);
  void tell_reasons(const FailedRule& rule, ToldFailure& told);
  std::string reason(const ProofNode& node) const;
  PaidInstance named_part(const PaidInstance& paid) const;
  std::string predicate_name(PredicateNumber predicate) const;
  LiteralWords words(StatementNumber statement, const Binding& binding) const {
    return {vocabulary_, store_.statement(statement), binding};
  }

  const StatementStore& store_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  BodyEvaluator evaluator_;
  PlainSpeller speller_;
  Vocabulary vocabulary_;
};

// Levels without a cost are among them.
ToldCosts told(const Costs& costs);

}    // namespace dl
