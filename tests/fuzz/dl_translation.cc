#include "dl_translation.h"

#include <algorithm>

#include "dl/failure.h"
#include "dl/folding.h"
#include "dl/options.h"
#include "dl/parse.h"
#include "dl/survey.h"
#include "dl/translator.h"
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

}    // namespace

std::string mistake_of_dl(const std::vector<std::string>& words, std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return "NUL byte in the input";
  const dl::Options options = dl_options(words);
  std::string source(text);
  source.append(2, '\0');    // the scanner's end marks
  dl::Survey survey;
  const dl::Folding unfolded;
  dl::StatementBuilder first_builder(survey, unfolded);
  dl::parse_text(source, first_builder);
  dl::ProgramParts parts;
  dl::Translation translation;
  dl::Translator translator(options, parts, translation);
  translator.begin_file("file");
  const dl::Folding folding = options.fold ? survey.folding() : dl::Folding();
  dl::StatementBuilder builder(translator, folding);
  if (!dl::parse_text(source, builder)) return builder.mistake();
  try {
    translator.end_program();
  } catch (const dl::Failure& failure) {
    return failure.message;
  }
  expect_equal("every line of a translation has a place",
               std::to_string(std::ranges::count(translation.text, '\n')),
               std::to_string(translation.lines.lines()));
  return {};
}

}    // namespace fuzz
