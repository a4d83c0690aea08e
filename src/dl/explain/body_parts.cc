#include "dl/explain/body_parts.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <numeric>
#include <queue>
#include <utility>

namespace dl {
namespace {

constexpr std::uint32_t kNone = 0xffffffffu;

// Which literals belong together.
class Groups {
 public:
  explicit Groups(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), 0u);
  }
  std::uint32_t find(std::uint32_t item) {
    while (parents_[item] != item) item = parents_[item] = parents_[parents_[item]];
    return item;
  }
  // The group of the smallest item is that of both.
  void unite(std::uint32_t left, std::uint32_t right) {
    left = find(left);
    right = find(right);
    parents_[std::max(left, right)] = std::min(left, right);
  }

 private:
  std::vector<std::uint32_t> parents_;
};

template <typename Visit>
void for_each_variable(const StoredStatement& statement, PatternNumber pattern,
                       const Visit& visit) {
  std::vector<PatternNumber> open{pattern};
  while (!open.empty()) {
    const TermPattern& term = statement.terms[open.back()];
    open.pop_back();
    open.insert(open.end(), term.arguments.begin(), term.arguments.end());
    if (term.kind == TermPattern::Kind::kVariable) visit(term.variable);
  }
}

}    // namespace

BodyParts::BodyParts(const StoredStatement& statement, const Binding& start)
    : statement_(statement), numbers_(statement.variables.size(), kNone) {
  begin_.reserve(statement.body.size() + 1);
  for (const StoredLiteral& literal : statement.body) {
    begin_.push_back(static_cast<std::uint32_t>(variables_.size()));
    add_variables(literal, start);
  }
  begin_.push_back(static_cast<std::uint32_t>(variables_.size()));
}

// Each variable of a literal is listed once, but those of guards may stand between the braces, too.
void BodyParts::add_variables(const StoredLiteral& item, const Binding& start) {
  std::vector<VariableId> all = item.variables;
  if (item.kind == kAggregate) {
    const StoredAggregate& aggregate = statement_.aggregates[item.aggregate];
    for (const StoredGuard* guard : {&aggregate.left, &aggregate.right}) {
      if (!guard->given) continue;
      for_each_variable(statement_, guard->term, [&](VariableId variable) {
        if (std::ranges::find(all, variable) == all.end()) all.push_back(variable);
      });
    }
  }
  const auto is_open = [&start](VariableId variable) { return start[variable] == kNoTerm; };
  std::ranges::copy_if(all, std::back_inserter(variables_), is_open);
  is_anchored_.push_back(std::ranges::all_of(all, is_open) ? 0 : 1);
}

std::span<const VariableId> BodyParts::open_variables(LiteralNumber literal) const {
  return std::span(variables_).subspan(begin_[literal], begin_[literal + 1] - begin_[literal]);
}

std::vector<BodyPart> BodyParts::split(std::span<const LiteralNumber> literals) {
  Groups groups(literals.size());
  std::vector<VariableId> seen;
  for (std::uint32_t i = 0; i < literals.size(); ++i) {
    for (const VariableId variable : open_variables(literals[i])) {
      if (numbers_[variable] == kNone) {
        numbers_[variable] = i;
        seen.push_back(variable);
      } else {
        groups.unite(i, numbers_[variable]);
      }
    }
  }
  std::vector<BodyPart> parts;
  std::vector<std::uint32_t> part_of_group(literals.size(), kNone);
  for (std::uint32_t i = 0; i < literals.size(); ++i) {
    std::uint32_t& part = part_of_group[groups.find(i)];
    if (part == kNone) {
      part = static_cast<std::uint32_t>(parts.size());
      parts.emplace_back();
    }
    parts[part].literals.push_back(literals[i]);
    if (is_anchored_[literals[i]] || open_variables(literals[i]).empty())
      parts[part].floats = false;
  }
  for (const VariableId variable : seen) {
    const std::uint32_t group = groups.find(std::exchange(numbers_[variable], kNone));
    parts[part_of_group[group]].variables.push_back(variable);
  }
  return parts;
}

// Makes one order.
class BodyParts::Order {
 public:
  // `numbers` gives the part's variables their numbers in it, and kNone to all others.
  Order(const BodyParts& parts, const BodyPart& part, const std::vector<std::uint32_t>& numbers)
      : parts_(parts),
        statement_(parts.statement_),
        literals_(part.literals),
        numbers_(numbers),
        missing_(literals_.size()),
        is_placed_(literals_.size(), 0),
        has_value_(part.variables.size(), 0) {}

  SafeOrder make() {
    watch();
    for (std::uint32_t i = 0; i < literals_.size(); ++i) examine(i);
    // What is left of the atoms begins anew; of the others it ranges over the integers.
    for (const bool takes_all : {false, true}) {
      for (std::uint32_t i = 0; i < literals_.size(); ++i) {
        follow();
        if (is_placed_[i] || !(takes_all || is_positive_atom(item(i)))) continue;
        order_.ranges = order_.ranges || takes_all;
        place(i);
      }
      follow();
    }
    return std::move(order_);
  }

 private:
  using Waiting = std::priority_queue<std::uint32_t, std::vector<std::uint32_t>, std::greater<>>;

  const StoredLiteral& item(std::uint32_t i) const { return statement_.body[literals_[i]]; }
  static bool is_positive_atom(const StoredLiteral& item) {
    return item.kind == kAtom && !item.negated;
  }

  void watch() {
    watch_begin_.assign(has_value_.size() + 1, 0);
    for (std::uint32_t i = 0; i < literals_.size(); ++i) {
      const auto open = parts_.open_variables(literals_[i]);
      missing_[i] = static_cast<std::uint32_t>(open.size());
      for (const VariableId variable : open) ++watch_begin_[numbers_[variable] + 1];
    }
    std::partial_sum(watch_begin_.begin(), watch_begin_.end(), watch_begin_.begin());
    watchers_.resize(watch_begin_.back());
    std::vector<std::uint32_t> next = watch_begin_;
    for (std::uint32_t i = 0; i < literals_.size(); ++i) {
      for (const VariableId variable : parts_.open_variables(literals_[i]))
        watchers_[next[numbers_[variable]]++] = i;
    }
  }

  void examine(std::uint32_t i) {
    const bool is_atom = is_positive_atom(item(i));
    if (is_atom ? parts_.is_anchored_[literals_[i]] != 0 : is_ready(i))
      (is_atom ? atoms_ : tests_).push(i);
  }

  void follow() {
    while (!tests_.empty() || !atoms_.empty()) {
      Waiting& waiting = tests_.empty() ? atoms_ : tests_;
      const std::uint32_t next = waiting.top();
      waiting.pop();
      place(next);
    }
  }

  void place(std::uint32_t i) {
    if (std::exchange(is_placed_[i], 1)) return;
    order_.literals.push_back(literals_[i]);
    for (const VariableId variable : parts_.open_variables(literals_[i])) {
      const std::uint32_t number = numbers_[variable];
      if (std::exchange(has_value_[number], 1)) continue;
      for (std::uint32_t w = watch_begin_[number]; w < watch_begin_[number + 1]; ++w) {
        const std::uint32_t watcher = watchers_[w];
        --missing_[watcher];
        if (is_placed_[watcher]) continue;
        if (is_positive_atom(item(watcher))) {
          atoms_.push(watcher);
        } else if (is_ready(watcher)) {
          tests_.push(watcher);
        }
      }
    }
  }

  // Whether the literal can be evaluated, if it is no positive atom. One with very many variables is
  // not looked at again for each of them.
  bool is_ready(std::uint32_t i) const {
    constexpr std::size_t kMostLooks = 64;
    if (missing_[i] == 0) return true;
    if (parts_.open_variables(literals_[i]).size() > kMostLooks) return false;
    const StoredLiteral& literal = item(i);
    const auto& operands = literal.operands;
    if (literal.kind == kAtom || literal.kind == kInt) return false;
    if (literal.kind == kAggregate) return takes_its_value(i);
    if (literal.kind == kFunctionTerm) {
      return is_bound(operands[0]) || std::all_of(operands.begin() + 2, operands.end(),
                                                  [this](auto o) { return is_bound(o); });
    }
    if (!kind_of(literal.kind).is_comparison)
      return std::ranges::count_if(operands, [this](auto o) { return !is_bound(o); }) <= 1;
    return literal.kind == (literal.negated ? kUnequal : kEqual) &&
           (is_bound(operands[0]) || is_bound(operands[1]));
  }

  // Of the aggregate's variables only that of its guard has no value: the guard takes it.
  bool takes_its_value(std::uint32_t i) const {
    const StoredGuard& guard = statement_.aggregates[item(i).aggregate].left;
    if (item(i).negated || !guard.given || guard.op != kEqual || missing_[i] > 1) return false;
    const TermPattern& term = statement_.terms[guard.term];
    return term.kind == TermPattern::Kind::kVariable && !is_bound(guard.term);
  }

  bool is_bound(PatternNumber pattern) const {
    const TermPattern& term = statement_.terms[pattern];
    if (term.kind == TermPattern::Kind::kAnonymous) return false;
    if (term.kind == TermPattern::Kind::kVariable) {
      const std::uint32_t number = numbers_[term.variable];
      return number == kNone || has_value_[number];
    }
    return std::ranges::all_of(term.arguments, [this](auto inner) { return is_bound(inner); });
  }

  const BodyParts& parts_;
  const StoredStatement& statement_;
  std::span<const LiteralNumber> literals_;
  const std::vector<std::uint32_t>& numbers_;
  std::vector<std::uint32_t> missing_;    // by literal: its variables without a value
  std::vector<char> is_placed_;           // by literal
  std::vector<char> has_value_;           // by variable of the part
  std::vector<std::uint32_t> watch_begin_;
  std::vector<std::uint32_t> watchers_;
  Waiting tests_;
  Waiting atoms_;
  SafeOrder order_;
};

SafeOrder BodyParts::safe_order(const BodyPart& part) {
  for (std::uint32_t i = 0; i < part.variables.size(); ++i) numbers_[part.variables[i]] = i;
  SafeOrder order = Order(*this, part, numbers_).make();
  for (const VariableId variable : part.variables) numbers_[variable] = kNone;
  return order;
}

}    // namespace dl
