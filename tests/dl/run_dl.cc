#include "run_dl.h"

#include <algorithm>
#include <vector>

namespace dl_test {

Outcome run(std::string_view program, std::string_view options) {
  const WorkFolder folder;
  folder.write("p", program);
  return folder.run("dl p " + std::string(options));
}

std::string translation(std::string_view program, std::string_view options) {
  return run(program, "-translate " + std::string(options)).output;
}

namespace {

std::vector<std::string> split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  for (std::size_t begin = 0, end = 0; end != std::string::npos; begin = end + separator.size()) {
    end = text.find(separator, begin);
    pieces.emplace_back(text.substr(begin, end - begin));
  }
  return pieces;
}

std::string with_ends(const std::vector<std::string>& pieces, std::string_view end) {
  std::string text;
  for (const std::string& piece : pieces) (text += piece) += end;
  return text;
}

}    // namespace

std::string sorted(std::string_view text, Lines order) {
  std::vector<std::string> lines = split(text, "\n");
  for (std::string& line : lines) {
    if (!line.ends_with('}')) continue;
    const std::size_t begin = line.find('{') + 1;
    std::vector<std::string> atoms = split(line.substr(begin, line.size() - begin - 1), ", ");
    std::ranges::sort(atoms);
    line = line.substr(0, begin) + with_ends(atoms, ", ") + "}";
  }
  if (order == Lines::kSorted) std::ranges::sort(lines);
  return with_ends(lines, "\n");
}

void expect_answers(const Case& test, Lines lines) {
  Outcome outcome = run(test.program, test.options);
  outcome.output = sorted(outcome.output, lines);
  EXPECT_EQ(outcome, (Outcome{sorted(test.out, lines), "", 0}));
}

TEST_P(Programs, GiveTheExpectedAnswers) {
  expect_answers(GetParam(), Lines::kSorted);
}

TEST_P(OrderedPrograms, GiveTheExpectedLines) {
  expect_answers(GetParam(), Lines::kInOrder);
}

TEST_P(FaultyPrograms, AreReported) {
  EXPECT_EQ(run(GetParam().program, GetParam().options),
            (Outcome{"", std::string(GetParam().out) + "\n", 1}));
}

TEST_P(Commands, GiveTheExpectedOutcome) {
  EXPECT_EQ(WorkFolder().run(GetParam().commands), GetParam().outcome());
}

}    // namespace dl_test
