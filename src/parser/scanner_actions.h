#pragma once
// scanner_actions.h - what the scanner's rules call: token values, places, verbatim sections.

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include "base/diagnostic.h"
#include "base/file_table.h"
#include "base/line_map.h"
#include "base/place.h"
#include "model/name_table.h"
#include "parser/flat_atom.h"
#include "parser/flat_frame.h"
#include "parser/scanner_input.h"
#include "parser/token_values.h"

namespace zarel {

inline constexpr std::size_t kLongestIdentifier = 1001;    // characters; more are cut off
inline constexpr std::size_t kLongestNumber = 9;           // digits; more are an error

// What a flat atom could be behind the last token. See Note [flat facts].
enum class FlatAtomPlace : std::uint8_t { kNone, kStatement, kLiteral };

// A word, or what it begins, with the full stop when that is a fact: the atom or the frame is valid
// until the next one is read.
struct FlatText {
  std::size_t length;
  const FlatAtom* atom = nullptr;
  bool is_fact = false;
  const FlatFrame* frame = nullptr;
};

// Of one scanner, at one file or text.
class ScannerActions {
 public:
  // Reads the input, which is the file of that number in the run's table. Verbatim sections go to
  // `verbatim`.
  ScannerActions(const ScannerInput& input, std::uint32_t file, std::ostream& verbatim,
                 const ShortQualifiedConstants& constants);

  std::size_t read(char* buffer, std::size_t size) { return input_.read(buffer, size); }

  // The column where the next text stands, in bytes from 1.
  std::uint32_t column() const { return column_; }

  // A token begins with the next text; and ends with the last one that was passed over.
  void begin_token(SourceRange& token) const { token = {line_, column_, line_, column_}; }
  void end_token(SourceRange& token) const {
    token.last_line = line_;
    token.last_column = column_ - 1;
  }

  // Passing over text.
  void pass(std::string_view text);         // any
  void pass_line(std::string_view text);    // without line ends
  void pass(std::size_t length) {           // without line ends, in ASCII
    column_ += static_cast<std::uint32_t>(length);
  }
  void line_end();    // one that messages count

  // Whether the next token may be a flat atom: a statement or a literal begins there, and the file
  // has been right so far. Behind a mistake the parser counts tokens before it reports another.
  bool takes_flat_atom() const { return place_ != FlatAtomPlace::kNone && !has_mistake_; }
  void expect(FlatAtomPlace place) { place_ = place; }
  FlatText flat_text(std::string_view text, std::size_t word_length);

  // What is known of where the tokens stand: inside how many parentheses and brackets, and whether
  // in a body; and so what a comma or "not" is followed by.
  void open_parenthesis() { ++depth_; }
  void close_parenthesis() { depth_ -= depth_ == 0 ? 0 : 1; }
  void enter_body() { is_in_body_ = true; }
  void leave_body() { is_in_body_ = false; }
  FlatAtomPlace place_in_body() const {
    return is_in_body_ && is_outside() ? FlatAtomPlace::kLiteral : FlatAtomPlace::kNone;
  }
  void found_mistake() { has_mistake_ = true; }

  // The value of an identifier or quoted string. A spelling over 1001 characters is cut and counted
  // as an error.
  NameId identifier(std::string_view spelling);

  // The value of a number; nothing, after a counted error, when it is too long.
  std::optional<Number> number(std::string_view digits);

  // What a recovery asks for: whether the range begins with the last "#template" or "#maxint"; how
  // many braces are open; and the last string over several lines.
  void note_template() { template_ = here(); }
  void note_maxint() { maxint_ = here(); }
  bool is_template(const SourceRange& range) const { return begins_at(range, template_); }
  bool is_maxint(const SourceRange& range) const { return begins_at(range, maxint_); }
  void open_brace() { ++brace_depth_; }
  void close_brace() { brace_depth_ -= brace_depth_ == 0 ? 0 : 1; }
  int brace_depth() const { return brace_depth_; }
  void set_brace_depth(int depth) { brace_depth_ = depth; }
  void note_string(const SourceRange& string) {
    if (string.first_line != string.last_line) long_string_ = string;
  }
  const SourceRange& long_string() const { return long_string_; }
  void be_silent() { is_silent_ = true; }    // what is left is only passed over

  void underscore_identifier(std::string_view spelling);    // reports and counts
  void unknown_character(char character);                   // reports it, and passes over it

  // A comment begins with "%*", which opens longer ones in other languages. Reports it to those who
  // read on behind mistakes, too.
  void starred_comment();

  // Whether a string is to be closed at the end of the file, where it would stay open: true once.
  bool close_open_string() { return !std::exchange(has_open_string_, true); }
  // Whether there is a quote behind the end of the file.
  bool has_open_string() const { return has_open_string_; }

  // A comment, piece by piece. One that begins with "%!" is a remark, which the observer of
  // statements is told of.
  void begin_remark();
  void comment(std::string_view text) {
    if (is_in_remark_) remark_ += text;
    pass_line(text);
  }
  void end_comment() {
    if (is_in_remark_) end_remark();
  }

  // A verbatim section: the mark that it begins with, its pieces, its end.
  void open_verbatim(std::string_view mark);
  void verbatim(std::string_view text);
  void close_verbatim();
  void unclosed_verbatim();    // the file ends in the section

 private:
  void tell(Diagnostic finding) const;
  static bool begins_at(const SourceRange& range, const SourceLocation& place) {
    return place.line == range.first_line && place.column == range.first_column;
  }
  SourceLocation here() const { return {line_, column_, file_}; }
  Place place_of_next(std::string_view text) const;
  void end_remark();
  void end_verbatim_line(const SourceLocation& next);
  bool is_outside() const { return depth_ == 0 && brace_depth_ == 0; }
  bool is_atom_before(std::string_view behind) const;

  ScannerInput input_;
  std::ostream& verbatim_;
  std::uint32_t file_;
  WideCharacters& wide_;
  LineMap& verbatim_lines_;
  std::uint32_t line_ = 1;    // true line, inside strings and verbatim sections too
  std::uint32_t column_ = 1;
  SourceLocation verbatim_mark_;    // of the section that was opened last
  SourceLocation verbatim_line_;    // where the line begins that is being written
  SourceLocation template_;
  SourceLocation maxint_;
  SourceRange long_string_{};
  int brace_depth_ = 0;
  bool is_silent_ = false;
  bool has_open_string_ = false;
  FlatAtom flat_atom_;
  FlatFrame flat_frame_;
  FlatAtomPlace place_ = FlatAtomPlace::kStatement;
  int depth_ = 0;
  bool is_in_body_ = false;
  bool is_observed_;    // statements are told as they are written
  bool is_in_remark_ = false;
  std::string remark_;    // behind "%!"
  SourceLocation remark_place_;
  bool has_mistake_ = false;
};

}    // namespace zarel
