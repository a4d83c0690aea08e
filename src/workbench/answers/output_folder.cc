#include "workbench/answers/output_folder.h"

#include <system_error>

namespace workbench {

bool is_folder(const std::string& path) {
  std::error_code error;
  return path.ends_with('/') || std::filesystem::is_directory(path, error);
}

// A folder with something in it stays.
OutputFolder::~OutputFolder() {
  if (!is_made_ || is_put_) return;
  files_.clear();
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::ostream& OutputFolder::file(const std::string& name) {
  if (files_.empty()) {
    std::error_code error;    // opening the file says what is wrong
    is_made_ = std::filesystem::create_directory(path_, error);
  }
  const std::string path = (path_ / name).string();
  return files_.try_emplace(path, path).first->second.stream();
}

OutputFolder::Failure OutputFolder::failure() const {
  for (const auto& [path, file] : files_) {
    if (file.error() != 0) return {path, file.error()};
  }
  return {};
}

OutputFolder::Failure OutputFolder::put() {
  is_put_ = true;
  for (auto& [path, file] : files_) {
    if (file.put() != 0) return {path, file.error()};
  }
  return {};
}

}    // namespace workbench
