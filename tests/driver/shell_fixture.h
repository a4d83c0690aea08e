#pragma once
// shell_fixture.h - shell commands in a fresh folder, with the built program as "zarel".

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "run_program.h"

namespace zarel {

class ShellTest : public testing::Test {
 protected:
  ShellTest() : folder_(empty_folder()) {}

  void write(const std::string& name, std::string_view text) const {
    std::ofstream(folder_.path() / name, std::ios::binary) << text;
  }
  void write_script(const std::string& name, std::string_view commands) const {
    write(name, "#!/bin/sh\n" + std::string(commands));
    std::filesystem::permissions(folder_.path() / name, std::filesystem::perms::owner_all);
  }
  std::string text(const std::string& name) const { return text_of(folder_.path() / name); }
  void link(const std::string& target, const std::string& name) const {
    std::filesystem::create_symlink(target, folder_.path() / name);
  }
  std::filesystem::path folder() const { return folder_.path(); }

  // Runs shell commands; the standard streams and the status are those of the last one.
  Outcome run(const std::string& commands) const {
    const std::string all = "cd '" + folder_.path().string() +
                            "' && export PATH='" ZAREL_FOLDER "':\"$PATH\" && { " + commands +
                            " ; } > stdout 2> stderr";
    const int status = std::system(all.c_str());    // NOLINT(cert-env33-c): as users run it
    return {text("stdout"), text("stderr"), std::to_string(WEXITSTATUS(status)) + "\n"};
  }

 private:
  static std::filesystem::path empty_folder() {
    std::filesystem::path path = std::filesystem::temp_directory_path() / "zarel-empty";
    std::filesystem::create_directories(path);
    return path;
  }

  WorkFolder folder_;
};

inline bool contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

}    // namespace zarel
