#pragma once
// discarded_output.h - results and messages of a measured piece, thrown away.

#include <ostream>
#include <streambuf>

namespace zarel {

// While it lives, standard_output() and standard_error() swallow what they are given; afterwards
// the report state is as before main.
class DiscardedOutput {
 public:
  DiscardedOutput();
  DiscardedOutput(const DiscardedOutput&) = delete;
  DiscardedOutput& operator=(const DiscardedOutput&) = delete;
  ~DiscardedOutput();

  std::ostream& stream() { return stream_; }

 private:
  class Sink : public std::streambuf {
   protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char* text, std::streamsize count) override;
  };

  Sink sink_;
  std::ostream stream_{&sink_};
};

}    // namespace zarel
