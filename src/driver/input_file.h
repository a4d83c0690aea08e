#pragma once
// input_file.h - a file opened for reading, closed when it goes.

#include <cstdio>
#include <memory>
#include <string>

namespace zarel {

class InputFile {
 public:
  // Opens the file. One that opens but cannot be read (a directory) counts as not open.
  explicit InputFile(const std::string& path);
  bool is_open() const { return file_ != nullptr; }
  std::FILE* handle() const { return file_.get(); }    // null when it is not open

 private:
  struct Closer {
    void operator()(std::FILE* file) const;
  };
  std::unique_ptr<std::FILE, Closer> file_;
};

}    // namespace zarel
