#include "driver/input_file.h"

#include <unistd.h>

namespace zarel {

// What was only read has nothing to lose: the result of closing says nothing.
void InputFile::Closer::operator()(std::FILE* file) const {
  static_cast<void>(
      std::fclose(file));    // NOLINT(cppcoreguidelines-owning-memory): this is its owner
}

// Reading nothing shows whether there could be anything to read, and leaves the file as it is.
InputFile::InputFile(const std::string& path) : file_(std::fopen(path.c_str(), "rb")) {
  char nothing = '\0';
  if (is_open() && ::read(::fileno(handle()), &nothing, 0) < 0) file_.reset();
}

}    // namespace zarel
