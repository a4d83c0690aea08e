#pragma once
// run_program.h - runs the built programs as a user's shell does, in a folder of their own, and
// hands back what they give. ZAREL_FOLDER is the folder of the programs.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/wait.h>

#include "support/texts.h"

namespace zarel {

// The whole file; empty when it cannot be read.
inline std::string text_of(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

struct Outcome {
  std::string output;
  std::string errors;
  int status;    // as a shell gives it: 128 and more for a signal
  bool operator==(const Outcome&) const = default;
  friend void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << outcome.output << "--- errors\n" << outcome.errors << "--- status " << outcome.status;
  }
};

// A fresh folder, gone with this object.
class WorkFolder {
 public:
  WorkFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "zarel-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
      throw std::filesystem::filesystem_error("no folder for a test", name, std::error_code());
    }
    path_ = name;
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;    // what is left behind is the system's to clean
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }
  std::string read(const std::string& name) const { return text_of(path_ / name); }
  void write(const std::string& name, std::string_view text) const {
    std::ofstream(path_ / name, std::ios::binary) << text;
  }
  void write_script(const std::string& name, std::string_view commands) const {
    write(name, "#!/bin/sh\n" + std::string(commands));
    std::filesystem::permissions(path_ / name, std::filesystem::perms::owner_all);
  }

  // Runs shell commands here, the programs being in the path; the status is that of the last one.
  Outcome run(std::string_view commands) const {
    const std::string all = "cd '" + path_.string() +
                            "' && export PATH='" ZAREL_FOLDER "':\"$PATH\" && { " +
                            std::string(commands) + " ; } > .stdout 2> .stderr < /dev/null";
    const int status = std::system(all.c_str());    // NOLINT(cert-env33-c): as users run it
    constexpr int kSignalBase = 128;
    return {read(".stdout"), read(".stderr"),
            WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status)};
  }

 private:
  std::filesystem::path path_;
};

// A row of a table: shell commands, and all that they give.
struct ShellCase {
  std::string_view name, commands, output, errors = "";
  int status = 0;
  Outcome outcome() const { return {std::string(output), std::string(errors), status}; }
  friend void PrintTo(const ShellCase& test, std::ostream* out) { *out << test.name; }
};

}    // namespace zarel
