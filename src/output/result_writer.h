#pragma once
// result_writer.h - what is to be printed, in large pieces.

#include <iosfwd>
#include <string>
#include <string_view>

namespace zarel {

// Collects complete items on their way to a stream. What cannot be written is dropped; the
// stream's state tells.
class ResultWriter {
 public:
  explicit ResultWriter(std::ostream& out) : out_(out) {}

  void add(std::string_view item);    // an item with its line ends
  // Writes what is collected, and flushes the stream; false when anything was lost.
  bool write_out();

 private:
  void write(std::string_view text);

  std::ostream& out_;
  std::string collected_;
  bool has_written_ = false;    // something, so that a bad stream is a loss
};

}    // namespace zarel
