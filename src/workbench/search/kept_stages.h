#pragma once
// kept_stages.h - what the stages of a run hand on, kept as files.

#include <array>
#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "workbench/messages/message.h"

namespace workbench {

enum class Stage : std::uint8_t { kRewritten, kClingo, kAnswers };

class KeptStages {
 public:
  // Makes the folder where it is missing. Without a name nothing is kept.
  explicit KeptStages(const std::string& folder);

  bool has_failed() const { return failure_.has_value(); }    // finish() tells why

  // Writes the next piece of a stage, which begins an empty file.
  void add(Stage stage, std::string_view text);

  // Closes the files. Returns what could not be written.
  std::optional<Message> finish();

 private:
  std::string path(Stage stage) const;
  void fail(const std::string& path, int error);

  std::string folder_;
  std::array<std::ofstream, 3> files_;
  std::optional<Message> failure_;    // the first one
};

}    // namespace workbench
