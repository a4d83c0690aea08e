#pragma once
// discarded_output.h - results and messages of a measured piece, thrown away.

#include <memory>
#include <optional>
#include <ostream>
#include <streambuf>

#include "model/run.h"

namespace zarel {

// A run whose standard_output() and standard_error() swallow what they are given.
class DiscardedOutput {
 public:
  DiscardedOutput();
  void begin_run();    // a new one
  DiscardedOutput(const DiscardedOutput&) = delete;
  DiscardedOutput& operator=(const DiscardedOutput&) = delete;

  std::ostream& stream() { return stream_; }

 private:
  class Sink : public std::streambuf {
   protected:
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char* text, std::streamsize count) override;
  };

  std::unique_ptr<Run> run_;
  std::optional<Run::Scope> scope_;
  Sink sink_;
  std::ostream stream_{&sink_};
};

}    // namespace zarel
