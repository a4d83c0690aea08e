#pragma once
// literal.h - a literal: an atom, possibly under default negation; and the ordered lists of rule
// bodies and heads.

#include <cstddef>
#include <utility>
#include <vector>

namespace zarel {

template <class Atom>
struct TLITERAL {
  Atom atom;
  bool is_negated;    // "not" in front
};

// Only literals can be negated; other elements of a conjunction never are.
template <class T>
constexpr bool is_default_negated(const T&) {
  return false;
}
template <class Atom>
constexpr bool is_default_negated(const TLITERAL<Atom>& literal) {
  return literal.is_negated;
}

// A conjunction while it is made: non-negated elements stand before the negated ones, each group in
// the order in which it was added. The two groups are kept apart, so that adding never moves what
// is there.
template <class T>
class TCONJUNCTION {
 public:
  void add(T element) {
    (is_default_negated(element) ? negated_ : positive_).push_back(std::move(element));
  }

  std::size_t size() const { return positive_.size() + negated_.size(); }
  bool is_empty() const { return size() == 0; }
  // The position of the first negated element; size() when there is none.
  std::size_t first_negative() const { return positive_.size(); }

  const T& operator[](std::size_t i) const {
    return i < positive_.size() ? positive_[i] : negated_[i - positive_.size()];
  }
  T& operator[](std::size_t i) {
    return i < positive_.size() ? positive_[i] : negated_[i - positive_.size()];
  }

  const std::vector<T>& positive() const { return positive_; }
  const std::vector<T>& negated() const { return negated_; }

  void clear() {
    positive_.clear();
    negated_.clear();
  }

  // Whether every variable that has to be bound is bound by the conjunction; for bodies alone, see
  // established.h.
  bool isSafe() const;

 private:
  std::vector<T> positive_;
  std::vector<T> negated_;
};

// The atoms of a rule's head in the order of writing, repeats kept.
template <class Atom>
class TDISJUNCTION {
 public:
  void add(Atom atom) { atoms_.push_back(std::move(atom)); }
  std::size_t size() const { return atoms_.size(); }
  const std::vector<Atom>& atoms() const { return atoms_; }
  std::vector<Atom>& atoms() { return atoms_; }
  void clear() { atoms_.clear(); }

 private:
  std::vector<Atom> atoms_;
};

}    // namespace zarel
