#pragma once
// templates_fixture.h - programs with templates, and what they are rewritten to.

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "driver/phases.h"

namespace zarel {

enum class Templates { kPlain, kLinked };

// Runs each test inside a fresh folder, so that messages show plain file names.
class TemplatesTest : public testing::Test {
 protected:
  TemplatesTest() : before_(std::filesystem::current_path()) {
    std::string name = (std::filesystem::temp_directory_path() / "zarel-templates-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no folder " << name;
    std::filesystem::current_path(name);
  }
  ~TemplatesTest() override {
    const std::filesystem::path folder = std::filesystem::current_path();
    std::filesystem::current_path(before_);
    std::error_code ignored;    // what is left behind is the system's to clean
    std::filesystem::remove_all(folder, ignored);
  }

  // Writes the texts to the files "1", "2", ... and rewrites them as one program.
  static RewrittenProgram rewritten(std::initializer_list<std::string_view> texts,
                                    Templates templates = Templates::kPlain) {
    std::vector<std::string> files;
    for (const std::string_view text : texts) {
      files.push_back(std::to_string(files.size() + 1));
      std::ofstream(files.back(), std::ios::binary) << text;
    }
    RewriteOptions options;
    options.has_linked_templates = templates == Templates::kLinked;
    return rewrite(files, options);
  }

 private:
  std::filesystem::path before_;
};

// The legend without its first and last line; the whole when it does not have them.
inline std::string legend_lines(const std::string& legend) {
  constexpr std::string_view kBegin = "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n";
  constexpr std::string_view kEnd = "% END OF LEGENDA\n";
  if (!legend.starts_with(kBegin) || !legend.ends_with(kEnd)) return legend;
  return legend.substr(kBegin.size(), legend.size() - kBegin.size() - kEnd.size());
}

// A program, and what it is rewritten to.
struct Rewriting {
  std::string_view name, program, clauses, legend;
  friend void PrintTo(const Rewriting& test, std::ostream* out) { *out << test.name; }
};

// A program, and how its run ends.
struct Ending {
  std::string_view name, program, messages, output = "";
  friend void PrintTo(const Ending& test, std::ostream* out) { *out << test.name; }
};

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

template <class Case>
class TemplatesTable : public TemplatesTest, public testing::WithParamInterface<Case> {};

}    // namespace zarel
