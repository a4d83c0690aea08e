#pragma once
// statement_store.h - the statements of a program as explanations look at them: with terms that can
// be matched, found by their heads, and where each one stands.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/answer_index.h"
#include "dl/explain/ground_terms.h"
#include "dl/statement.h"
#include "dl/translate.h"

namespace dl {

// A term with variables. Those of one statement lie in StoredStatement::terms.
struct TermPattern {
  enum class Kind : std::uint8_t { kVariable, kAnonymous, kGround, kCompound };
  Kind kind = Kind::kGround;
  VariableId variable = kUnnamed;
  GroundTerm ground = kNoTerm;
  NameNumber functor = 0;
  std::vector<std::uint32_t> arguments;    // of a compound that is not ground: indices of terms
};
using PatternNumber = std::uint32_t;    // an index in StoredStatement::terms

struct AtomPattern {
  PredicateNumber predicate = 0;
  std::vector<PatternNumber> arguments;
};

struct StoredLiteral {
  Builtin kind = kAtom;
  bool negated = false;
  AtomPattern atom;                       // of kAtom
  std::vector<PatternNumber> operands;    // of a builtin; of #function_builtin the functor is [1]
  std::uint32_t aggregate = 0;            // of kAggregate: an index in StoredStatement::aggregates
  // Each once; of an aggregate the outer ones between its braces, not those of its guards.
  std::vector<VariableId> variables;
};

struct StoredGuard {
  bool given = false;
  Builtin op =
      kEqual;    // as in Guard: term op aggregate on the left, aggregate op term on the right
  PatternNumber term = 0;
};

struct StoredAggregate {
  AggregateFunction function = kCount;
  StoredGuard left;
  StoredGuard right;
  std::vector<PatternNumber> terms;    // before the colon
  std::vector<StoredLiteral> body;
};

enum class StatementKind : std::uint8_t { kRule, kConstraint, kWeakConstraint, kQuery };

struct StoredStatement {
  StatementKind kind = StatementKind::kRule;
  std::vector<TermPattern> terms;
  std::vector<AtomPattern> heads;
  std::vector<StoredLiteral> body;    // in the order of writing
  std::vector<StoredAggregate> aggregates;
  std::vector<std::string> variables;     // as written, by VariableId; "_" where nobody named it
  std::vector<char> is_outer;             // by VariableId: occurs outside the braces of aggregates
  std::optional<PatternNumber> weight;    // of a weak constraint; 1 where there is none
  std::optional<PatternNumber> level;
  std::uint32_t file = 0;
  zarel::SourceRange range{};    // with line and column of its first and last character
  std::string_view written;      // in the text of its file
};
using StatementNumber = std::uint32_t;

// Where a fact stands.
struct FactPlace {
  std::uint32_t file = zarel::kNoFile;    // kNoFile: the atom is no fact
  std::uint32_t line = 0;
  std::uint32_t column = 0;
};

// A statement, and which of its heads.
struct HeadUse {
  StatementNumber statement;
  std::uint32_t head;
};

class StatementStore {
 public:
  // Reads the texts of a program without mistakes, which must outlive the store: statements look
  // into them. Facts are looked up in the index, which has the answer set. `bound` is that of the
  // options, which goes before the program's.
  StatementStore(Program& program, std::optional<std::int64_t> bound, GroundTerms& terms,
                 AnswerIndex& index);

  // In the order of writing; facts of one head without variables are not among them.
  std::span<const StoredStatement> statements() const { return statements_; }
  const StoredStatement& statement(StatementNumber number) const { return statements_[number]; }
  // The rules with such a head, in the order of writing.
  std::span<const HeadUse> heads_of(PredicateNumber predicate) const;
  // Where the atom is given as a fact.
  const FactPlace& fact(AtomNumber atom) const;
  // Whether facts or heads of the program have the predicate.
  bool is_given(PredicateNumber predicate) const;
  std::optional<std::int64_t> bound() const { return bound_; }
  const Sources& sources() const { return sources_; }

 private:
  friend class StoreReceiver;
  const Sources& sources_;
  std::optional<std::int64_t> bound_;
  std::vector<StoredStatement> statements_;
  std::vector<std::vector<HeadUse>> heads_;    // by predicate
  std::vector<char> has_facts_;                // by predicate
  std::vector<FactPlace> facts_;               // by atom
};

}    // namespace dl
