#include "parser/scanner_actions.h"

#include <algorithm>
#include <string>

#include "driver/diagnostics.h"

namespace zarel {
SourceLocation ScannerActions::place(int line, int column) const {
  return {static_cast<std::uint32_t>(line), static_cast<std::uint32_t>(column),
          static_cast<std::uint32_t>(file_)};
}

void ScannerActions::pass(std::string_view text) {
  const std::size_t last_line = text.rfind('\n');
  if (last_line == std::string_view::npos) return pass(text.size());
  line_ += static_cast<int>(std::count(text.begin(), text.end(), '\n'));
  column_ = static_cast<int>(text.size() - last_line);
}

void ScannerActions::line_end() {
  ++report_state().parser_line;
  ++line_;
  column_ = 1;
}

NameId ScannerActions::identifier(std::string_view spelling) {
  if (spelling.size() > kLongestIdentifier) {
    report_counted_error("identifier too long, truncated to 1001 characters");
    spelling = spelling.substr(0, kLongestIdentifier);
  }
  return names().intern(spelling);
}

std::optional<Number> ScannerActions::number(std::string_view digits) {
  if (digits.size() > kLongestNumber) {
    std::string message = "numeric constant ";
    report_counted_error(message.append(digits).append(" is too long"));
    return std::nullopt;
  }
  std::uint32_t value = 0;
  for (const char digit : digits) value = 10 * value + static_cast<std::uint32_t>(digit - '0');
  return Number{value, static_cast<std::uint32_t>(digits.size())};
}

void ScannerActions::underscore_identifier() {
  report_counted_error("identifier starts with an underscore");
}

void ScannerActions::unknown_character(char character) {
  standard_output().put(character);
}

void ScannerActions::open_verbatim() {
  verbatim_ << "% ASITIS's Body is herein written verbatim\n";
}

void ScannerActions::verbatim(std::string_view text) {
  verbatim_.write(text.data(), static_cast<std::streamsize>(text.size()));
  pass(text);
}

void ScannerActions::close_verbatim() {
  verbatim_ << "\n% End of ASITIS's Section\n\n";
}

void ScannerActions::unclosed_verbatim() {
  yyerror("EOF in ASITIS");
  close_verbatim();
}

}    // namespace zarel
