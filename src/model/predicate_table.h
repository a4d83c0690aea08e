#pragma once
// predicate_table.h - one entry for each predicate name: its number, its arity, what it is used
// for.

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "model/name_table.h"

namespace zarel {

struct PREDICATE_NAMETS {
  enum class TYPE : std::uint32_t {
    kUnknown = 0,    // seen only where its role is not decided
    kEdb = 1,        // an input predicate
    kIdb = 2,        // a defined predicate
    kBuiltin = 3,
    kAggregate = 4,
    kInvocation = 5,    // "@" and a template's name
    kExternal = 6,
  };
};

// The builtins hold the first ten predicate numbers, so a code is its predicate's number.
enum class BUILTIN : std::uint32_t {
  kEqual = 0,
  kNotEqual,
  kLess,
  kGreater,
  kLessOrEqual,
  kGreaterOrEqual,
  kInt,
  kSucc,
  kPlus,
  kTimes,
};
inline constexpr std::size_t kBuiltinCount = 10;
inline constexpr std::array<std::string_view, kBuiltinCount> builtin_name = {
    "==", "!=", "<", ">", "<=", ">=", "#int", "#succ", "+", "*"};
inline constexpr std::array<std::uint32_t, kBuiltinCount> builtin_arity = {2, 2, 2, 2, 2,
                                                                           2, 1, 2, 3, 3};

// True for the six comparisons, "==" to ">=".
constexpr bool is_comparison(std::uint32_t predicate) {
  return predicate <= static_cast<std::uint32_t>(BUILTIN::kGreaterOrEqual);
}

class PredicateTable {
 public:
  using Type = PREDICATE_NAMETS::TYPE;

  // The number of a predicate used with this arity in this role; a new name takes the next number.
  // A known one is checked: an arity that differs (with OptionArityCheck) and an EDB predicate used
  // as IDB or the reverse write a message and end the run with status 1. A role first seen where it
  // was undecided is settled.
  std::uint32_t enter(NameId name, std::uint32_t arity, Type type);

  // The same for the "@" predicate of a template; any clash ends the run with status 1.
  // `template_name` is for the message that a differing number of actual predicates gets.
  std::uint32_t enter_invocation(NameId name, std::uint32_t arity, std::string_view template_name);

  bool contains(std::string_view name) const;
  std::optional<std::uint32_t> find(std::string_view name) const;
  NameId name_id(std::uint32_t predicate) const { return numbering_.name(predicate); }
  std::string_view name(std::uint32_t predicate) const {
    return names().spelling(name_id(predicate));
  }
  std::uint32_t arity(std::uint32_t predicate) const { return entries_[predicate].arity; }
  Type type(std::uint32_t predicate) const { return entries_[predicate].type; }
  std::uint32_t size() const { return numbering_.size(); }

 private:
  struct Entry {
    std::uint32_t arity;
    Type type;
  };

  void check(std::uint32_t predicate, std::uint32_t arity, Type type);

  NameNumbering numbering_;
  std::vector<Entry> entries_;
};

// The option "-aritycheck": a predicate used with two arities ends the run.
bool OptionArityCheck();

// The numbers of the predicates that were built as strongly negated atoms.
std::set<std::uint32_t>& NegativeAtoms();

// Enters the ten builtins; called first, so that they get the numbers 0 to 9.
void register_builtins();

}    // namespace zarel
