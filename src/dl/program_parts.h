#pragma once
// program_parts.h - what can be written only when the whole input is known, and what the reader of
// answers needs to know.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "base/diagnostic.h"
#include "dl/sources.h"

namespace dl {

struct Signature {
  std::string name;    // as predicate_of() gives it
  std::uint32_t arity = 0;
  bool strongly_negated = false;
};

// The predicates of all heads, in the order in which they were first seen: nothing else can be in
// an answer set.
class Signatures {
 public:
  void add(std::string_view name, std::uint32_t arity, bool strongly_negated);
  const std::vector<Signature>& all() const { return all_; }

 private:
  std::vector<Signature> all_;
  std::unordered_set<std::string> seen_;
  std::string key_;
};

// A weak constraint waits for the end of the input: its form depends on all others (see Note
// [levels of variables]).
struct WeakConstraint {
  std::string body;
  std::string weight;
  std::string level;
  std::string tuple;    // its number and the variables of its body
  zarel::SourceLocation location;
};

struct Query {
  std::vector<std::string> variables;    // in the order of the answer's values
  FileRange range;
  std::uint32_t line;    // see Note [lines as shown]
};

// What can be wrong with the integers of an answer set: see Note [no integer wraps].
enum class FaultKind { kOverflow, kSum, kMeasure };
struct Fault {
  FaultKind kind;
  FileRange range;
  std::uint32_t line;    // see Note [lines as shown]
};

// What is known of a program before its first statement is translated.
struct Traits {
  bool has_query = false;
  bool has_weak_constraints = false;
  bool has_sums = false;    // #sum or #avg
  bool has_bound = false;
  bool has_several_levels = false;    // of weak constraints, or may have
};

// What the translation of a whole program leaves behind.
struct ProgramParts {
  Traits traits;
  Signatures signatures;
  std::vector<WeakConstraint> weak_constraints;
  std::optional<Query> query;
  std::optional<std::int64_t> bound;    // of integers
  std::vector<Fault> faults;            // by the argument of _fault
  std::vector<std::int64_t> levels;     // of all weak constraints, highest first
  bool variable_levels = false;
  // Where the counted rules stand, by the first argument of _i: see Note [counted instances].
  std::vector<zarel::SourceLocation> counted;
  std::unordered_set<std::string>
      facts;    // their text, kept only where they are left out of the answers
};

zarel::Diagnostic diagnostic_of(const Fault& fault, const Sources& sources);

}    // namespace dl
