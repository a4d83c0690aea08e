#include "output/reading_errors.h"

#include <algorithm>
#include <array>
#include <string>
#include <unistd.h>

#include "base/characters.h"
#include "model/run.h"
#include "output/answer_set_reader.h"

namespace zarel {
namespace {

// The generator names its functions without their prefix. Its messages carry the names that callers
// know, except for the one function that is not theirs to call.
std::string with_established_names(std::string text) {
  const std::size_t name = text.find(" in yy");
  if (name != std::string::npos && text.find("yy_get_next_buffer") == std::string::npos) {
    text.insert(name + 4, "output_");
  }
  return text;
}

// As the established texts have it.
constexpr std::string_view kUnreadable = "can't open input";
constexpr std::string_view kExhausted = "memory exhausted";

Code code_of(std::string_view message) {
  if (message == kUnreadable) return Code::kUnreadableAnswers;
  return message == kExhausted ? Code::kAnswersTooDeep : Code::kAnswerSyntax;
}

// Counts lines and columns from the first byte on.
class PositionCounter {
 public:
  void pass(std::string_view text) {
    for (const char byte : text) {
      if (byte == '\n') {
        ++at_.line;
        at_.column = at_.character = 1;
      } else {
        ++at_.column;
        if (!continues_character(byte)) ++at_.character;
      }
    }
  }

  // Where the next byte stands.
  const Position& at() const { return at_; }

 private:
  Position at_{current_run().files.add("the solver's output"), 1, 1, 1};
};

// Passes over the file's bytes up to that one; false when there are not so many.
bool pass_file(int file, std::size_t begin, std::size_t end, PositionCounter& counter) {
  std::array<char, std::size_t{64} * 1024> piece{};
  while (begin < end) {
    const std::size_t wanted = std::min(piece.size(), end - begin);
    const ssize_t count = ::pread(file, piece.data(), wanted, static_cast<off_t>(begin));
    if (count <= 0) return false;
    counter.pass({piece.data(), static_cast<std::size_t>(count)});
    begin += static_cast<std::size_t>(count);
  }
  return true;
}

}    // namespace

Place place_in_text(std::string_view text, std::size_t first, std::size_t last) {
  PositionCounter counter;
  counter.pass(text.substr(0, first));
  const Position begin = counter.at();
  counter.pass(text.substr(std::min(first, text.size()), last - first));
  return {begin, counter.at()};
}

Place place_in_file(std::FILE* file, std::size_t first, std::size_t last) {
  PositionCounter counter;
  if (!pass_file(::fileno(file), 0, first, counter)) return {};
  const Position begin = counter.at();
  return pass_file(::fileno(file), first, last, counter) ? Place{begin, counter.at()} : Place{};
}

void output_yyerror(std::string_view message) {
  output_yyerror(message, {});
}

void output_yyerror(std::string_view message, const Place& place) {
  report({code_of(message), place, std::string(message)});
}

void count_line() {
  ++current_run().findings.parser_line;
}

void end_unread() {
  output_yyerror(kUnreadable);
  end_run(0);
}

void end_unwritten() {
  end_run(1);
}

void end_unscanned(const char* message, const Place& place) {
  report_and_end({Code::kAnswerScanner, place, with_established_names(message)}, 2);
}

}    // namespace zarel
