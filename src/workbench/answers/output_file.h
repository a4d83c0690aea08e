#pragma once
// output_file.h - a file that is written whole or not at all.

#include <memory>
#include <ostream>
#include <string>

#include "workbench/search/answer_output.h"

namespace workbench {

// Until it is put in its place, what is written has no name that somebody could read it by, and
// nothing of it remains. What is no regular file, a pipe or a device, is written to at once.
class OutputFile {
 public:
  explicit OutputFile(std::string path);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  std::ostream& stream() { return stream_; }
  // The first error, as errno has it, of opening or of writing; 0 for none.
  int error() const { return error_ != 0 ? error_ : output_->error(); }
  // Nothing more is written: puts the file in its place, instead of one that was there. Returns
  // error().
  int put();

 private:
  int open();
  int close();

  std::string path_;
  std::string draft_;    // the name of what is not in its place yet, if it has one
  bool is_nameless_ = false;
  int error_ = 0;
  int descriptor_;
  std::unique_ptr<AnswerOutput> output_;
  std::ostream stream_;
};

}    // namespace workbench
