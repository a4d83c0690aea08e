#pragma once
// support_graph.h - the instances of rules that could support atoms, and what each rests on. There
// may be millions, so all of it lies in flat lists.
//
// Note [points]
// A point is what an instance rests on: an atom of the answer set, by its number, or, numbered
// behind all atoms, a quota: enough of several alternatives. An aggregate that holds is a quota,
// whose tuples weigh what its guards need; so is an atom with "_", of which any atom will do that
// matches. A tuple is there as soon as one of its options is: all points that this one rests on.
// Facts are no points, since nothing has to be found out about them.

#include <cstdint>
#include <span>
#include <vector>

#include "dl/explain/aggregate_need.h"

namespace dl {

using Point = std::uint32_t;
constexpr std::uint32_t kNothing = 0xffffffffu;

// An instance of a rule that gives the atom once its points are there, since its other head atoms
// are false.
struct Instance {
  StatementNumber statement = 0;
  std::uint32_t head = 0;
  AtomNumber atom = kNoAtom;    // none: an instance of a body that is asked for
  std::uint32_t binding = 0;    // see SupportGraph::binding()
  std::uint32_t facts = 0;      // that it rests on besides its points
};

// An instance of a disjunctive rule, several of whose head atoms are true.
struct Split {
  StatementNumber statement = 0;
  std::uint32_t binding = 0;
  std::uint32_t atoms = 0;    // see SupportGraph::atoms_of()
  std::uint32_t count = 0;
};

struct Quota {
  std::uint64_t needs[2]{};    // by NeedKind
};
struct QuotaTuple {
  std::uint32_t quota = 0;
  std::uint32_t weights[2]{};    // by NeedKind
};
struct TupleOption {
  std::uint32_t tuple = 0;
  std::uint32_t facts = 0;    // that it rests on besides its points
};

// What rests on a point.
class Owner {
 public:
  enum Kind : std::uint32_t { kInstance, kOption, kSplit };
  Owner(Kind kind, std::uint32_t number) : bits_(number << 2 | kind) {}
  Kind kind() const { return static_cast<Kind>(bits_ & 3); }
  std::uint32_t number() const { return bits_ >> 2; }

 private:
  std::uint32_t bits_;
};

struct PointUse {
  Point point;
  Owner owner;
  std::uint32_t next;    // of the same point, kNothing behind the last
};

class SupportGraph {
 public:
  // The statements and the answer set must not change while the graph is there.
  SupportGraph(const StatementStore& store, std::size_t atoms)
      : store_(store), atoms_(atoms), first_uses_(atoms, kNothing) {}

  // Each adds something and returns its number.
  std::uint32_t add_binding(const Binding& binding);
  std::uint32_t add(const Instance& instance) { return append(instances_, instance); }
  std::uint32_t add(Split split, std::span<const AtomNumber> atoms);
  std::uint32_t add(const Quota& quota);
  std::uint32_t add(const QuotaTuple& tuple) { return append(tuples_, tuple); }
  std::uint32_t add(const TupleOption& option) { return append(options_, option); }
  void add_use(Point point, Owner owner);

  std::size_t points() const { return first_uses_.size(); }
  bool is_quota(Point point) const { return point >= atoms_; }
  std::uint32_t quota_of(Point point) const { return static_cast<std::uint32_t>(point - atoms_); }
  Point point_of(std::uint32_t quota) const { return static_cast<Point>(atoms_ + quota); }

  const std::vector<Instance>& instances() const { return instances_; }
  const std::vector<Split>& splits() const { return splits_; }
  const std::vector<Quota>& quotas() const { return quotas_; }
  const std::vector<QuotaTuple>& tuples() const { return tuples_; }
  const std::vector<TupleOption>& options() const { return options_; }
  const std::vector<PointUse>& uses() const { return uses_; }
  std::uint32_t first_use(Point point) const { return first_uses_[point]; }
  std::span<const GroundTerm> binding(StatementNumber statement, std::uint32_t number) const;
  // The true atoms of its head, each once, in the order of the head.
  std::span<const AtomNumber> atoms_of(const Split& split) const;

 private:
  template <typename T>
  static std::uint32_t append(std::vector<T>& list, const T& value) {
    list.push_back(value);
    return static_cast<std::uint32_t>(list.size() - 1);
  }

  const StatementStore& store_;
  std::size_t atoms_;
  std::vector<Instance> instances_;
  std::vector<Split> splits_;
  std::vector<Quota> quotas_;
  std::vector<QuotaTuple> tuples_;
  std::vector<TupleOption> options_;
  std::vector<PointUse> uses_;
  std::vector<std::uint32_t> first_uses_;    // by point
  std::vector<GroundTerm> bindings_;
  std::vector<AtomNumber> split_atoms_;
};

}    // namespace dl
