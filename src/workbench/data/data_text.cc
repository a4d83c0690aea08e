#include "workbench/data/data_text.h"

#include <algorithm>
#include <cstring>

namespace workbench {

bool DataText::fill() {
  constexpr std::size_t kPiece = std::size_t{64} * 1024;
  if (mark_ != 0) {
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(mark_),
              buffer_.begin() + static_cast<std::ptrdiff_t>(buffer_end_), buffer_.begin());
    position_ -= mark_;
    buffer_end_ -= mark_;
    mark_ = 0;
  }
  if (buffer_.size() < buffer_end_ + kPiece) buffer_.resize(2 * buffer_.size() + kPiece);
  const std::size_t size =
      std::fread(buffer_.data() + buffer_end_, 1, buffer_.size() - buffer_end_, file_);
  buffer_end_ += size;
  return size != 0;
}

std::string_view DataText::line() {
  std::size_t seen = 0;    // behind the position, without a line end
  while (true) {
    const char* const begin = buffer_.data() + position_;
    const std::size_t size = buffer_end_ - position_;
    const void* const end = size == seen ? nullptr : std::memchr(begin + seen, '\n', size - seen);
    if (end == nullptr) {
      seen = size;
      if (fill()) continue;
    }
    const char* const first = buffer_.data() + position_;
    const std::size_t length =
        end == nullptr ? size : static_cast<std::size_t>(static_cast<const char*>(end) - first) + 1;
    position_ += length;
    return {first, length};
  }
}

void DataText::mark(std::size_t bytes_before) {
  const std::size_t next = position_ - bytes_before;
  place_ = place_in({buffer_.data() + mark_, next - mark_}, next - mark_, place_);
  mark_ = next;
}

zarel::SourceLocation place_in(std::string_view text, std::size_t byte,
                               const zarel::SourceLocation& begin) {
  text = text.substr(0, byte);
  zarel::SourceLocation place = begin;
  const auto lines = std::ranges::count(text, '\n');
  if (lines == 0) {
    place.column += static_cast<std::uint32_t>(text.size());
    return place;
  }
  place.line += static_cast<std::uint32_t>(lines);
  place.column = static_cast<std::uint32_t>(text.size() - text.rfind('\n'));
  return place;
}

}    // namespace workbench
