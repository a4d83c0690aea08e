#pragma once
// teller.h - explanations of the rewritten program in the words of its user: what was made up of
// rules and atoms on the way to the solver is folded into the statements that he wrote.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/failure_search.h"
#include "dl/explain/paid_costs.h"
#include "dl/explain/proof_search.h"
#include "dl/explain/relaxation.h"
#include "dl/explain/told.h"
#include "workbench/why/program_words.h"
#include "workbench/why/query_row.h"

namespace workbench {

class Teller {
 public:
  // Both must outlive the teller.
  Teller(ProgramWords& words, dl::ExplainedAnswer& answer) : words_(words), answer_(answer) {}

  // Nodes deeper than `depth` below every root are cut; 0: none is. Those that `is_told` refuses
  // are, too.
  using IsTold = std::function<bool(dl::AtomNumber)>;
  dl::ToldProof proof(const dl::Proof& proof, std::uint32_t depth, const IsTold& is_told = {});

  // Why the atom is missing, which it is.
  dl::ToldMissing missing(dl::PredicateNumber predicate,
                          const std::vector<dl::GroundTerm>& arguments);
  // Why no instance of an atom with variables is there: kNoTerm stands for them.
  dl::ToldMissing missing(const AtomQuestion& question, dl::PredicateNumber predicate,
                          const std::vector<dl::GroundTerm>& arguments);
  // Why the answer set does not have the row, which it does not.
  dl::ToldMissing missing(const AtomQuestion& question, const QueryRow& row);

  dl::ToldStatement statement(dl::StatementNumber number);
  dl::ToldLines lines(const dl::ConstraintSet& set, bool is_proven);
  dl::ToldLines lines(const std::vector<dl::StatementNumber>& rules, bool is_proven);
  dl::ToldInstances instances(const std::vector<dl::ConstraintInstance>& instances, bool is_proven);

  // What is paid, those that differ in nothing that is seen as one; the first of each is told in
  // `firsts`, by its index.
  std::vector<dl::ToldPayment> payments(const std::vector<dl::PaidInstance>& paid,
                                        std::vector<std::size_t>* firsts = nullptr);

 private:
  friend class ProofTelling;
  using Arguments = std::vector<dl::GroundTerm>;

  // Where an atom that holds comes from, on one line.
  std::string reason(dl::AtomNumber atom);
  void add_reasons(std::vector<std::string>& reasons, const dl::StoredStatement& statement,
                   const dl::StoredLiteral& literal, const dl::Binding& binding);
  void add_rules(dl::ToldMissing& told, dl::PredicateNumber predicate, const Arguments& arguments);
  void add_failures(dl::ToldMissing& told, const dl::MissingAtom& missing);
  dl::ToldFailure failure(dl::FailedRule failed);
  void make_terms_whole(dl::FailedRule& failed);
  void tell_relation(dl::ToldMissing& told, dl::PredicateNumber predicate,
                     const Arguments& arguments, const dl::MissingAtom& missing);
  // The arguments that say which relation an atom is of: its name and space, the attribute of a
  // frame. By their place.
  std::vector<std::uint32_t> naming_places(dl::PredicateNumber predicate,
                                           const Arguments& arguments) const;
  std::vector<std::string> similar_names(dl::PredicateNumber predicate, const Arguments& arguments);

  ProgramWords& words_;
  dl::ExplainedAnswer& answer_;
};

}    // namespace workbench
