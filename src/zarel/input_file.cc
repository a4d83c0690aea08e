#include "zarel/input_file.h"

namespace zarel {

// What was only read has nothing to lose: the result of closing says nothing.
void InputFile::Closer::operator()(std::FILE* file) const {
  static_cast<void>(
      std::fclose(file));    // NOLINT(cppcoreguidelines-owning-memory): this is its owner
}

// Only a read tells whether a file can be read: a directory opens, and so do some files of the
// system.
InputFile::InputFile(const std::string& path) : file_(std::fopen(path.c_str(), "rbe")) {
  if (!is_open()) return;
  const int first = std::getc(handle());
  if (first == EOF && std::ferror(handle()) != 0) {
    file_.reset();
  } else if (first != EOF) {
    static_cast<void>(std::ungetc(first, handle()));    // one character always fits
  }
}

InputFile::InputFile(int descriptor)
    : file_(descriptor < 0 ? nullptr : ::fdopen(descriptor, "rb")) {}

}    // namespace zarel
