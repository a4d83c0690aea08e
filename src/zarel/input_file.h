#pragma once
// input_file.h - a file opened for reading, closed when it goes.

#include <cstdio>
#include <memory>
#include <string>

namespace zarel {

class InputFile {
 public:
  // Opens the file and waits for its first character. One whose first read fails (a directory)
  // counts as not open.
  explicit InputFile(const std::string& path);
  // Takes an open file of which nothing was read, or -1 for none.
  explicit InputFile(int descriptor);
  bool is_open() const { return file_ != nullptr; }
  std::FILE* handle() const { return file_.get(); }    // null when it is not open

 private:
  struct Closer {
    void operator()(std::FILE* file) const;
  };
  std::unique_ptr<std::FILE, Closer> file_;
};

}    // namespace zarel
