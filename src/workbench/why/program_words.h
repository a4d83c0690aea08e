#pragma once
// program_words.h - atoms, literals and terms of the rewritten program as its user would write them.
//
// Note [words for generated predicates]
// What the rewriting made up has no words of its own. The result of a template is told as its
// invocation with the values that group, maximum{salary(lab, $, *)}(4200); what a template's body
// defines as "p(a) of t{...}"; an actual predicate's projection as the atom that it projects; an
// auxiliary atom of a frame as the frame. Which predicate is what, the program's tables tell, and
// the clauses' origins.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/explained_answer.h"
#include "dl/explain/told.h"
#include "templates/generated_predicates.h"
#include "workbench/why/user_statements.h"
#include "zarel/program.h"

namespace workbench {

// What a predicate is to the user.
enum class PredicateRole : std::uint8_t {
  kOwn,             // his
  kResult,          // of a template
  kLocal,           // of a template's body
  kStandsIn,        // for the atom that is first in its rule's body
  kWholeFrame,      // a frame in a disjunction: its rules' heads are the frame's statements
  kNegatedFrame,    // a frame under "not": its rule's body has them
};

class ProgramWords {
 public:
  // All must outlive the object. The store is that of the answer, which was looked at or found.
  ProgramWords(zarel::Program& program, dl::ExplainedAnswer& answer, UserStatements& statements);

  PredicateRole role(dl::PredicateNumber predicate);
  // The rule that tells what such a predicate stands for; of a whole frame the first one.
  const dl::StoredStatement& rule_of(dl::PredicateNumber predicate);
  bool is_whole_frame_rule(const dl::StoredStatement& statement);

  std::string atom(dl::PredicateNumber predicate, std::span<const dl::GroundTerm> arguments);
  std::string atom(dl::AtomNumber atom);
  std::string term(dl::GroundTerm term) const;
  // A name as the user knows the predicate, with the number of arguments: "free/1"; nothing for what
  // he has no name for.
  std::string name(dl::PredicateNumber predicate);

  // What is in the binding has its value, else variables keep their names where they are the user's
  // and are "_" where not.
  std::string head(const dl::StoredStatement& statement, const dl::AtomPattern& atom,
                   const dl::Binding& binding);
  std::string literal(const dl::StoredStatement& statement, const dl::StoredLiteral& literal,
                      const dl::Binding& binding);
  // The user's variables and their values, those of the template's invocation behind.
  dl::ToldValues values(const dl::StoredStatement& statement, const dl::Binding& binding);

  UserStatements& statements() { return statements_; }

 private:
  using Texts = std::vector<std::string>;
  // How variables of a statement read where a body is written.
  struct Names {
    const dl::StoredStatement& statement;
    const dl::Binding* binding = nullptr;
    const std::unordered_map<dl::VariableId, std::string>* texts = nullptr;
    const std::vector<dl::StoredLiteral>* inner = nullptr;    // of an aggregate
    bool keeps_names = true;
  };
  struct Piece {    // a statement of a frame, taken apart
    std::string object, attribute, value, space;
    std::string whole;    // of what is none
    bool is_taken = false;
  };

  void find_frames();
  std::string variable(const Names& names, dl::VariableId variable, unsigned depth);
  std::string pattern(const Names& names, dl::PatternNumber pattern, unsigned depth = 0);
  Texts arguments(const Names& names, const dl::AtomPattern& atom);
  std::string comparison(const Names& names, const dl::StoredLiteral& literal);
  std::string aggregate(const Names& names, const dl::StoredAggregate& aggregate);
  std::string literal(const Names& names, const dl::StoredLiteral& literal);

  std::string words(dl::PredicateNumber predicate, const Texts& arguments);
  std::string own_words(dl::PredicateNumber predicate, const Texts& arguments);
  std::string stand_in(dl::PredicateNumber predicate, const Texts& arguments);
  std::string invocation(std::uint32_t expansion, std::span<const std::string> groups);
  std::string actual(const zarel::MadeExpansion::Actual& actual, Texts parameters);
  std::string frame(dl::PredicateNumber predicate, const Texts& arguments);
  Piece piece(dl::PredicateNumber predicate, const Texts& arguments);
  std::string frame_of(std::vector<Piece>& pieces, std::size_t first);
  std::unordered_map<dl::VariableId, std::string> matched(const dl::StoredStatement& statement,
                                                          const dl::AtomPattern& head,
                                                          const Texts& arguments) const;
  std::string spaced_terms(std::string_view text) const;
  const zarel::GeneratedPredicate* generated(dl::PredicateNumber predicate) const;
  const zarel::MadeExpansion* expansion_of(const dl::StoredStatement& statement);

  zarel::Program& program_;
  dl::ExplainedAnswer& answer_;
  UserStatements& statements_;
  const zarel::GeneratedPredicates& generated_;
  const zarel::NamespaceTable* namespaces_;
  // By predicate: the rules whose whole body is such an atom.
  std::unordered_map<dl::PredicateNumber, std::vector<dl::StatementNumber>> frame_rules_;
  std::unordered_map<dl::PredicateNumber, PredicateRole> frames_;
};

}    // namespace workbench
