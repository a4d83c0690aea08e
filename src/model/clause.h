#pragma once
// clause.h - rules, constraints, weak constraints, and the clause that is any of them.

#include <cstdint>
#include <span>
#include <utility>
#include <variant>

#include "model/atom.h"
#include "model/literal.h"
#include "model/origin.h"
#include "model/program_storage.h"

namespace zarel {

// A list in the program's storage that a copy duplicates: what one clause changes in place, no
// other one sees.
template <class T>
class OwnList {
 public:
  OwnList() : list_{} {}
  explicit OwnList(StoredList<T> list) : list_(list) {}
  OwnList(const OwnList& other) : list_(program_storage().store(other.list_.elements())) {}
  OwnList(OwnList&& other) noexcept : list_(std::exchange(other.list_, StoredList<T>{})) {}
  OwnList& operator=(OwnList other) noexcept {
    std::swap(list_, other.list_);
    return *this;
  }
  ~OwnList() = default;

  std::span<const T> elements() const { return list_.elements(); }
  std::span<T> elements() { return list_.elements(); }

 private:
  StoredList<T> list_;
};

// The stored form of a conjunction: its elements in order, non-negated ones first.
template <class T>
StoredList<T> store(const TCONJUNCTION<T>& conjunction) {
  StoredList<T> list = program_storage().make_list<T>(conjunction.size());
  const auto behind = std::uninitialized_copy(
      conjunction.positive().begin(), conjunction.positive().end(), list.elements().begin());
  std::uninitialized_copy(conjunction.negated().begin(), conjunction.negated().end(), behind);
  return list;
}

// A rule: head disjuncts, and body literals with the non-negated ones first. A rule without body is
// a fact.
template <class Atom, class Literal>
class TRULE {
 public:
  TRULE() = default;
  // With copies of the given head and body; null: no body.
  TRULE(std::span<const Atom> head, const TCONJUNCTION<Literal>* body)
      : head_(program_storage().store(head)) {
    if (body != nullptr) body_ = OwnList<Literal>(store(*body));
  }

  // Holds copies of the given head and body; null leaves that part out.
  void init(const TDISJUNCTION<Atom>* head, const TCONJUNCTION<Literal>* body) {
    const std::span<const Atom> atoms =
        head == nullptr ? std::span<const Atom>{} : std::span<const Atom>(head->atoms());
    *this = TRULE(atoms, body);
  }

  std::span<const Atom> head() const { return head_.elements(); }
  std::span<const Literal> body() const { return body_.elements(); }
  std::span<Literal> body() { return body_.elements(); }

  // Whether the body binds every variable of the head and is safe itself; see established.h.
  bool isSafe() const;

 private:
  OwnList<Atom> head_;
  OwnList<Literal> body_;
};

template <class Literal>
class TCONSTRAINT {
 public:
  explicit TCONSTRAINT(const TCONJUNCTION<Literal>& body) : body_(store(body)) {}
  std::span<const Literal> body() const { return body_.elements(); }
  std::span<Literal> body() { return body_.elements(); }

 private:
  OwnList<Literal> body_;
};

// What a weak constraint costs. A part that was not written is an absent term.
struct WeakCost {
  TERMT weight;    // an integer is held multiplied by 1000, as an unsigned number
  TERMT level;     // as written
};
inline constexpr std::uint32_t kWeightScale = 1000;

template <class Literal>
class TWEAKCONSTRAINT_T {
 public:
  TWEAKCONSTRAINT_T(const TCONJUNCTION<Literal>& body, const WeakCost& cost)
      : body_(store(body)), cost_(program_storage().store_value(cost)) {}
  std::span<const Literal> body() const { return body_.elements(); }
  std::span<Literal> body() { return body_.elements(); }
  const TERMT& weight() const { return cost_->weight; }
  const TERMT& level() const { return cost_->level; }

 private:
  OwnList<Literal> body_;
  PackedPointer<const WeakCost> cost_;    // never changed, so copies share it
};

// A rule of one head atom and nothing else, which most clauses are: it holds the atom itself.
template <class Atom>
class TFACT {
 public:
  explicit TFACT(const Atom& atom) : atom_(atom) {}
  std::span<const Atom> head() const { return {&atom_, 1}; }

 private:
  Atom atom_;
};

using Literal = TLITERAL<ATOMT>;
using Body = TCONJUNCTION<Literal>;
using Head = TDISJUNCTION<ATOMT>;
using Rule = TRULE<ATOMT, Literal>;
using Fact = TFACT<ATOMT>;
using Constraint = TCONSTRAINT<Literal>;
using WeakConstraint = TWEAKCONSTRAINT_T<Literal>;

// The rule: head :- body; null leaves that part out.
inline Rule rule_of(const Head* head, const Body* body) {
  Rule rule;
  rule.init(head, body);
  return rule;
}
inline Rule rule_of(const ATOMT& head, const Body& body) {
  Head heads;
  heads.add(head);
  return rule_of(&heads, &body);
}

// One clause of the program and where it came from.
class CLAUSET {
 public:
  // In the order of the payload's alternatives.
  enum class Kind : std::uint32_t { kRule = 0, kMaxint = 1, kConstraint = 2, kWeakConstraint = 3 };
  // A fact is a rule, too: it has no kind of its own.
  using Payload = std::variant<Rule, TERMT, Constraint, WeakConstraint, Fact>;

  // The rule of these disjuncts and this body (null: none).
  static Payload rule_payload(std::span<const ATOMT> head, const Body* body) {
    if (head.size() == 1 && body == nullptr) return Fact(head.front());
    return Rule(head, body);
  }

  CLAUSET(Payload payload, const ClauseSource& source)
      : payload_(std::move(payload)), source_(source) {}

  Kind kind() const {
    return std::holds_alternative<Fact>(payload_) ? Kind::kRule
                                                  : static_cast<Kind>(payload_.index());
  }
  const Payload& payload() const { return payload_; }
  Payload& payload() { return payload_; }
  const ClauseSource& source() const { return source_; }

  // Of a clause of any kind; empty where it has none.
  std::span<const ATOMT> head() const { return std::visit(HeadOf{}, payload_); }
  std::span<const Literal> body() const { return std::visit(BodyOf{}, payload_); }
  std::span<Literal> body() { return std::visit(BodyOf{}, payload_); }

 private:
  struct HeadOf {
    std::span<const ATOMT> operator()(const Rule& rule) const { return rule.head(); }
    std::span<const ATOMT> operator()(const Fact& fact) const { return fact.head(); }
    template <class Clause>
    std::span<const ATOMT> operator()(const Clause& /*headless*/) const {
      return {};
    }
  };
  struct BodyOf {
    std::span<const Literal> operator()(const TERMT& /*maxint*/) const { return {}; }
    std::span<Literal> operator()(TERMT& /*maxint*/) const { return {}; }
    std::span<const Literal> operator()(const Fact& /*fact*/) const { return {}; }
    std::span<Literal> operator()(Fact& /*fact*/) const { return {}; }
    template <class Clause>
    decltype(std::declval<Clause&>().body()) operator()(Clause& clause) const {
      return clause.body();
    }
  };

  Payload payload_;
  ClauseSource source_;
};
static_assert(sizeof(CLAUSET) == 36);

}    // namespace zarel
