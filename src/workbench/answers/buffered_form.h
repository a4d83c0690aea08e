#pragma once
// buffered_form.h - what forms that write one text have in common.

#include <ostream>
#include <string>

#include "workbench/answers/answer_consumer.h"

namespace workbench {

class BufferedForm : public AnswerConsumer {
 public:
  explicit BufferedForm(std::ostream& out) : out_(out) {}

  void flush() override {
    write();
    out_.flush();
  }
  void finish(const RunEnding& /*ending*/) override { flush(); }

 protected:
  // To be called often: an answer set of a million atoms is not gathered whole.
  void write_piece() {
    if (text_.size() >= kPiece) write();
  }

  std::string text_;    // what is to be written

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;

  void write() {
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
  }

  std::ostream& out_;
};

}    // namespace workbench
