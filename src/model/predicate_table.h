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

// A row for each builtin: all that is known of it by its kind.
struct Builtin {
  BUILTIN code;
  std::string_view name;
  std::uint32_t arity;
  bool is_comparison;    // one that binds no variable
  bool is_equality;      // but what stands beside a constant or an integer
};
inline constexpr std::array kBuiltins = {
    Builtin{BUILTIN::kEqual, "==", 2, true, true},
    Builtin{BUILTIN::kNotEqual, "!=", 2, true, false},
    Builtin{BUILTIN::kLess, "<", 2, true, false},
    Builtin{BUILTIN::kGreater, ">", 2, true, false},
    Builtin{BUILTIN::kLessOrEqual, "<=", 2, true, false},
    Builtin{BUILTIN::kGreaterOrEqual, ">=", 2, true, false},
    Builtin{BUILTIN::kInt, "#int", 1, false, false},
    Builtin{BUILTIN::kSucc, "#succ", 2, false, false},
    Builtin{BUILTIN::kPlus, "+", 3, false, false},
    Builtin{BUILTIN::kTimes, "*", 3, false, false},
};
inline constexpr std::size_t kBuiltinCount = kBuiltins.size();

// Whether each row of the table stands at the number of its code.
template <class Table>
constexpr bool is_in_order_of_codes(const Table& table) {
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (static_cast<std::size_t>(table[i].code) != i) return false;
  }
  return true;
}
static_assert(is_in_order_of_codes(kBuiltins));

// The builtin that has this predicate; null for another predicate.
constexpr const Builtin* builtin_of(std::uint32_t predicate) {
  return predicate < kBuiltins.size() ? &kBuiltins[predicate] : nullptr;
}

class PredicateTable {
 public:
  using Type = PREDICATE_NAMETS::TYPE;

  // The number of a predicate used with this arity in this role; a new name takes the next number.
  // A known one is checked: an arity that differs (with OptionArityCheck) and an EDB predicate used
  // as IDB or the reverse write a message and end the run with status 1. A role first seen where it
  // was undecided is settled.
  std::uint32_t enter(NameId name, std::uint32_t arity, Type type);

  // The same for the "@" predicate of a template; any clash ends the run with status 1, but a
  // differing number of actual predicates does not when the run skips faulty statements.
  // `template_name` is for the message that this gets.
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
