#pragma once
// parser_stacks.h - the memory of the generated parsers' stacks, once they outgrow the call stack.

#include <cstddef>
#include <memory>
#include <vector>

namespace zarel {

// A generated parser takes and returns memory by hand, and returns none when an action ends the
// run. So its memory is owned here, and whoever called the parser clears what is left. See
// [ends as exceptions].
class ParserStacks {
 public:
  void* allocate(std::size_t size);
  void release(const void* memory);    // memory from allocate
  void clear() { pieces_.clear(); }

 private:
  std::vector<std::unique_ptr<std::byte[]>>
      pieces_;    // two at most: the stack, and the one it grows into
};

}    // namespace zarel
