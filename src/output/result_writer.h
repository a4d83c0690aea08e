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
  void write_out();                   // writes what is collected, and flushes the stream

 private:
  std::string collected_;
};

}    // namespace zarel
