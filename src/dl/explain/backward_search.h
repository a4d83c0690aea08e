#pragma once
// backward_search.h - goes back from the atoms asked for to what could support them, layer by layer.
//
// Note [aggregates once]
// Thousands of instances can ask for the same aggregate over thousands of elements. So aggregates
// are left out where a body is joined, and looked at here behind it, once for the same values. Those
// that give a variable its value stay in the join, as do all where integers up to the bound are
// gone through, which a join does not do with literals left out.

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "dl/explain/atom_finder.h"
#include "dl/explain/body_evaluator.h"
#include "dl/explain/head_index.h"
#include "dl/explain/support_graph.h"

namespace dl {

class BackwardSearch {
 public:
  // All must outlive the search.
  BackwardSearch(BodyEvaluator& evaluator, GroundTerms& terms, AnswerIndex& index,
                 const StatementStore& store, HeadIndex& heads, SupportGraph& graph);

  // What is asked for, once: that these atoms hold, or the instance of a body that holds.
  void ask(std::span<const AtomNumber> atoms);
  void ask(StatementNumber statement, const Binding& binding);

  // Adds the instances that could support the atoms met last. Returns false when none are left.
  bool expand_layer();
  // From now on looks at what splits rest on, too. What was met before is made good.
  void take_in_splits();
  // Whether the atom has been met, so that all that could support it has been looked at when no
  // layer is left.
  bool has_met(AtomNumber atom) const { return is_met_[atom] != 0; }
  // Whether some quota needs less than what it tells of.
  bool has_two_needs() const { return has_two_needs_; }

 private:
  // What a body or an element rests on.
  struct Basis {
    std::vector<Point> points;
    std::uint32_t facts = 0;
    void clear() {
      points.clear();
      facts = 0;
    }
  };
  // Quotas are shared by the instances that ask for the same.
  struct QuotaKey {
    const StoredLiteral* literal;
    std::vector<GroundTerm> values;
    bool operator==(const QuotaKey&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const QuotaKey& key) const;
  };

  void expand(AtomNumber atom);
  void expand(AtomNumber atom, const HeadUse& use);
  bool add_instance(AtomNumber atom, const HeadUse& use, const Binding& binding);
  bool is_alone(AtomNumber atom, const HeadUse& use, const Binding& binding);
  void base_on_body(std::uint32_t split);
  void base(Owner owner, const Basis& on);
  void meet(AtomNumber atom);
  bool is_fact(AtomNumber atom) const { return store_.fact(atom).file != zarel::kNoFile; }
  // Each adds what the literals rest on to `basis` and returns whether all of it is there. `known`
  // has the atoms of literals that were found before, by literal, or nothing.
  bool collect_body(const StoredStatement& statement, const Binding& binding,
                    std::span<const AtomNumber> known, Basis& basis);
  void collect(AtomNumber atom, Basis& basis);
  bool collect_atom(const StoredStatement& statement, const StoredLiteral& literal,
                    const Binding& binding, Basis& basis);
  bool collect_any(const StoredStatement& statement, const StoredLiteral& literal,
                   const Binding& binding, Basis& basis);
  const std::vector<char>& left_out(StatementNumber statement);
  bool aggregates_hold(StatementNumber statement, const Binding& binding);
  QuotaKey key_of(const StoredStatement& statement, const StoredLiteral& literal,
                  const Binding& binding);
  // kNothing where the aggregate does not hold.
  Point quota_of(const StoredStatement& statement, const StoredLiteral& literal,
                 const Binding& binding);
  void add_option(std::uint32_t tuple, const StoredStatement& statement,
                  const StoredAggregate& aggregate, const Binding& binding);

  BodyEvaluator& evaluator_;
  GroundTerms& terms_;
  AnswerIndex& index_;
  const StatementStore& store_;
  HeadIndex& heads_;
  SupportGraph& graph_;
  AtomFinder atoms_;
  std::vector<char> is_met_, is_expanded_;    // by atom
  std::vector<AtomNumber> met_;               // no facts among them
  std::size_t next_ = 0;                      // in met_
  bool takes_splits_ = false;
  bool has_two_needs_ = false;
  std::unordered_map<QuotaKey, Point, KeyHash> quotas_;
  // By statement: see Note [aggregates once].
  std::unordered_map<StatementNumber, std::vector<char>> left_out_;
  std::unordered_map<QuotaKey, bool, KeyHash> negated_;    // whether they hold
  Basis basis_;                                            // of the instance that is looked at
  Binding start_;
};

}    // namespace dl
