#pragma once
// data_text.h - the text of a file of data, piece by piece: memory does not grow with it.

#include <cstddef>
#include <cstdio>
#include <string_view>
#include <vector>

#include "base/place.h"

namespace workbench {

// What was read from the mark on stays; a mark is set where a row begins.
class DataText {
 public:
  explicit DataText(std::FILE* file) : file_(file) {}

  // Whether there is more text behind the position; reads it when it is not there yet.
  bool has_more() { return position_ != buffer_end_ || fill(); }
  char current() const { return buffer_[position_]; }    // has_more() said true
  void advance() { ++position_; }

  // What was read and not passed over.
  std::string_view begin() const { return {buffer_.data() + position_, buffer_end_ - position_}; }

  // The next line with its end, of which the last may have none; the position is behind it. Empty
  // at the end.
  std::string_view line();

  // Sets the mark so many bytes in front of the position.
  void mark(std::size_t bytes_before);

  std::string_view marked() const { return {buffer_.data() + mark_, position_ - mark_}; }
  const zarel::SourceLocation& place_of_mark() const { return place_; }    // no file
  bool has_failed() const { return std::ferror(file_) != 0; }

 private:
  bool fill();

  std::FILE* file_;
  std::vector<char> buffer_;
  std::size_t mark_ = 0;
  std::size_t position_ = 0;
  std::size_t buffer_end_ = 0;
  zarel::SourceLocation place_{1, 1};
};

// Where the byte stands that is so far behind the beginning of a text, which stands at that place.
zarel::SourceLocation place_in(std::string_view text, std::size_t byte,
                               const zarel::SourceLocation& begin);

}    // namespace workbench
