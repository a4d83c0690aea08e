#include "dl_translation.h"

#include <algorithm>

#include "dl/failure.h"
#include "dl/options.h"
#include "dl/translate.h"
#include "harness.h"

namespace fuzz {
namespace {

dl::Options dl_options(const std::vector<std::string>& words) {
  std::vector<std::string_view> arguments(words.begin(), words.end());
  arguments.emplace_back("file");
  try {
    return dl::read_options(arguments);
  } catch (const dl::Failure&) {
    return {};
  }
}

// Every place is one of the text, and its end is not before its beginning.
void expect_place(const zarel::Place& place, std::string_view text) {
  const auto lines = static_cast<std::uint32_t>(std::ranges::count(text, '\n') + 1);
  const auto [first, last] = place;
  const bool is_in_order =
      first.line < last.line || (first.line == last.line && first.character <= last.character);
  const bool is_inside = first.line > 0 && last.line <= lines && first.character > 0 &&
                         first.character <= first.column && last.character <= last.column;
  expect_equal("a mistake has a place in the text", "yes", is_in_order && is_inside ? "yes" : "no");
}

}    // namespace

std::string mistake_of_dl(const std::vector<std::string>& words, std::string_view text) {
  const dl::Source source{"file", text};
  const auto nothing = [](std::string_view) { return std::string(); };
  const dl::Translated program = dl::translate({&source, 1}, dl_options(words), nothing);
  if (program.mistake) {
    if (program.mistake->place.first.file == 0) expect_place(program.mistake->place, text);
    return program.mistake->text;
  }
  expect_equal("every line of a translation has a place",
               std::to_string(std::ranges::count(program.text, '\n')),
               std::to_string(program.lines.lines()));
  return {};
}

}    // namespace fuzz
