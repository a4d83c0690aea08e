// rewrite_fuzz.cc - the input scanner and grammar with everything behind them, up to the printed
// program. Of a program without an error: dl reads what is printed; and divided into two files at
// the end of a statement, it gives the same.

#include <algorithm>
#include <array>
#include <deque>
#include <optional>

#include "dl_translation.h"
#include "driver/rewriting.h"
#include "harness.h"
#include "model/run.h"
#include "zarel/program_text.h"

namespace {

using zarel::RewriteOptions;
using zarel::RewrittenProgram;

// What dl says of a program that it has read, but that means nothing to it.
constexpr std::array kOwnMistakes = {
    "unsafe rule",              // zarel looks for them only when told to
    "needs a bound",            // zarel does not ask for one
    "NUL byte",                 // in a string, which is printed as it was given
    "character '&'",            // an external atom
    "without a guard term",     // only variables and integers are printed as guards
    "the name of a functor",    // a variable is none
    "is not supported",         // by dl, in the solver's language
};

// Frame statements keep the "-" of their subject where the solver's language has none: a subclass,
// and what stands in front of "!=>".
bool has_negative_term(const std::string& program) {
  return program.find(",-") != std::string::npos || program.find("(-") != std::string::npos;
}

void expect_readable(const std::string& program) {
  if (has_negative_term(program)) return;
  const std::string mistake = fuzz::mistake_of_dl({}, program);
  const bool is_own = std::ranges::any_of(
      kOwnMistakes, [&](const char* part) { return mistake.find(part) != std::string::npos; });
  if (!is_own) fuzz::expect_equal("dl reads the program:\n" + program, "", mistake);
}

// Where a line and column of the text are.
std::size_t offset_of(std::string_view text, const zarel::SourceLocation& location) {
  std::size_t begin = 0;
  for (std::uint32_t line = 1; line < location.line; ++line) begin = text.find('\n', begin) + 1;
  return begin + location.column - 1;
}

// The beginning of some statement of the program that was rewritten. Auxiliary clauses stand in
// the middle of a statement, where no mark that could end one stands in front.
std::optional<std::size_t> statement_begin(std::string_view text, const RewrittenProgram& program) {
  if (program.sources.empty()) return std::nullopt;
  const zarel::SourceLocation& location =
      program.sources[text.size() % program.sources.size()].location;
  if (location.line == 0) return std::nullopt;
  const std::size_t begin = offset_of(text, location);
  const std::size_t last = text.substr(0, begin).find_last_not_of(" \t\n");
  if (last == std::string_view::npos ||
      std::string_view(".?]}").find(text[last]) == std::string_view::npos)
    return std::nullopt;
  // A clause that a template's body led to stands inside its braces.
  const std::string_view front = text.substr(0, begin);
  if (std::ranges::count(front, '{') > std::ranges::count(front, '}')) return std::nullopt;
  const std::size_t line = text.rfind('\n', last) + 1;
  const bool may_be_comment = text.substr(line, last - line).find('%') != std::string_view::npos;
  return may_be_comment ? std::nullopt : std::optional(begin);
}

RewrittenProgram rewritten(std::initializer_list<std::string_view> texts,
                           const RewriteOptions& options) {
  std::deque<fuzz::MemoryFile> files;
  std::vector<std::string> paths;
  for (const std::string_view text : texts) paths.push_back(files.emplace_back(text).path());
  return rewrite(paths, options);
}

// Everything but the places in messages.
std::string outcome(const RewrittenProgram& program) {
  if (program.status != 0) return "status " + std::to_string(program.status);
  const auto messages = std::ranges::count(program.messages, '\n');
  return program.clauses + program.verbatim + program.legend + program.output +
         std::to_string(messages);
}

void expect_same_in_two_files(std::string_view text, const RewrittenProgram& program,
                              const RewriteOptions& options) {
  const std::optional<std::size_t> begin = statement_begin(text, program);
  if (!begin) return;
  const std::string_view front = text.substr(0, *begin);
  const std::string_view back = text.substr(*begin);
  // A file begins in the frame space "default", as "@." says inside one.
  const bool is_space_named = front.find('@') != std::string_view::npos;
  const std::string joined = std::string(front).append("\n@.\n").append(back);
  const std::string whole = outcome(is_space_named ? rewritten({joined}, options) : program);
  fuzz::expect_equal("the same in two files", whole, outcome(rewritten({front, back}, options)));
}

}    // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Input input = fuzz::read_input(data, size);
  zarel::Run run;    // for what reads a text without rewriting it
  const zarel::Run::Scope scope(run);
  const zarel::Options line = fuzz::zarel_options(input.words);
  const RewriteOptions options{line};
  const RewrittenProgram program = rewritten({input.text}, options);
  expect_same_in_two_files(input.text, program, options);
  if (program.status == 0) expect_readable(program.clauses);
  return 0;
}
