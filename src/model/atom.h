#pragma once
// atom.h - atoms of every kind, and how each is built.

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <utility>

#include "base/place.h"
#include "model/literal.h"
#include "model/predicate_table.h"
#include "model/program_storage.h"
#include "model/term.h"

namespace zarel {

struct AGGREGATEPREDT;
struct EXTERNAL_ATOM;
struct INVOCATIONATOM;
struct InvocationPayload;

// One atom: a predicate, and arguments or what else its kind holds. Arguments and payloads are
// never changed once they are made (with_terms makes another atom), so that a copy of an atom is
// sixteen bytes and as good as a deep one. A default-made atom has no meaning; it is there for the
// parser's value stack.
class ATOMT {
 public:
  enum class Payload : std::uint32_t { kTerms = 0, kAggregate, kInvocation, kExternal };

  // The predicates of the run.
  static PredicateTable& Predicates();

  ATOMT() = default;

  // Enters the predicate (see PredicateTable::enter for what may end the run) and copies the terms.
  ATOMT(std::string_view name, std::span<const TERMT> terms, PREDICATE_NAMETS::TYPE type);
  ATOMT(NameId name, std::span<const TERMT> terms, PREDICATE_NAMETS::TYPE type);
  ATOMT(NameId name, StoredList<TERMT> terms,
        PREDICATE_NAMETS::TYPE type);    // takes the list as it is

  // The marker atom that stands in a body for a template invocation: the predicate "@" and the
  // template's name.
  explicit ATOMT(const INVOCATIONATOM& invocation);

  // An external atom: "&", a name and two term lists.
  static ATOMT external(std::string_view name, std::span<const TERMT> bracketed,
                        std::span<const TERMT> terms);

  std::uint32_t predicate() const { return predicate_; }
  std::string_view name() const { return Predicates().name(predicate_); }    // the predicate's
  std::uint32_t asterisk_count() const { return asterisks_; }
  Payload payload() const { return static_cast<Payload>(payload_); }
  bool is_aggregate() const { return payload() == Payload::kAggregate; }

  // The argument list: an invocation's output terms, an external atom's second list; none for an
  // aggregate.
  std::span<const TERMT> terms() const {
    return payload() == Payload::kTerms ? of_.terms.elements() : terms_of_payload();
  }
  // The same, to be changed: only of an atom with plain terms that was just made, since its copies
  // share them.
  std::span<TERMT> own_terms() { return of_.terms.elements(); }
  const AGGREGATEPREDT& aggregate() const { return *of_.aggregate; }         // only for aggregates
  const InvocationPayload& invocation() const { return *of_.invocation; }    // only for invocations
  const EXTERNAL_ATOM& external_atom() const {
    return *of_.external_atom;
  }    // only for external atoms

  // The same predicate over other terms, the asterisk count as given; for atoms that have plain
  // terms.
  ATOMT with_terms(StoredList<TERMT> terms, std::uint32_t asterisks) const;

 private:
  friend ATOMT newBuiltin(BUILTIN, std::span<const TERMT>);
  friend ATOMT newAggregate(const std::pair<TERMT, bool>&, const std::pair<TERMT, bool>&,
                            const AGGREGATEPREDT&, bool, bool, bool);

  ATOMT(std::uint32_t predicate, Payload payload)
      : predicate_(predicate), asterisks_(0), payload_(static_cast<std::uint32_t>(payload) & 3U) {}

  std::span<const TERMT> terms_of_payload() const;

  union Content {
    StoredList<TERMT> terms;
    PackedPointer<const AGGREGATEPREDT> aggregate;
    PackedPointer<const InvocationPayload> invocation;
    PackedPointer<const EXTERNAL_ATOM> external_atom;
  };

  std::uint32_t predicate_;
  std::uint32_t asterisks_ : 30;    // arguments that are the "*" marker
  std::uint32_t payload_ : 2;
  Content of_;
};
static_assert(sizeof(ATOMT) == 16);

enum class AggregateFunction : std::uint32_t { kAny = 0, kAvg, kCount, kMax, kMin, kSum, kTimes };

// A row for each function of aggregates.
struct AggregateKind {
  AggregateFunction code;
  std::string_view name;
};
inline constexpr std::array kAggregateKinds = {
    AggregateKind{AggregateFunction::kAny, "#any"},
    AggregateKind{AggregateFunction::kAvg, "#avg"},
    AggregateKind{AggregateFunction::kCount, "#count"},
    AggregateKind{AggregateFunction::kMax, "#max"},
    AggregateKind{AggregateFunction::kMin, "#min"},
    AggregateKind{AggregateFunction::kSum, "#sum"},
    AggregateKind{AggregateFunction::kTimes, "#times"},
};
static_assert(is_in_order_of_codes(kAggregateKinds));

constexpr std::string_view aggregate_name(AggregateFunction function) {
  return kAggregateKinds[static_cast<std::size_t>(function)].name;
}

struct AggregateGuard {
  TERMT term;
  bool is_inclusive;
};

struct AGGREGATEPREDT {
  AggregateGuard lower;
  AggregateGuard upper;
  AggregateFunction function;
  StoredList<TERMT> terms;             // before the colon
  StoredList<TLITERAL<ATOMT>> body;    // non-negated literals first
  bool is_equality;                    // the guard is printed " = "
  bool has_lower;
  bool has_upper;
};

struct InvocationPayload {
  NameId name;    // the template's, without the "@"
  StoredList<TERMT> terms;
  StoredList<ATOMT> actuals;
  std::uint32_t expansion_key;    // the invocation's
  SourceSpan written;             // no part of what it means
};

struct EXTERNAL_ATOM {
  NameId name;
  StoredList<TERMT> bracketed;
  StoredList<TERMT> terms;
};

// A builtin atom over the given terms; the predicate table is not asked.
ATOMT newBuiltin(BUILTIN code, std::span<const TERMT> terms);

// The strongly negated atom: the predicate "-" and the name, noted in NegativeAtoms.
ATOMT newNegativeATOMT(std::string_view name, std::span<const TERMT> terms);

// An aggregate atom: the function, terms and body of `aggregate` with these guards (made by
// standardizeGuard) and flags.
ATOMT newAggregate(const std::pair<TERMT, bool>& lower, const std::pair<TERMT, bool>& upper,
                   const AGGREGATEPREDT& aggregate, bool has_lower, bool has_upper,
                   bool is_equality);

}    // namespace zarel
