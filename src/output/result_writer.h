#pragma once
// result_writer.h - what is to be printed, in large pieces.

#include <string>
#include <string_view>

namespace zarel {

// Collects complete items on their way to standard_output(). What cannot be written is dropped; the
// stream's state tells.
class ResultWriter {
 public:
  void add(std::string_view item);    // an item with its line ends
  // Writes what is collected, and flushes the stream; false when anything was lost.
  bool write_out();

 private:
  std::string collected_;
  bool has_written_ = false;    // something, so that a bad stream is a loss
};

}    // namespace zarel
