#pragma once
// cleared_output.h - a stream to a terminal that may show the line of what goes on.

#include <ostream>
#include <streambuf>

#include "workbench/progress/run_progress.h"

namespace workbench {

// Takes the line away before anything is written to the other stream, which outlives this.
class ClearedOutput : public std::streambuf {
 public:
  explicit ClearedOutput(std::ostream& out) : out_(*out.rdbuf()) {}

 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override {
    clear_progress_line();
    return out_.sputn(text, size);
  }
  int_type overflow(int_type character) override {
    clear_progress_line();
    return traits_type::eq_int_type(character, traits_type::eof())
               ? traits_type::not_eof(0)
               : out_.sputc(traits_type::to_char_type(character));
  }
  int sync() override { return out_.pubsync(); }

 private:
  std::streambuf& out_;
};

}    // namespace workbench
