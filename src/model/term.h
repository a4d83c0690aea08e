#pragma once
// term.h - terms, and the tables of constants and variables that they point into.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/name_table.h"

namespace zarel {

enum class TermKind : std::uint32_t {
  kVariable = 0,        // value: the variable's number
  kConstant = 1,        // value: the index in TERMT::Constants
  kInteger = 2,         // value: the number itself
  kAbsent = 3,          // a term that was not written; prints as nothing
  kAsterisk = 4,        // the "*" marker of argument patterns
  kAnonymous = 5,       // "_"; value: a number of its own, so that no two are equal
  kDollar = 6,          // the "$" marker of argument patterns
  kFunctionTerm = 7,    // value: the key in the function-term table, which is a variable number too
};

// Note [small terms]
// A large program is mostly terms, so a term is four bytes: its kind, and a value below 2^28. A
// greater one, which nearly always is a negative or a great integer, is the number of a wide value.
struct TERMT {
  TERMT() = default;    // without meaning, for arrays and the parser's value stack
  TERMT(TermKind of_kind, std::int32_t value)
      : kind(of_kind), is_wide_(0), bits_(static_cast<std::uint32_t>(value) % kFirstWide) {
    if (static_cast<std::uint32_t>(value) >= kFirstWide)
      set_wide(static_cast<std::uint32_t>(value));
  }

  TermKind kind : 3;

  std::uint32_t index() const { return is_wide_ == 0 ? bits_ : wide_index(); }
  std::int32_t value() const { return static_cast<std::int32_t>(index()); }
  bool is_variable() const { return kind == TermKind::kVariable; }
  // "*" or "$", which stand for a place in an argument pattern.
  bool is_marker() const { return kind == TermKind::kAsterisk || kind == TermKind::kDollar; }

  // The names that constants index: those of the run, in first-seen order.
  static NameTable& Constants() { return names(); }

  static TERMT variable(std::uint32_t number) {
    return {TermKind::kVariable, static_cast<std::int32_t>(number)};
  }
  static TERMT constant(NameId name) {
    return {TermKind::kConstant, static_cast<std::int32_t>(to_index(name))};
  }
  static TERMT integer(std::int32_t value) { return {TermKind::kInteger, value}; }
  static TERMT absent() { return {TermKind::kAbsent, 0}; }
  static TERMT asterisk() { return {TermKind::kAsterisk, 0}; }
  static TERMT dollar() { return {TermKind::kDollar, 1}; }
  static TERMT anonymous();    // takes a fresh variable number

  // Equal kinds and, unless the term is absent, equal values.
  friend bool operator==(const TERMT& a, const TERMT& b) {
    return a.kind == b.kind &&
           (a.kind == TermKind::kAbsent || (a.is_wide_ == b.is_wide_ && a.bits_ == b.bits_));
  }

 private:
  static constexpr std::uint32_t kFirstWide = 1U << 28U;

  void set_wide(std::uint32_t value);
  std::uint32_t wide_index() const;

  std::uint32_t is_wide_ : 1;
  std::uint32_t bits_ : 28;    // the value, or the number of a wide one
};
static_assert(sizeof(TERMT) == 4);

// The values that do not fit a term itself, by numbers of their own: an equal value has an equal
// number.
class WideValues {
 public:
  // Ends as for want of memory when there are more numbers than a term can hold.
  std::uint32_t number_of(std::uint32_t value);
  std::uint32_t value(std::uint32_t number) const { return values_[number]; }

 private:
  std::vector<std::uint32_t> values_;
  std::unordered_map<std::uint32_t, std::uint32_t> numbers_;
};

WideValues& wide_values();

// The numbers that variable names have now. A query's end forgets the names and starts again at 0;
// older clauses keep the numbers that they were built with (see getVariableName).
class VariableNumbering {
 public:
  struct Entry {
    std::uint32_t number;
    bool is_new;
  };
  Entry enter(NameId name);                           // a new name takes the next number
  std::uint32_t fresh_number() { return next_++; }    // a number that no name has
  void reset();
  // A number that nothing had before, in this numbering or before any reset of it.
  std::uint32_t unused_number();

 private:
  struct Slot {
    std::uint32_t epoch;
    std::uint32_t number;
  };
  std::vector<Slot> slots_;    // by name id; valid only when of the current epoch
  std::uint32_t epoch_ = 1;    // so that a reset costs nothing, however many names there are
  std::uint32_t next_ = 0;
  std::uint32_t highest_ = 0;    // where next_ stood highest before a reset
};

// Every variable name of the run with the number that it had when it was first registered.
class VariableRegistry {
 public:
  void enter(NameId name, std::uint32_t number);    // a known name keeps its first number
  // The earliest registered name that had this number; nothing when none had it.
  std::optional<NameId> name_of(std::uint32_t number) const;
  std::uint32_t size() const { return registered_.size(); }

 private:
  NameNumbering registered_;
  std::vector<std::uint32_t> first_name_;    // by number: name id + 1, 0 for none
};

VariableNumbering& LocalVariables();
VariableRegistry& Variables();

// The term of a text: a variable when it begins with an upper-case letter, else a constant. Enters
// it in the tables.
TERMT newTERMT(std::string_view text);
TERMT newTERMT(NameId name);

// The name under which a variable prints: the earliest registered name that had its number. Ends
// the run with status 1, without a word, when no name had it.
NameId name_of_variable(std::uint32_t number);
std::string_view getVariableName(std::uint32_t number);

// The pattern with every "*" replaced by the next actual term and every "$" dropped, and then the
// actual terms left over. A "*" that finds no actual term left is dropped.
std::vector<TERMT> getTerms(std::span<const TERMT> actual, std::span<const TERMT> pattern);

// Appends the variables inside the function term f, at any depth, in order, repeats kept.
void variablesInFunctionTerm(std::vector<TERMT>& out, const TERMT& f);

// The first of Var<start>, Var<start+1>, ... that is not the printed name of a variable among the
// terms.
std::string getNameTerm(std::span<const TERMT> terms, int start);

// A name made from a term: the variable's name and n, or "C_const_" and n for any other term.
std::string getNewName(int n, const TERMT& term);

// A guard as newAggregate takes it: the term, and whether the guard is inclusive.
std::pair<TERMT, bool> standardizeGuard(const TERMT& term, bool is_inclusive);

}    // namespace zarel
