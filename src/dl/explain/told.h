#pragma once
// told.h - an explanation in words: texts, places and how they hang together; nothing of how it was
// found. What writes it as text, as data or as a picture looks at nothing else.

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace dl {

struct ToldPlace {
  std::string file;    // empty: not known
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::uint32_t end_line = 0;      // 0: not known
  std::uint32_t end_column = 0;    // of the last character
  // Where that was used that stands there, the innermost first: the invocations of templates.
  std::vector<ToldPlace> uses = {};
  std::string used = {};    // what is used: a template's name; empty where `uses` is
};

// A statement of the user's.
struct ToldStatement {
  ToldPlace place;
  std::string text;    // as written, on one line
};

using ToldValues = std::vector<std::pair<std::string, std::string>>;    // variable, value

// Proofs.
enum class ToldKind : std::uint8_t { kFact, kRule, kChoice, kCases, kAssumed, kNotExplained };

struct ToldItem {
  enum class Kind : std::uint8_t {
    kAtom,          // `node` has its proof
    kNegation,      // "not p(a)"
    kComparison,    // "30 != 31": comparisons and arithmetic
    kAggregate
  };
  Kind kind = Kind::kComparison;
  std::string text;
  std::optional<std::uint32_t> node;
  std::string value;    // of an aggregate, where it has one
  struct Element {
    std::string tuple;
    std::vector<std::uint32_t> nodes;
  };
  std::vector<Element> elements;
  std::uint32_t others = 0;      // elements that count, too
  std::uint32_t unneeded = 0;    // elements
};

struct ToldNode {
  ToldKind kind = ToldKind::kNotExplained;
  std::string atom;
  std::string key;    // the atom as the solver has it, the same for the same atom
  std::optional<std::uint32_t> statement;    // in ToldProof::statements
  ToldValues with;
  std::vector<ToldItem> items;
  bool is_cut = false;    // its items and cases are not told: they lie beyond the depth asked for
  std::vector<std::string> instead_of;    // of a choice: the head's other atoms
  struct Case {
    std::string assumed;
    std::uint32_t node;
  };
  std::vector<Case> cases;
};

struct ToldProof {
  std::vector<ToldStatement> statements;    // each once: many nodes may come from one
  std::vector<ToldNode> nodes;
  std::vector<std::uint32_t> roots;
};

// What is missing.
struct ToldFailure {
  ToldStatement statement;
  ToldValues with;
  struct Literal {
    enum class State : std::uint8_t { kHolds, kFails, kOpen };
    State state = State::kHolds;
    std::string text;
    std::string value;                   // of an aggregate
    std::vector<std::string> because;    // of a failing "not p": what holds, "p(a)    [fact, f:3]"
  };
  std::vector<Literal> literals;
  std::vector<std::string> other_heads;    // that hold, where the body does
  std::uint64_t bindings = 1;              // that come as near
  bool was_cut = false;
};

struct ToldMissing {
  std::string atom;
  std::string key;
  std::vector<ToldFailure> rules;
  std::vector<ToldStatement> other_rules;    // that give other atoms of the predicate
  bool has_other_facts = false;
  std::vector<std::string> similar;    // names with the number of arguments, "free/1"
  std::string contrary;                // that holds
};

// An instance of a constraint or of a weak constraint; a clash of an atom and its strong negation.
struct ToldInstance {
  std::optional<ToldStatement> statement = {};
  ToldValues with = {};
  std::string clash = {};     // "flies(tweety) and -flies(tweety)"
  std::uint64_t times = 1;    // with equal visible values
};

// Conflicts, in parts: each is told when it is found. Where a demand is told, that an atom holds,
// they are about the answer sets that hold it.
enum class ToldOutcome : std::uint8_t {
  kNone,           // no conflict: there is an answer set
  kConstraints,    // without some constraints or clashes there is one
  kRules,          // none even without all of them: a loop through negation
  kUnknown         // the time was over
};

// Constraints, clashes, or rules by their lines. What is not proven need not be the fewest, or the
// smallest that do not go together.
struct ToldLines {
  std::vector<ToldStatement> statements;
  std::vector<std::string> clashes;    // predicates with the number of arguments, "flies/1"
  bool is_proven = true;
};

struct ToldInstances {
  std::vector<ToldInstance> instances;
  bool is_proven = true;
};

// Costs: by level, the highest first.
struct ToldCost {
  std::int64_t level = 0;
  std::int64_t cost = 0;
};
using ToldCosts = std::vector<ToldCost>;

// What an answer set pays for an instance of a weak constraint.
struct ToldPayment {
  std::int64_t level = 0;
  std::int64_t weight = 0;    // of all its times together
  ToldInstance instance;
};

// What the best answer set costs that does not pay for a payment.
struct ToldAvoidance {
  enum class Outcome : std::uint8_t {
    kSameCost,    // another best answer set
    kDearer,
    kUnproven,    // the best that the time allowed
    kNever,       // no answer set avoids it
    kCut          // nothing can be said: the time was over
  };
  Outcome outcome = Outcome::kCut;
  ToldCosts costs;                     // of that answer set
  std::vector<ToldPayment> instead;    // what it pays that the explained one does not
  std::uint64_t others = 0;            // that it pays besides and that are not told
};

}    // namespace dl
