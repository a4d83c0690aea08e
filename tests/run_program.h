#pragma once
// run_program.h - runs the built programs as a user's shell does, in a folder of their own, and
// hands back what they give. Who includes it defines ZAREL_FOLDER, the folder of the programs.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <string>
#include <sys/wait.h>

namespace zarel {

// The whole file; empty when it cannot be read.
inline std::string text_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

// The first line, without its end.
inline std::string first_line_of(const std::filesystem::path& path) {
  const std::string text = text_of(path);
  return text.substr(0, std::min(text.find('\n'), text.size()));
}

// A fresh folder that holds a copy of another one's content, gone with this object.
class WorkFolder {
 public:
  explicit WorkFolder(const std::filesystem::path& content) : WorkFolder() {
    std::filesystem::copy(content, path_, std::filesystem::copy_options::recursive);
  }
  // The same with copies of several folders, side by side under their own names.
  explicit WorkFolder(std::initializer_list<std::filesystem::path> folders) : WorkFolder() {
    for (const std::filesystem::path& folder : folders) {
      std::filesystem::copy(folder, path_ / folder.filename(),
                            std::filesystem::copy_options::recursive);
    }
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;    // what is left behind is the system's to clean
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }

 private:
  WorkFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zarel-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::filesystem::filesystem_error("no folder for a test", name, std::error_code());
    }
    path_ = name;
  }

  std::filesystem::path path_;
};

struct Outcome {
  std::string output;
  std::string errors;
  std::string status;    // a line
};

// Runs "zarel" in `folder` with `args`, which are shell words.
inline Outcome run_zarel(const std::filesystem::path& folder, const std::string& args) {
  const std::string command = "cd '" + folder.string() +
                              "' && PATH='" ZAREL_FOLDER "':\"$PATH\" && zarel " + args +
                              " > .stdout 2> .stderr";
  const int status = std::system(command.c_str());    // NOLINT(cert-env33-c): as users run it
  return {text_of(folder / ".stdout"), text_of(folder / ".stderr"),
          std::to_string(WEXITSTATUS(status)) + "\n"};
}

// True when what the programs give is to become what the tests expect.
inline bool is_rewriting() {
  return std::getenv("ZAREL_REWRITE_GOLDEN") != nullptr;    // NOLINT(concurrency-mt-unsafe)
}

}    // namespace zarel
