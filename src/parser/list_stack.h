#pragma once
// list_stack.h - lists that the grammar reads from left to right, one perhaps inside another.

#include <cstdint>
#include <span>
#include <vector>

namespace zarel {

// An inner list is whole, and taken, before the outer one goes on: so all of them stand on one
// stack, and a list's semantic value is the position where it begins.
template <class T>
class ListStack {
 public:
  enum class Mark : std::uint32_t {};

  Mark empty_list() const { return Mark{static_cast<std::uint32_t>(elements_.size())}; }
  Mark first(const T& element) { return next(empty_list(), element); }
  Mark next(Mark list, const T& element) {
    elements_.push_back(element);
    return list;
  }

  // The list's elements, off the stack; valid until the next list is taken.
  std::span<const T> take(Mark list) {
    const auto begin = elements_.begin() + static_cast<std::ptrdiff_t>(list);
    taken_.assign(begin, elements_.end());
    elements_.erase(begin, elements_.end());
    return taken_;
  }

  void clear() { elements_.clear(); }    // drops what nothing has taken

 private:
  std::vector<T> elements_;
  std::vector<T> taken_;
};

}    // namespace zarel
