#include "dl/source_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "dl/translate.h"

namespace dl {
namespace {

// Closes the descriptor at the end of its scope.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

// The size is only a hint: pipes have none, and a file may grow while it is read. What is longer
// than a text may be is not read to its end.
bool read_all(int descriptor, std::size_t size_hint, std::string& text) {
  constexpr std::size_t kStep = std::size_t{1} << 16;
  text.resize(size_hint + kStep);
  std::size_t length = 0;
  while (length <= kLongestText) {
    if (text.size() - length < kStep) text.resize(2 * text.size());
    const ssize_t got = ::read(descriptor, text.data() + length, text.size() - length);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  text.resize(length);
  return true;
}

}    // namespace

SourceFile read_source_file(const std::string& path, const zarel::Place& place) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  SourceFile source;
  struct stat status {};
  if (file.number() < 0 || ::fstat(file.number(), &status) != 0) {
    source.mistake = unreadable(path, std::strerror(errno), place);
    return source;
  }
  source.identity = {status.st_dev, status.st_ino};
  const auto size = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
  const bool may_fit = size <= kLongestText;
  if (may_fit && !read_all(file.number(), size, source.text)) {
    source.mistake = unreadable(path, std::strerror(errno), place);
  } else if (!may_fit || source.text.size() > kLongestText) {
    source.mistake = too_long(path, place);
  }
  return source;
}

std::string resolve_include(std::string_view including_file, std::string_view name) {
  const std::size_t slash = including_file.rfind('/');
  if (slash == std::string_view::npos || name.starts_with('/')) return std::string(name);
  std::string beside(including_file.substr(0, slash + 1));
  beside += name;
  if (::access(beside.c_str(), F_OK) == 0) return beside;
  return std::string(name);
}

}    // namespace dl
