#pragma once
// parser_stacks.h - the memory of the generated parser's stack.

#include <cstddef>
#include <memory>
#include <vector>

namespace zarel {

// The generated parser takes and returns memory by hand, and returns none when an action throws. So
// its memory is owned here, and the reader clears what is left. See Note [ends as exceptions].
class ParserStacks {
 public:
  void* allocate(std::size_t size);
  void release(const void* memory);    // memory from allocate
  void clear() { pieces_.clear(); }

 private:
  std::vector<std::unique_ptr<std::byte[]>>
      pieces_;    // two at the most: the stack, and the one it grows into
};

ParserStacks& parser_stacks();

}    // namespace zarel
