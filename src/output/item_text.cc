#include "output/item_text.h"

namespace zarel {

void ItemText::drop_last(TextRange range) {
  if (range.end == end()) text_.resize(range.begin - start_);
}

void ItemText::drop_in_front_of(std::size_t position) {
  text_.erase(0, position - start_);
  start_ = position;
}

}    // namespace zarel
