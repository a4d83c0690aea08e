#pragma once
// templates_fixture.h - programs with templates, and what they are rewritten to.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <initializer_list>
#include <regex>
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

// The lines of a text, with blanks between them.
inline std::string on_one_line(std::string text) {
  if (text.ends_with('\n')) text.pop_back();
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

// What stands in a legend's lines, without its frame; the whole when it does not have that.
inline std::string legend_uses(const std::string& legend) {
  static const std::regex frame(
      "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n([^]*)% END OF LEGENDA\n");
  std::smatch lines;
  if (!std::regex_match(legend, lines, frame)) return legend;
  std::string uses = std::regex_replace(lines.str(1), std::regex("% (.*) at line \n"), "$1; ");
  return uses.substr(0, uses.find_last_of(';'));
}

// A program, and what it is rewritten to; no legend where that shows nothing new.
struct Rewriting {
  std::string_view name, program, clauses, legend = "";
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
