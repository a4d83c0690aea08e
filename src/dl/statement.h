#pragma once
// statement.h - one statement of the input, as the builder leaves it for the translator. All parts
// lie in flat lists that are cleared and used again, so that a million facts cost no allocation
// each.

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/place.h"

namespace dl {

// A stretch of Statement::text, or of one of its lists.
struct Slice {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  std::uint32_t size() const { return end - begin; }
};

using VariableId = std::uint32_t;
constexpr VariableId kUnnamed = 0xffffffffu;    // "_": a use that nothing can bind

// A variable where it is used.
struct Use {
  VariableId variable = kUnnamed;
  std::uint32_t offset = 0;    // in the text of the file
};

enum class TermKind : std::uint8_t {
  kVariable,
  kAnonymous,
  kConstant,
  kString,
  kInteger,
  kBound,
  kCompound
};

// Whether such a term is a name, string or number: different ones have different values.
constexpr bool is_simple(TermKind kind) {
  return kind == TermKind::kConstant || kind == TermKind::kString || kind == TermKind::kInteger;
}

struct Term {
  TermKind kind = TermKind::kConstant;
  VariableId variable = kUnnamed;
  Slice text;                  // as clingo writes it
  Slice uses;                  // its variables, in Statement::uses
  Slice arguments;             // of an atom, in Statement::arguments, if they are listed
  std::uint32_t simple = 0;    // of a compound: a bit for each of its first arguments
  std::uint32_t arity = 0;
  std::uint32_t keys = 0;    // see Note [folded atoms]; then text and arity are what clingo reads
  bool strongly_negated = false;
  bool open = false;        // see Note [instances]
  std::string_view name;    // as the input spells it, of constants and compounds
};

// What a literal is; each has its row in kBuiltins.
enum Builtin : int {
  kEqual,
  kUnequal,
  kLess,
  kGreater,
  kLessEqual,
  kGreaterEqual,
  kInt,
  kSuccessor,
  kSum,
  kProduct,
  kFunctionTerm,
  kAtom,
  kAggregate
};

struct BuiltinKind {
  Builtin kind;
  std::string_view name;
  std::uint32_t arity;    // 0 where it varies
  bool is_comparison = false;
  bool may_be_negated = false;    // stand behind "not"
  bool needs_bound = false;       // it ranges over the integers
};
inline constexpr std::array kBuiltins = std::to_array<BuiltinKind>({
    {.kind = kEqual, .name = "==", .arity = 2, .is_comparison = true, .may_be_negated = true},
    {.kind = kUnequal, .name = "!=", .arity = 2, .is_comparison = true, .may_be_negated = true},
    {.kind = kLess, .name = "<", .arity = 2, .is_comparison = true, .may_be_negated = true},
    {.kind = kGreater, .name = ">", .arity = 2, .is_comparison = true, .may_be_negated = true},
    {.kind = kLessEqual, .name = "<=", .arity = 2, .is_comparison = true, .may_be_negated = true},
    {.kind = kGreaterEqual,
     .name = ">=",
     .arity = 2,
     .is_comparison = true,
     .may_be_negated = true},
    {.kind = kInt, .name = "#int", .arity = 1, .may_be_negated = true, .needs_bound = true},
    {.kind = kSuccessor, .name = "#succ", .arity = 2, .needs_bound = true},
    {.kind = kSum, .name = "+", .arity = 3},
    {.kind = kProduct, .name = "*", .arity = 3},
    {.kind = kFunctionTerm, .name = "#function_builtin", .arity = 0},
    {.kind = kAtom, .name = "atom", .arity = 0, .may_be_negated = true},
    {.kind = kAggregate, .name = "aggregate", .arity = 0, .may_be_negated = true},
});
constexpr bool is_in_order() {
  for (std::size_t i = 0; i < kBuiltins.size(); ++i) {
    if (kBuiltins[i].kind != static_cast<Builtin>(i)) return false;
  }
  return true;
}
static_assert(is_in_order(), "a row for each kind, in the order of the kinds");

constexpr const BuiltinKind& kind_of(Builtin builtin) {
  return kBuiltins[static_cast<std::size_t>(builtin)];
}

struct Literal {
  Builtin kind = kAtom;
  bool negated = false;
  std::uint32_t term = 0;    // the atom
  Slice arguments;           // of a builtin, in Statement::arguments
  Slice uses;    // all variables in it, with repeats; of an aggregate those of its guards alone
  std::uint32_t aggregate = 0;    // index of an aggregate
};

enum AggregateFunction : int { kCount, kSumUp, kMin, kMax, kAverage };

// A guard as it stands between its term and the aggregate; `given` is false where there is none.
struct Guard {
  bool given = false;
  Builtin op = kEqual;
  std::uint32_t term = 0;
  std::string_view written;    // the operator, in the text of the file
};

struct Aggregate {
  AggregateFunction function = kCount;
  Guard left;         // left.term op {...}
  Guard right;        // {...} op right.term
  Slice arguments;    // the terms before the colon
  std::vector<Literal> body;
  Slice uses;    // all variables between the braces
  zarel::SourceRange range{};
};

struct Statement {
  std::string text;    // clingo's text of every term and atom
  std::vector<Term> terms;
  std::vector<Use> uses;
  std::vector<std::uint32_t> arguments;    // indices of terms
  std::vector<std::uint32_t> heads;        // indices of terms
  std::vector<Literal> body;
  std::vector<Aggregate> aggregates;
  std::vector<Slice> variables;    // the spelling of each, in text
  std::uint32_t line = 0;          // see Note [lines as shown]
  std::uint32_t column = 0;        // where in that line it begins
  zarel::SourceRange range{};      // of all but facts of one head: nobody asks for it
  const char* source = nullptr;    // the text of the file
  std::string_view written;        // the statement in it, again but of facts
  std::string_view condition;      // of a weak constraint: its body, as written
  bool atoms_only = true;          // the body holds no builtin and no aggregate
  bool is_open = false;            // has an open atom: see Note [instances]

  std::string_view slice(Slice s) const { return std::string_view(text).substr(s.begin, s.size()); }
  // Whether the variable stands for a "_" of the input.
  bool is_unnamed(VariableId variable) const { return text[variables[variable].begin] == '_'; }
  // The variable as the input spells it.
  std::string_view spelling(VariableId variable) const {
    return is_unnamed(variable) ? "_" : slice(variables[variable]);
  }
  std::string_view term_text(std::uint32_t term) const { return slice(terms[term].text); }
  std::span<const Use> uses_of(const Term& term) const {
    return std::span(uses).subspan(term.uses.begin, term.uses.size());
  }
  // The use as it is written in the text of the file.
  std::string_view written_use(const Use& use) const {
    const bool is_named = use.variable != kUnnamed && !is_unnamed(use.variable);
    return {source + use.offset, is_named ? variables[use.variable].size() : 1};
  }
  const Term& listed_argument(const Term& atom, std::uint32_t place) const {
    return terms[arguments[atom.arguments.begin + place]];
  }
  const Term& argument(const Literal& literal, std::uint32_t position) const {
    return terms[arguments[literal.arguments.begin + position]];
  }

  void clear() {
    text.clear();
    terms.clear();
    uses.clear();
    arguments.clear();
    heads.clear();
    body.clear();
    aggregates.clear();
    variables.clear();
    line = 0;
    written = {};
    atoms_only = true;
    is_open = false;
  }
};

}    // namespace dl
