#include "workbench/answers/output_file.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace workbench {
namespace {

constexpr mode_t kMode = 0666;    // less what the user's mask takes away

std::string folder_of(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

// A link stays one: what it leads to is replaced.
std::string target_of(std::string path) {
  std::error_code none;
  if (!std::filesystem::is_symlink(path, none) || path.starts_with("/dev/")) return path;
  const std::filesystem::path target = std::filesystem::canonical(path, none);
  return none ? path : target.string();
}

// The names of what is open already are no places to put a file in, whatever is behind them.
bool is_special(const std::string& path) {
  if (path.starts_with("/dev/") || path.starts_with("/proc/")) return true;
  struct stat found {};
  return ::stat(path.c_str(), &found) == 0 && !S_ISREG(found.st_mode);
}

}    // namespace

OutputFile::OutputFile(std::string path)
    : path_(target_of(std::move(path))),
      descriptor_(open()),
      output_(std::make_unique<AnswerOutput>(descriptor_)),
      stream_(output_.get()) {
  if (descriptor_ < 0) error_ = errno;
}

OutputFile::~OutputFile() {
  close();
  if (!draft_.empty()) ::unlink(draft_.c_str());
}

int OutputFile::open() {
  // Opened anew, a file would be written to from its beginning.
  if (path_ == "/dev/stdout") return ::dup(STDOUT_FILENO);
  if (path_ == "/dev/stderr") return ::dup(STDERR_FILENO);
  if (is_special(path_)) return ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
  const int nameless = ::open(folder_of(path_).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, kMode);
  is_nameless_ = nameless >= 0;
  std::string draft = path_ + ".part" + std::to_string(::getpid());
  if (is_nameless_) {
    draft_ = std::move(draft);
    return nameless;
  }
  // Not every file system has files without a name.
  const int named = ::open(draft.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kMode);
  if (named >= 0) draft_ = std::move(draft);
  return named;
}

int OutputFile::close() {
  const int closed = descriptor_ < 0 ? 0 : ::close(descriptor_);
  descriptor_ = -1;
  return closed;
}

int OutputFile::put() {
  stream_.flush();
  if (error() != 0) return error();
  const auto check = [this](int status) { return status == 0 || (error_ = errno) == 0; };
  if (is_nameless_) {
    const std::string opened = "/proc/self/fd/" + std::to_string(descriptor_);
    if (!check(::linkat(AT_FDCWD, opened.c_str(), AT_FDCWD, draft_.c_str(), AT_SYMLINK_FOLLOW)))
      return error_;
  }
  if (!check(close()) || draft_.empty()) return error_;
  if (check(std::rename(draft_.c_str(), path_.c_str()))) draft_.clear();
  return error_;
}

}    // namespace workbench
