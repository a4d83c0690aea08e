#pragma once
// text_file.h - a file with a text, gone when it is closed.

#include <cstdio>
#include <gtest/gtest.h>
#include <memory>
#include <string_view>
#include <unistd.h>

namespace zarel {

struct CloseFile {
  void operator()(std::FILE* file) const {
    std::fclose(file);    // NOLINT(cppcoreguidelines-owning-memory): this is its owner
  }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

// To be read from its beginning.
inline File file_with(std::string_view text) {
  File file(std::tmpfile());
  EXPECT_EQ(write(fileno(file.get()), text.data(), text.size()), std::ssize(text));
  EXPECT_EQ(lseek(fileno(file.get()), 0, SEEK_SET), 0);
  return file;
}

}    // namespace zarel
