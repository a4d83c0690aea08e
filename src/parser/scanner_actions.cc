#include "parser/scanner_actions.h"

#include <algorithm>
#include <string>

#include "base/characters.h"
#include "model/run.h"
#include "parser/text_range.h"
#include "parser/written_statement.h"

namespace zarel {
ScannerActions::ScannerActions(const ScannerInput& input, std::uint32_t file,
                               std::ostream& verbatim, const ShortQualifiedConstants& constants)
    : input_(input),
      verbatim_(verbatim),
      file_(file),
      wide_(current_run().files[file].wide),
      verbatim_lines_(current_run().verbatim_lines),
      flat_atom_(constants),
      is_observed_(current_run().statement_observer != nullptr) {}

void ScannerActions::pass(std::string_view text) {
  const std::size_t last_line = text.rfind('\n');
  if (last_line == std::string_view::npos) return pass_line(text);
  wide_.note(text, line_, column_);
  line_ += static_cast<std::uint32_t>(std::count(text.begin(), text.end(), '\n'));
  column_ = static_cast<std::uint32_t>(text.size() - last_line);
}

void ScannerActions::pass_line(std::string_view text) {
  wide_.note(text, line_, column_);
  pass(text.size());
}

void ScannerActions::line_end() {
  ++current_run().findings.parser_line;
  ++line_;
  column_ = 1;
}

// The text was not passed over so far.
Place ScannerActions::place_of_next(std::string_view text) const {
  wide_.note(text, line_, column_);
  return place_of(SourceSpan{file_, range_of_text(line_, column_, text)});
}

void ScannerActions::tell(Diagnostic finding) const {
  if (!is_silent_) report(std::move(finding));
}

NameId ScannerActions::identifier(std::string_view spelling) {
  if (spelling.size() > kLongestIdentifier) {
    tell({Code::kLongIdentifier, place_of_next(spelling),
          "identifier too long, truncated to 1001 characters"});
    spelling = spelling.substr(0, kLongestIdentifier);
  }
  return names().intern(spelling);
}

std::optional<Number> ScannerActions::number(std::string_view digits) {
  if (digits.size() > kLongestNumber) {
    std::string text = "numeric constant ";
    tell({Code::kLongNumber, place_of_next(digits), text.append(digits).append(" is too long")});
    return std::nullopt;
  }
  std::uint32_t value = 0;
  for (const char digit : digits) value = 10 * value + static_cast<std::uint32_t>(digit - '0');
  return Number{value, static_cast<std::uint32_t>(digits.size())};
}

// Whether what stands in front of that text is a whole literal, or a whole head, and no beginning
// of something else.
bool ScannerActions::is_atom_before(std::string_view behind) const {
  if (place_ == FlatAtomPlace::kLiteral) return behind.starts_with(',') || behind.starts_with('.');
  if (behind.starts_with(' ')) behind.remove_prefix(1);
  return behind.starts_with(":-") || behind.starts_with("<-");
}

FlatText ScannerActions::flat_text(std::string_view text, std::size_t word_length) {
  const FlatText word{word_length};
  if (has_at(text, word_length, '[')) {
    if (place_ != FlatAtomPlace::kStatement || is_observed_ || depth_ != 0) return word;
    const std::size_t length = flat_frame_.read(text, word_length);
    const bool is_fact = length != 0 && has_at(text, length, '.');
    return is_fact ? FlatText{length + 1, nullptr, true, &flat_frame_} : word;
  }
  const std::size_t length = flat_atom_.read(text, word_length);
  if (length == 0) return word;
  // An observer is told of the parts by the grammar's actions, but for those of a simple fact.
  const bool is_told_in_parts = is_observed_ && !flat_atom_.is_simple();
  const bool is_fact = place_ == FlatAtomPlace::kStatement && has_at(text, length, '.');
  if (is_fact && (flat_atom_.is_simple() || (!is_told_in_parts && depth_ == 0)))
    return {length + 1, &flat_atom_, true};
  if (is_observed_ || !is_outside() || !is_atom_before(text.substr(length))) return word;
  place_ = FlatAtomPlace::kNone;
  return {length, &flat_atom_, false};
}

void ScannerActions::underscore_identifier(std::string_view spelling) {
  tell({Code::kUnderscoreIdentifier, place_of_next(spelling),
        "identifier starts with an underscore"});
}

void ScannerActions::unknown_character(char character) {
  const std::string_view text(&character, 1);
  const SourceLocation place = here();
  pass_line(text);
  tell({Code::kUnknownCharacter, place_of(place), std::string(text)});
}

void ScannerActions::starred_comment() {
  if (!current_run().options.skips_faulty_statements) return;
  report({Code::kStarredComment, place_of(here()), "a comment begins with %*"});
}

void ScannerActions::begin_remark() {
  is_in_remark_ = is_observed_;
  remark_place_ = here();
  remark_.clear();
  pass(2);
}

void ScannerActions::end_remark() {
  is_in_remark_ = false;
  current_run().statement_observer->remark(remark_, remark_place_);
}

void ScannerActions::open_verbatim(std::string_view mark) {
  verbatim_mark_ = verbatim_line_ = here();
  pass(mark);
  verbatim_ << "% ASITIS's Body is herein written verbatim\n";
  end_verbatim_line(here());
}

void ScannerActions::end_verbatim_line(const SourceLocation& next) {
  verbatim_lines_.add({verbatim_line_});
  verbatim_line_ = next;
}

void ScannerActions::verbatim(std::string_view text) {
  verbatim_.write(text.data(), static_cast<std::streamsize>(text.size()));
  std::uint32_t line = line_;
  for (const char character : text) {
    if (character == '\n') end_verbatim_line({++line, 1, file_});
  }
  pass(text);
}

void ScannerActions::close_verbatim() {
  verbatim_ << "\n% End of ASITIS's Section\n\n";
  for (int line = 0; line < 3; ++line) end_verbatim_line(here());
}

void ScannerActions::unclosed_verbatim() {
  tell({Code::kUnclosedVerbatim, place_of(verbatim_mark_), "EOF in ASITIS"});
  close_verbatim();
}

}    // namespace zarel
