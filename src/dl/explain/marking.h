#pragma once
// marking.h - marks the points that are there, forwards from instances that rest on facts alone.
//
// Note [marks]
// A point is marked by an instance whose points are all marked before it: so what the marks tell is
// never a circle. Marked by cost, each atom has the least proof that the instances allow, counting
// its atoms as often as they are used.

#include <cstdint>
#include <vector>

#include "dl/explain/interrupted.h"
#include "dl/explain/support_graph.h"

namespace dl {

enum class MarkingOrder : std::uint8_t {
  kFound,    // breadth first; instances that are added are taken in as they come
  kCost      // the cheapest first
};

// Why a point is marked.
class Reason {
 public:
  enum Kind : std::uint32_t { kNone, kInstance, kQuota, kLemma, kAssumed };
  Reason() = default;
  explicit Reason(Kind kind, std::uint32_t number = 0) : bits_(number << 3 | kind) {}
  Kind kind() const { return static_cast<Kind>(bits_ & 7); }
  std::uint32_t number() const { return bits_ >> 3; }    // of the instance or lemma

 private:
  std::uint32_t bits_ = kNone;
};

class Marking {
 public:
  // The first instance of the graph, which must outlive the marking, is the goal.
  Marking(const SupportGraph& graph, MarkingOrder order, NeedKind needs)
      : graph_(graph), order_(order), needs_(needs) {}

  // Marks all that follows, also from what was added to the graph, until the goal is reached. Both
  // throw Interrupted.
  void run_to_goal();
  // Marks all that follows, the goal or not.
  void run();

  // Marks the point for this reason, without what follows.
  void mark(Point point, Reason reason) { mark(point, reason, 0); }
  // Takes back all marks but the first ones. All that follows must have been marked.
  void keep(std::size_t marks);

  bool has_reached_goal() const { return waiting_of_instances_.front() == 0; }
  bool is_marked(Point point) const { return reasons_[point].kind() != Reason::kNone; }
  Reason reason(Point point) const { return reasons_[point]; }
  // Greater for points that were marked later, from 1.
  std::uint32_t order(Point point) const { return orders_[point]; }
  // All marks, in this order.
  const std::vector<Point>& marks() const { return marks_; }
  // Whether all that the split rests on is marked.
  bool is_open(std::uint32_t split) const { return waiting_of_splits_[split] == 0; }
  // What was looked at altogether.
  std::uint64_t steps() const { return steps_; }

 private:
  using Cost = std::uint64_t;
  struct Ready {
    Cost cost;
    Point point;
    Reason reason;
    bool operator<(const Ready& other) const {    // for a heap with the cheapest, oldest in front
      if (cost != other.cost) return cost > other.cost;
      return reason.number() > other.reason.number();
    }
  };
  void take_in();
  void take_in_quotas();
  void take_in_options(std::size_t first);
  void take_in_instances(std::size_t first);
  std::uint32_t& waiting(Owner owner);
  void mark(Point point, Reason reason, Cost cost);
  void advance(Owner owner, Cost cost);
  void take_back(Owner owner);
  void hold(std::uint32_t option);
  bool has_ready() const { return next_ready_ < ready_.size(); }
  void push(const Ready& ready);
  Ready pop();
  bool is_by_cost() const { return order_ == MarkingOrder::kCost; }
  std::uint32_t weight_of(std::uint32_t tuple) const {
    return graph_.tuples()[tuple].weights[static_cast<std::size_t>(needs_)];
  }

  const SupportGraph& graph_;
  InterruptionCheck interruption_;
  MarkingOrder order_;
  NeedKind needs_;
  std::vector<Reason> reasons_;          // by point
  std::vector<std::uint32_t> orders_;    // by point
  std::vector<Point> marks_;
  std::uint32_t clock_ = 0;
  std::uint64_t steps_ = 0;
  // How many points each still waits for; each use that was taken in counts.
  std::vector<std::uint32_t> waiting_of_instances_, waiting_of_options_, waiting_of_splits_;
  std::size_t taken_uses_ = 0;
  std::vector<std::uint32_t> held_options_;    // by tuple: how many of its options are there
  std::vector<std::int64_t> left_;             // by quota: the weight that it still needs
  // By cost alone:
  std::vector<Cost> instance_costs_, option_costs_, quota_costs_;
  std::vector<Ready> ready_;    // a heap by cost, else a queue that begins at next_ready_
  std::size_t next_ready_ = 0;
};

}    // namespace dl
