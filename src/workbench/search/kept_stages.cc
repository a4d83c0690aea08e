#include "workbench/search/kept_stages.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace workbench {
namespace {

constexpr std::array<std::string_view, 3> kNames{"rewritten.dl", "clingo.lp", "answers.txt"};

}    // namespace

KeptStages::KeptStages(const std::string& folder) : folder_(folder) {
  if (folder_.empty()) return;
  std::error_code error;
  std::filesystem::create_directories(folder_, error);
  if (error) fail(folder_, error.value());
}

std::string KeptStages::path(Stage stage) const {
  return (std::filesystem::path(folder_) / kNames[static_cast<std::size_t>(stage)]).string();
}

void KeptStages::fail(const std::string& path, int error) {
  if (failure_) return;
  std::string text("cannot write ");
  ((text += path) += ": ") += std::strerror(error);
  failure_ = Message{"output-failure", {}, std::move(text)};
  failure_->help = "name a folder that can be written to";
}

void KeptStages::add(Stage stage, std::string_view text) {
  if (folder_.empty() || failure_) return;
  std::ofstream& file = files_[static_cast<std::size_t>(stage)];
  errno = 0;
  if (!file.is_open()) file.open(path(stage), std::ios::binary | std::ios::trunc);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  if (!file) fail(path(stage), errno);
}

std::optional<Message> KeptStages::finish() {
  for (const Stage stage : {Stage::kRewritten, Stage::kClingo, Stage::kAnswers}) {
    std::ofstream& file = files_[static_cast<std::size_t>(stage)];
    if (!file.is_open()) continue;
    errno = 0;
    file.close();
    if (!file) fail(path(stage), errno);
  }
  return std::move(failure_);
}

}    // namespace workbench
