// documents_test.cc - runs what the pages (README.md, docs/*.md) show, and compares it to the letter.
//
// From a line "$ COMMAND" on, a code block is what a terminal shows: commands, and below each what
// it prints, errors last. It is run in a copy of examples/, with the library at ../library. A
// block that is fenced by "``` NAME" is the file NAME for the commands further down its page. What
// the pages name has to be there.

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace zarel {
namespace {

namespace fs = std::filesystem;

const fs::path kProject = PROJECT_FOLDER;

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

struct Block {
  std::string file;    // as its fence says
  std::string text;
  bool is_terminal() const { return text.starts_with("$ "); }
};

// The code blocks of a page, fenced or indented by four blanks.
std::vector<Block> blocks_of(const fs::path& page) {
  constexpr std::size_t kMargin = 4;
  enum { kProse, kFenced, kIndented } place = kProse;
  std::vector<Block> blocks;
  for (const std::string& line : lines_of(text_of(page))) {
    if (line.starts_with("```")) {
      if (place != kFenced) blocks.push_back({line.substr(std::min(kMargin, line.size())), ""});
      place = place == kFenced ? kProse : kFenced;
    } else if (place == kFenced) {
      blocks.back().text += line + "\n";
    } else if (line.starts_with(std::string(kMargin, ' '))) {
      const std::string text = line.substr(kMargin) + "\n";
      const bool goes_on = place == kIndented && (blocks.back().is_terminal() || text[0] != '$');
      if (!goes_on) blocks.emplace_back();
      place = kIndented;
      blocks.back().text += text;
    } else if (place == kIndented && line.empty()) {
      blocks.back().text += "\n";
    } else {
      place = kProse;
    }
  }
  for (Block& block : blocks) {
    while (block.text.ends_with("\n\n")) block.text.pop_back();
  }
  return blocks;
}

std::vector<std::string> commands_of(const Block& block) {
  std::vector<std::string> commands;
  for (const std::string& line : lines_of(block.text)) {
    if (line.starts_with("$ ")) commands.push_back(line.substr(2));
  }
  return commands;
}

std::vector<fs::path> pages() {
  std::vector<fs::path> found;
  for (const fs::path& folder : {kProject, kProject / "docs"}) {
    for (const auto& entry : fs::directory_iterator(folder)) {
      if (entry.path().extension() == ".md") found.push_back(entry.path());
    }
  }
  return found;
}

struct Shown {
  std::string name;
  std::vector<Block> files;    // that stand above it
  Block block;
  friend void PrintTo(const Shown& shown, std::ostream* out) { *out << shown.name; }
};

std::vector<Shown> all_shown() {
  std::vector<Shown> all;
  for (const fs::path& page : pages()) {
    int number = 0;
    std::vector<Block> files;
    for (const Block& block : blocks_of(page)) {
      if (!block.file.empty()) files.push_back(block);
      if (!block.is_terminal()) continue;
      all.push_back({page.stem().string() + std::to_string(++number), files, block});
    }
  }
  return all;
}

class Documents : public testing::TestWithParam<Shown> {};
TEST_P(Documents, ShowWhatIsPrinted) {
  const WorkFolder folder;
  fs::copy(kProject / "examples", folder.path() / "examples");
  fs::copy(kProject / "library", folder.path() / "library");
  for (const Block& file : GetParam().files) folder.write("examples/" + file.file, file.text);
  std::string terminal;
  for (const std::string& command : commands_of(GetParam().block)) {
    const Outcome outcome = folder.run("cd examples; " + command);
    EXPECT_TRUE(outcome.status == 0 || !outcome.errors.empty()) << command;
    terminal += "$ " + command + "\n" + outcome.output + outcome.errors;
  }
  EXPECT_EQ(terminal, GetParam().block.text);
}
INSTANTIATE_TEST_SUITE_P(Pages, Documents, testing::ValuesIn(all_shown()), case_name);

TEST(Pages, ShowPiecesOfTheProgramThatIsBuilt) {
  const std::string program = text_of(kProject / "examples/library/host.cc");
  for (const Block& block : blocks_of(kProject / "docs/library.md")) {
    if (block.file.empty()) continue;
    EXPECT_NE(("\n" + program).find("\n" + block.text), std::string::npos) << block.text;
  }
}

TEST(Readme, ShowsLinesOfTheExamplesThatItRuns) {
  const std::vector<Block> blocks = blocks_of(kProject / "README.md");
  for (std::size_t i = 1; i < blocks.size(); ++i) {
    if (!blocks[i].is_terminal() || !blocks[i - 1].file.empty()) continue;
    const std::string command = commands_of(blocks[i]).front();
    const std::string example =
        text_of(kProject / "examples" / command.substr(command.rfind(' ') + 1));
    for (const std::string& line : lines_of(blocks[i - 1].text)) {
      EXPECT_NE(("\n" + example).find("\n" + line + "\n"), std::string::npos) << line;
    }
  }
}

// Building Zarel within its own tests would say little more, and take minutes.
TEST(Pages, NameFilesThatAreThereAndScriptsThatCanBeRun) {
  std::vector<fs::path> readers = pages();
  readers.push_back(kProject / ".ci/run");
  for (const auto& entry : fs::directory_iterator(kProject / "scripts")) {
    readers.push_back(entry.path());
  }
  const std::regex name(
      R"(\b(bench|cmake|docs|examples|library|scripts|src|tests)(/[a-z_]+)+(\.[a-z]+)?)");
  for (const fs::path& reader : readers) {
    const std::string text = text_of(reader);
    for (std::sregex_iterator use(text.begin(), text.end(), name), end; use != end; ++use) {
      const fs::path path = kProject / use->str();
      EXPECT_TRUE(fs::exists(path)) << path << reader;
      if ((*use)[1] != "scripts") continue;
      const fs::perms rights = fs::status(path).permissions();
      EXPECT_EQ(rights & fs::perms::owner_exec, fs::perms::owner_exec) << path << reader;
    }
  }
}

// All pieces of the text that match the only group of the pattern.
std::vector<std::string> found_in(const std::string& text, const std::regex& pattern) {
  return {std::sregex_token_iterator(text.begin(), text.end(), pattern, 1), {}};
}

TEST(Readme, MapsTheSourcesFromTheRoofToTheGround) {
  const std::vector<std::string> map =
      found_in(text_of(kProject / "README.md"), std::regex("\n\\| `src/([a-z]+)` \\|"));
  const auto row_of = [&map](const std::string& folder) { return std::ranges::find(map, folder); };
  for (const auto& entry : fs::recursive_directory_iterator(kProject / "src")) {
    const fs::path folder = entry.path().parent_path();
    if (!entry.is_regular_file() || folder == kProject / "src") continue;
    const auto row = row_of(*fs::relative(folder, kProject / "src").begin());
    EXPECT_NE(row, map.end()) << folder;
    for (const std::string& included :
         found_in(text_of(entry.path()), std::regex("#include \"([a-z]+)/"))) {
      EXPECT_LE(row, row_of(included)) << entry << included;
    }
  }
}

TEST(Scripts, DoForCiWhatReadmeSays) {
  const auto has_line = [](const char* file, const std::string& line) {
    EXPECT_TRUE(std::regex_search(text_of(kProject / file), std::regex("\n *" + line + "( .*)?\n")))
        << file << ": " << line;
  };
  has_line("README.md", "scripts/example");
  has_line("README.md", "scripts/test");
  has_line(".ci/run", "scripts/test");
  has_line("scripts/test", "scripts/setup");
  has_line("scripts/example", "scripts/setup");
  const std::vector<Block> blocks = blocks_of(kProject / "README.md");
  const auto shown = std::ranges::find_if(blocks, &Block::is_terminal);
  ASSERT_NE(shown, blocks.end());
  has_line("scripts/example", "echo '\\$ " + commands_of(*shown).front() + "'");
}

// README: "cmake --install build/release puts them where you want them".
TEST(Installation, RunsFromItsOwnFolder) {
  const WorkFolder folder;
  const Outcome outcome =
      folder.run("cmake --install '" BUILD_FOLDER
                 "' --prefix \"$PWD/there\" > log && PATH=${PATH#*:} && "
                 "echo 'top(S) :- maximum{p(*)}(S). p(1..2). #maxint = 2.' > top.zrl && "
                 "there/bin/zarel -silent -linktemplates -filter=top "
                 "there/share/zarel/library/maximum.zrl top.zrl");
  EXPECT_EQ(outcome, (Outcome{"{top(2)}\n", "", 0}));
}

}    // namespace
}    // namespace zarel
