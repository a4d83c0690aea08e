#pragma once
// scanner_actions.h - what the scanner's rules call: token values, places, verbatim sections.

#include <cstdint>
#include <optional>
#include <ostream>
#include <string_view>
#include <utility>

#include "base/place.h"
#include "model/name_table.h"
#include "parser/program_builder.h"
#include "parser/scanner_input.h"

namespace zarel {

inline constexpr std::size_t kLongestIdentifier = 1001;    // characters; more are cut off
inline constexpr std::size_t kLongestNumber = 9;           // digits; more are an error

// Of one scanner, at one file or text.
class ScannerActions {
 public:
  // Reads the input, which is the program's file of that number, counted from 0. Verbatim sections
  // go to `verbatim`.
  ScannerActions(const ScannerInput& input, int file, std::ostream& verbatim)
      : input_(input), verbatim_(verbatim), file_(file) {}

  std::size_t read(char* buffer, std::size_t size) { return input_.read(buffer, size); }

  // Where the next text stands in the file, both counted from 1.
  int line() const { return line_; }
  int column() const { return column_; }
  SourceLocation place(int line, int column) const;    // that place in the file being read

  // Passing over text.
  void pass(std::string_view text);    // a text that may hold line ends
  void pass(std::size_t length) { column_ += static_cast<int>(length); }    // a text without
  void line_end();    // one that messages count

  // Whether the next token may be a flat fact: a statement begins there, and the file has been
  // right so far. Behind a mistake the parser counts tokens before it reports another.
  bool takes_flat_fact() const { return is_at_statement_ && !has_mistake_; }
  void set_at_statement(bool is_at_statement) { is_at_statement_ = is_at_statement; }
  void found_mistake() { has_mistake_ = true; }

  // The value of an identifier or quoted string. A spelling over 1001 characters is cut and counted
  // as an error.
  NameId identifier(std::string_view spelling);

  // The value of a number; nothing, after a counted error, when it is too long.
  std::optional<Number> number(std::string_view digits);

  void underscore_identifier();              // reports and counts
  void unknown_character(char character);    // to standard output, as it is

  // Whether a string is to be closed at the end of the file, where it would stay open: true once.
  bool close_open_string() { return !std::exchange(has_open_string_, true); }
  // Whether there is a quote behind the end of the file.
  bool has_open_string() const { return has_open_string_; }

  // A verbatim section: its beginning, its pieces, its end.
  void open_verbatim();
  void verbatim(std::string_view text);
  void close_verbatim();
  void unclosed_verbatim();    // the file ends in the section

 private:
  ScannerInput input_;
  std::ostream& verbatim_;
  int file_;
  int line_ = 1;    // true line, inside strings and verbatim sections too
  int column_ = 1;
  bool has_open_string_ = false;
  bool is_at_statement_ = true;
  bool has_mistake_ = false;
};

}    // namespace zarel
