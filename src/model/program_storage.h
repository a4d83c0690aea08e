#pragma once
// program_storage.h - the memory in which the program's clauses live.

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <span>
#include <type_traits>

namespace zarel {

// Note [program storage]
// A program of a million facts is a million small lists. They are made once, while the program is
// read or rewritten, and live until the run ends; so they stand one behind the other in blocks that
// are given back as a whole. What is stored here is trivially destructible: no destructor is ever
// called.

// A pointer that stands at any multiple of four bytes, so that what holds one needs no padding.
template <class T>
class PackedPointer {
 public:
  PackedPointer() = default;
  PackedPointer(T* pointer) : words_(std::bit_cast<Words>(pointer)) {}
  T* get() const { return std::bit_cast<T*>(words_); }
  T& operator*() const { return *get(); }
  T* operator->() const { return get(); }

 private:
  using Words = std::array<std::uint32_t, sizeof(T*) / sizeof(std::uint32_t)>;
  Words words_;
};

// A list of fixed length in the program's storage; the handle is one pointer wide. A default-made
// handle ({}) is the empty list. Copies of the handle look at the same elements.
template <class T>
class StoredList {
 public:
  std::size_t size() const { return is_empty() ? 0 : block_->size; }
  bool is_empty() const { return block_.get() == nullptr; }
  std::span<T> elements() const {
    Block* const block = block_.get();
    if (block == nullptr) return {};
    return {reinterpret_cast<T*>(block + 1), block->size};
  }

 private:
  friend class ProgramStorage;
  struct alignas(alignof(T) > alignof(std::uint32_t) ? alignof(T) : alignof(std::uint32_t)) Block {
    explicit Block(std::uint32_t count) : size(count) {}
    std::uint32_t size;
  };

  PackedPointer<Block> block_;
};

class ProgramStorage {
 public:
  ProgramStorage() = default;
  // Stores in that memory first, which has to last as long. For what is not kept: see clear().
  explicit ProgramStorage(std::span<std::byte> memory) : blocks_(memory.data(), memory.size()) {}

  void clear() { blocks_.release(); }    // gives back all that was stored

  // A copy of the elements; the empty handle for none.
  template <class T>
  StoredList<std::remove_const_t<T>> store(std::span<T> elements) {
    using Element = std::remove_const_t<T>;
    StoredList<Element> list = make_list<Element>(elements.size());
    std::uninitialized_copy(elements.begin(), elements.end(), list.elements().begin());
    return list;
  }

  // A list of that many elements whose values are for the caller to set.
  template <class T>
  StoredList<T> make_list(std::size_t size) {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    using Block = typename StoredList<T>::Block;
    StoredList<T> list{};
    if (size == 0) return list;
    void* const memory = blocks_.allocate(sizeof(Block) + size * sizeof(T), alignof(Block));
    list.block_ = std::construct_at(static_cast<Block*>(memory), static_cast<std::uint32_t>(size));
    return list;
  }

  // A stored copy of one value.
  template <class T>
  T* store_value(const T& value) {
    static_assert(std::is_trivially_destructible_v<T>);
    return std::construct_at(static_cast<T*>(blocks_.allocate(sizeof(T), alignof(T))), value);
  }

  // Frees all that was stored: its handles are not to be used any more.
  void release() { blocks_.release(); }

 private:
  static constexpr std::size_t kFirstBlock = std::size_t{64} * 1024;    // bytes; later ones grow
  std::pmr::monotonic_buffer_resource blocks_{kFirstBlock};
};

// The storage of the current run's program. See Note [program storage].
ProgramStorage& program_storage();

}    // namespace zarel
