#pragma once
// values.h - what a variable can stand for: some symbols, or nobody knows what.

#include <algorithm>
#include <cstdint>
#include <unordered_set>
#include <vector>

#include "dl/relations.h"

namespace dl {

class Values {
 public:
  bool is_any() const { return is_any_; }
  bool has(Symbol symbol) const { return is_any_ || symbols_.contains(symbol); }
  bool is_empty() const { return !is_any_ && list_.empty(); }
  // In the order in which they came; only where it is not any.
  const std::vector<Symbol>& list() const { return list_; }

  // All return whether there are more values than before. More than `most` are any.
  bool add(Symbol symbol, std::size_t most) {
    if (is_any_ || !symbols_.insert(symbol).second) return false;
    list_.push_back(symbol);
    if (list_.size() > most) make_any();
    return true;
  }
  bool add(const Values& others, std::size_t most) {
    if (others.is_any_) return make_any();
    bool has_grown = false;
    for (const Symbol symbol : others.list_) has_grown = add(symbol, most) || has_grown;
    return has_grown;
  }
  bool make_any() {
    if (is_any_) return false;
    *this = Values();
    is_any_ = true;
    return true;
  }

  // Leaves what the others have, too.
  void meet(const Values& others) {
    if (others.is_any_) return;
    if (is_any_) {
      *this = others;
      return;
    }
    const auto is_out = [&others](Symbol symbol) { return !others.symbols_.contains(symbol); };
    std::erase_if(list_, is_out);
    std::erase_if(symbols_, is_out);
  }

 private:
  bool is_any_ = false;
  std::vector<Symbol> list_;
  std::unordered_set<Symbol> symbols_;
};

}    // namespace dl
