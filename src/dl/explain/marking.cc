#include "dl/explain/marking.h"

#include <algorithm>

namespace dl {
namespace {

// Costs can double with each rule of a proof.
constexpr std::uint64_t kMostCost = std::uint64_t{1} << 62;

std::uint64_t sum(std::uint64_t left, std::uint64_t right) {
  return std::min(left + right, kMostCost);
}

}    // namespace

void Marking::run_to_goal() {
  take_in();
  while (!has_reached_goal() && has_ready()) {
    interruption_.step();
    const Ready next = pop();
    if (!is_marked(next.point)) mark(next.point, next.reason, next.cost);
  }
}

void Marking::run() {
  take_in();
  while (has_ready()) {
    interruption_.step();
    const Ready next = pop();
    if (!is_marked(next.point)) mark(next.point, next.reason, next.cost);
  }
}

void Marking::take_in() {
  reasons_.resize(graph_.points());
  orders_.resize(graph_.points());
  waiting_of_splits_.resize(graph_.splits().size());
  const std::size_t instances = waiting_of_instances_.size();
  const std::size_t options = waiting_of_options_.size();
  waiting_of_instances_.resize(graph_.instances().size());
  waiting_of_options_.resize(graph_.options().size());
  for (; taken_uses_ < graph_.uses().size(); ++taken_uses_) {
    const PointUse& use = graph_.uses()[taken_uses_];
    if (!is_marked(use.point)) ++waiting(use.owner);
  }
  take_in_quotas();
  take_in_options(options);
  take_in_instances(instances);
}

void Marking::take_in_quotas() {
  held_options_.resize(graph_.tuples().size());
  quota_costs_.resize(is_by_cost() ? graph_.quotas().size() : 0);
  for (auto quota = static_cast<std::uint32_t>(left_.size()); quota < graph_.quotas().size();
       ++quota) {
    const std::uint64_t need = graph_.quotas()[quota].needs[static_cast<std::size_t>(needs_)];
    left_.push_back(static_cast<std::int64_t>(need));
    if (need == 0) push({0, graph_.point_of(quota), Reason(Reason::kQuota, quota)});
  }
}

void Marking::take_in_options(std::size_t first) {
  if (is_by_cost()) {
    for (std::size_t i = option_costs_.size(); i < graph_.options().size(); ++i) {
      option_costs_.push_back(graph_.options()[i].facts);
    }
  }
  for (std::size_t i = first; i < waiting_of_options_.size(); ++i) {
    if (waiting_of_options_[i] == 0) hold(static_cast<std::uint32_t>(i));
  }
}

void Marking::take_in_instances(std::size_t first) {
  for (std::size_t i = first; i < waiting_of_instances_.size(); ++i) {
    const Instance& instance = graph_.instances()[i];
    const Cost cost = 1 + Cost{instance.facts};
    if (is_by_cost()) instance_costs_.push_back(cost);
    if (waiting_of_instances_[i] != 0 || instance.atom == kNoAtom) continue;
    push({cost, instance.atom, Reason(Reason::kInstance, static_cast<std::uint32_t>(i))});
  }
}

std::uint32_t& Marking::waiting(Owner owner) {
  switch (owner.kind()) {
    case Owner::kOption:
      return waiting_of_options_[owner.number()];
    case Owner::kSplit:
      return waiting_of_splits_[owner.number()];
    default:
      return waiting_of_instances_[owner.number()];
  }
}

void Marking::mark(Point point, Reason reason, Cost cost) {
  reasons_[point] = reason;
  orders_[point] = ++clock_;
  marks_.push_back(point);
  for (std::uint32_t i = graph_.first_use(point); i != kNothing; i = graph_.uses()[i].next) {
    advance(graph_.uses()[i].owner, cost);
    ++steps_;
  }
}

// One of the points that it waits for is there.
void Marking::advance(Owner owner, Cost cost) {
  const std::uint32_t number = owner.number();
  if (owner.kind() == Owner::kOption) {
    if (is_by_cost()) option_costs_[number] = sum(option_costs_[number], cost);
    if (--waiting_of_options_[number] == 0) hold(number);
    return;
  }
  if (owner.kind() == Owner::kSplit) {
    --waiting_of_splits_[number];
    return;
  }
  if (is_by_cost()) instance_costs_[number] = sum(instance_costs_[number], cost);
  if (--waiting_of_instances_[number] != 0) return;
  const AtomNumber atom = graph_.instances()[number].atom;
  if (atom == kNoAtom || is_marked(atom)) return;
  push({is_by_cost() ? instance_costs_[number] : 0, atom, Reason(Reason::kInstance, number)});
}

// The option is there, and with it its tuple.
void Marking::hold(std::uint32_t option) {
  const std::uint32_t tuple = graph_.options()[option].tuple;
  if (held_options_[tuple]++ != 0) return;
  const std::uint32_t quota = graph_.tuples()[tuple].quota;
  const std::uint32_t weight = weight_of(tuple);
  const bool was_needed = left_[quota] > 0;
  left_[quota] -= weight;
  if (!was_needed || weight == 0) return;
  if (is_by_cost()) quota_costs_[quota] = sum(quota_costs_[quota], option_costs_[option]);
  if (left_[quota] > 0) return;
  push({is_by_cost() ? quota_costs_[quota] : 0, graph_.point_of(quota),
        Reason(Reason::kQuota, quota)});
}

void Marking::keep(std::size_t marks) {
  while (marks_.size() > marks) {
    const Point point = marks_.back();
    marks_.pop_back();
    for (std::uint32_t i = graph_.first_use(point); i != kNothing; i = graph_.uses()[i].next) {
      take_back(graph_.uses()[i].owner);
    }
    reasons_[point] = Reason();
    orders_[point] = 0;
  }
}

void Marking::take_back(Owner owner) {
  const bool was_there = waiting(owner)++ == 0;
  if (owner.kind() != Owner::kOption || !was_there) return;
  const std::uint32_t tuple = graph_.options()[owner.number()].tuple;
  if (--held_options_[tuple] == 0) left_[graph_.tuples()[tuple].quota] += weight_of(tuple);
}

void Marking::push(const Ready& ready) {
  ready_.push_back(ready);
  if (is_by_cost()) std::push_heap(ready_.begin(), ready_.end());
}

Marking::Ready Marking::pop() {
  if (is_by_cost()) {
    std::pop_heap(ready_.begin(), ready_.end());
    const Ready next = ready_.back();
    ready_.pop_back();
    return next;
  }
  const Ready next = ready_[next_ready_++];
  if (next_ready_ == ready_.size()) {
    ready_.clear();
    next_ready_ = 0;
  }
  return next;
}

}    // namespace dl
