#pragma once
// answer_output.h - a stream for answers that knows when, and why, nobody takes them any more.

#include <streambuf>
#include <string_view>

namespace workbench {

class AnswerOutput : public std::streambuf {
 public:
  // Writes to the descriptor, in pieces that a time limit can end between.
  explicit AnswerOutput(int descriptor) : descriptor_(descriptor) {}

  int descriptor() const { return descriptor_; }
  // The first error, as errno has it; 0 for none. What comes behind one is dropped.
  int error() const { return error_; }
  void note_closed();    // nobody reads any more, which was found without writing

 protected:
  std::streamsize xsputn(const char* text, std::streamsize size) override;
  int_type overflow(int_type character) override;

 private:
  bool write_all(std::string_view text);
  bool wait();

  int descriptor_;
  int error_ = 0;
};

}    // namespace workbench
