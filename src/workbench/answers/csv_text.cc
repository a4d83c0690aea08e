#include "workbench/answers/csv_text.h"

#include <algorithm>

#include "base/characters.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

// Whether nothing in the term but its ends has to be looked at.
std::size_t end_of_word(std::string_view text) {
  std::size_t end = 0;
  while (end < text.size() && zarel::is_in_word(text[end])) ++end;
  return end;
}

void append_string(std::string& out, const zarel::AnswerTerm& term) {
  const std::string_view quoted = term.text();
  const std::string_view prefix = term.prefix();
  if (prefix.empty()) return append_csv_field(out, quoted.substr(1, quoted.size() - 2));
  std::string shown(prefix);
  append_csv_field(out, (shown += ':') += term.name());
}

void append_function(std::string& out, const zarel::AnswerTerm& term) {
  std::string shown;
  append_term(shown, term);
  append_csv_field(out, shown);
}

}    // namespace

void append_csv_field(std::string& out, std::string_view text) {
  if (!text.empty() && text.find_first_of(",\"\r\n") == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t quote = std::min(text.find('"', at), text.size());
    out += text.substr(at, quote - at);
    if (quote != text.size()) out += "\"\"";
    at = quote + 1;
  }
  out += '"';
}

std::size_t append_csv_terms(std::string& out, const zarel::AnswerTerms& terms) {
  std::string_view rest = terms.text();
  std::size_t count = 0;
  while (!rest.empty()) {
    if (count++ != 0) out += ',';
    std::size_t end = end_of_word(rest);
    if (end != 0 && (end == rest.size() || rest[end] == ',')) {
      out += rest.substr(0, end);
    } else {
      end = zarel::end_of_first_term(rest);
      append_csv_term(out, zarel::AnswerTerm(rest.substr(0, end), terms.namespaces()));
    }
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  return count;
}

void append_csv_term(std::string& out, const zarel::AnswerTerm& term) {
  const std::string_view text = term.text();
  if (text.starts_with('"')) {
    append_string(out, term);
  } else if (text.ends_with(')')) {
    append_function(out, term);
  } else {
    out += text;
  }
}

}    // namespace workbench
