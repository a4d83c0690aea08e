#pragma once
// list_stack.h - lists that the grammar reads from left to right, one perhaps inside another.

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace zarel {

// An inner list is whole, and taken, before the outer one goes on: so all of them stand on one
// stack, and a list's semantic value is the position where it begins.
template <class T>
class ListStack {
 public:
  enum class Mark : std::uint32_t {};

  Mark empty_list() const { return Mark{static_cast<std::uint32_t>(height_)}; }
  Mark first(const T& element) { return next(empty_list(), element); }
  Mark next(Mark list, const T& element) {
    if (height_ == elements_.size()) elements_.push_back(element);
    elements_[height_++] = element;
    return list;
  }

  // How many elements the list has so far.
  std::size_t size(Mark list) const { return height_ - static_cast<std::size_t>(list); }

  // The list's elements, off the stack; valid until the next element is added.
  std::span<const T> take(Mark list) {
    const std::size_t begin = static_cast<std::size_t>(list);
    return {elements_.data() + begin, std::exchange(height_, begin) - begin};
  }

  void clear() { height_ = 0; }    // drops what nothing has taken

 private:
  std::vector<T> elements_;    // what was taken is overwritten, not destroyed
  std::size_t height_ = 0;
};

}    // namespace zarel
