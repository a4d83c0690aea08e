#include "dl/parts/ground_program.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <unistd.h>
#include <utility>

#include "dl/failure.h"

namespace dl {
namespace {

constexpr std::string_view kFirstWord = "asp ";
constexpr std::string_view kLastLine = "0\n";
constexpr std::string_view kEnd = "\n0\n";    // so that it is a line

// The numbers of a line, one after the other; 0 behind the last.
class Numbers {
 public:
  explicit Numbers(std::string_view line) : rest_(line) {}
  std::int64_t next() {
    while (rest_.starts_with(' ')) rest_.remove_prefix(1);
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
    if (error != std::errc()) return 0;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return number;
  }

 private:
  std::string_view rest_;
};

}    // namespace

GroundProgram::GroundProgram(std::string text) : text_(std::move(text)) {
  if (!text_.starts_with(kFirstWord) || !text_.ends_with(kEnd)) {
    throw Failure{{zarel::Code::kSolverIncomplete, {}, "clingo grounded not the whole program"}};
  }
}

Choices choices_of(const GroundProgram& program) {
  Choices choices;
  constexpr std::int64_t kRule = 1;
  constexpr std::int64_t kWeighted = 1;    // a body of another kind than a conjunction
  std::vector<bool> is_negated;
  for (std::string_view rest(program.text()); !rest.empty();) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    Numbers numbers(line);
    if (numbers.next() != kRule) continue;
    numbers.next();    // a disjunction or a choice
    std::vector<GroundAtom> head;
    for (std::int64_t count = numbers.next(); count > 0; --count) {
      head.push_back(static_cast<GroundAtom>(numbers.next()));
      choices.greatest_atom = std::max(choices.greatest_atom, head.back());
    }
    if (head.size() > 1) choices.heads.push_back(std::move(head));
    const bool is_weighted = numbers.next() == kWeighted;
    if (is_weighted) numbers.next();    // its bound
    for (std::int64_t count = numbers.next(); count > 0; --count) {
      const std::int64_t literal = numbers.next();
      if (is_weighted) numbers.next();
      if (literal >= 0) continue;
      const auto atom = static_cast<GroundAtom>(-literal);
      choices.greatest_atom = std::max(choices.greatest_atom, atom);
      if (is_negated.size() <= atom) is_negated.resize(std::size_t{atom} + atom / 2 + 1);
      if (is_negated[atom]) continue;
      is_negated[atom] = true;
      choices.negated.push_back(atom);
    }
  }
  return choices;
}

std::string_view GroundProgram::whole_rules() const {
  return std::string_view(text_).substr(0, text_.size() - kLastLine.size());
}

Descriptor GroundProgram::part(const Cube& cube) const {
  Descriptor file = make_memory_file("part");
  append_to(file, whole_rules());
  append_to(file, cube_text(cube));
  ::lseek(file.number(), 0, SEEK_SET);
  return file;
}

// A constraint is a rule without a head: that it does not hold must not be.
std::string cube_text(const Cube& cube) {
  std::string text;
  for (const GroundLiteral literal : cube) {
    (text += "1 0 0 0 1 ") += std::to_string(-literal);
    text += '\n';
  }
  return text += kLastLine;
}

std::string spelled(const Cube& cube) {
  std::string text;
  for (const GroundLiteral literal : cube) {
    if (!text.empty()) text += ' ';
    text += std::to_string(literal);
  }
  return text;
}

bool read_cube(std::string_view text, Cube& cube) {
  cube.clear();
  while (!text.empty()) {
    GroundLiteral literal = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), literal);
    if (error != std::errc() || literal == 0) return false;
    cube.push_back(literal);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    if (text.empty()) break;
    if (text.front() != ' ' || text.size() == 1) return false;
    text.remove_prefix(1);
  }
  return true;
}

}    // namespace dl
