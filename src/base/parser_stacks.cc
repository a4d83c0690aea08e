#include "base/parser_stacks.h"

namespace zarel {

void* ParserStacks::allocate(std::size_t size) {
  return pieces_.emplace_back(std::make_unique_for_overwrite<std::byte[]>(size)).get();
}

void ParserStacks::release(const void* memory) {
  std::erase_if(pieces_, [memory](const auto& piece) { return piece.get() == memory; });
}

}    // namespace zarel
