#pragma once
// written_order.h - the items of a body in the order of writing.

#include <algorithm>
#include <cstddef>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include "workbench/why/user_statements.h"

namespace workbench {

// How many of the items each literal of the body is; nothing where that cannot be told.
inline std::vector<std::size_t> items_of(const std::vector<UserStatement::Literal>& body,
                                         std::size_t positive, std::size_t negative) {
  std::vector<std::size_t> counts;
  std::optional<std::size_t> unknown;
  for (const UserStatement::Literal& literal : body) {
    std::size_t& left = literal.is_negated ? negative : positive;
    const bool is_known = literal.is_negated || literal.parts;
    if (!is_known && unknown) return {};
    if (!is_known) unknown = counts.size();
    counts.push_back(literal.is_negated ? 1 : literal.parts.value_or(0));
    if (counts.back() > left) return {};
    left -= counts.back();
  }
  if (unknown) counts[*unknown] = std::exchange(positive, 0);
  if (positive != 0 || negative != 0) return {};
  return counts;
}

// Clauses have their negated literals last. Puts these where the user has them.
template <typename Item>
void put_as_written(std::vector<Item>& items, const UserStatement& statement) {
  const auto is_negated = [](const Item& item) { return item.text.starts_with("not "); };
  const auto negated = std::ranges::count_if(items, is_negated);
  const auto negations = static_cast<std::size_t>(negated);
  const std::vector<std::size_t> counts =
      items_of(statement.body, items.size() - negations, negations);
  if (counts.empty()) return;
  std::stable_partition(items.begin(), items.end(), std::not_fn(is_negated));
  auto positive = items.begin();
  auto negative = items.end() - negated;
  std::vector<Item> ordered;
  ordered.reserve(items.size());
  for (std::size_t i = 0; i < counts.size(); ++i) {
    auto& next = statement.body[i].is_negated ? negative : positive;
    for (std::size_t taken = 0; taken < counts[i]; ++taken) ordered.push_back(std::move(*next++));
  }
  items = std::move(ordered);
}

}    // namespace workbench
