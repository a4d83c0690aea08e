#pragma once
// relations.h - the predicates, relations and constants of a program by number, and what of a rule
// tells which constants can stand for which of its variables.

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "dl/folding.h"
#include "dl/statement.h"

namespace dl {

using Symbol = std::uint32_t;         // a simple term
using PredicateId = std::uint32_t;    // of a name, a number of arguments and a sign
using RelationId = std::uint32_t;     // of a predicate and its keys
constexpr Symbol kNoSymbol = 0;       // where a predicate has no keys
constexpr Symbol kEachSymbol = 1;     // of the atoms of a predicate whose keys nothing tells

enum class ArgumentKind : std::uint8_t { kSymbol, kVariable, kAnonymous, kUnclear };
struct Argument {
  ArgumentKind kind;
  std::uint32_t id;    // a Symbol or a VariableId
};

struct AtomShape {
  PredicateId predicate;
  std::uint32_t term;    // in the statement
  Slice arguments;       // the keys before the others: see written_place()
};

struct RuleShape {
  Slice heads;
  Slice positives;    // the positive atoms outside aggregates
  Slice others;       // the negated ones, and all inside aggregates
  std::size_t literals = 0;
};

// The shapes of rules, one behind the other.
struct Shapes {
  std::vector<Argument> arguments;
  std::vector<AtomShape> atoms;
  std::vector<RuleShape> rules;
};

struct Predicate {
  std::string_view name;
  bool is_generic;
  std::uint32_t keys;    // how many it has when it is folded
};

struct Relation {
  PredicateId predicate;
  std::array<Symbol, kMostKeys> keys;
  bool operator==(const Relation&) const = default;
};

class Relations {
 public:
  explicit Relations(const Folding& folding);

  // The shape of a statement whose arguments are listed.
  RuleShape shape(const Statement& statement, Shapes& out);
  AtomShape shape(const Statement& statement, std::uint32_t term, Shapes& out);

  const std::string& text(Symbol symbol) const { return *texts_[symbol]; }
  const Predicate& predicate(PredicateId id) const { return predicates_[id]; }
  std::size_t predicates() const { return predicates_.size(); }
  const Relation& relation(RelationId id) const { return relations_[id]; }
  std::size_t relations() const { return relations_.size(); }
  RelationId number(const Relation& relation);
  std::optional<RelationId> find(const Relation& relation) const;
  Argument argument(const Statement& statement, const Term& term);

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
    std::size_t operator()(const Relation& relation) const;
  };
  Symbol symbol(std::string_view text);
  PredicateId predicate(const Statement& statement, const Term& atom);
  void add_body(const Statement& statement, const std::vector<Literal>& body, bool positives,
                bool others, Shapes& out);

  const Folding& folding_;
  std::unordered_map<std::string, Symbol, Hash, std::equal_to<>> symbols_;
  std::vector<const std::string*> texts_;    // in symbols_
  std::unordered_map<std::string, PredicateId, Hash, std::equal_to<>> predicate_numbers_;
  std::vector<Predicate> predicates_;
  std::deque<std::string> names_;
  std::unordered_map<Relation, RelationId, Hash> relation_numbers_;
  std::vector<Relation> relations_;
  std::string key_;
};

}    // namespace dl
