#include "workbench/answers/json_text.h"

#include <algorithm>

#include "base/characters.h"
#include "workbench/messages/characters.h"

namespace workbench {
namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

void append_escape(std::string& out, std::string_view begin, char byte) {
  const auto code = static_cast<unsigned char>(byte);
  ((out += begin) += kDigits[code >> 4U]) += kDigits[code & 0xFU];
}

// One character that may not stand as it is. Returns its bytes.
std::size_t append_special(std::string& out, std::string_view bytes, std::size_t at) {
  const char c = bytes[at];
  if (c == '"' || c == '\\') {
    (out += '\\') += c;
    return 1;
  }
  if (static_cast<unsigned char>(c) < ' ') {
    append_escape(out, "\\u00", c);
    return 1;
  }
  const Character character = character_at(bytes, at);
  if (character.code == 0) {
    append_escape(out, "\\udc", c);
    return 1;
  }
  out += bytes.substr(at, character.bytes);
  return character.bytes;
}

bool is_plain(char c) {
  return zarel::is_in_word(c) || (c >= ' ' && c < '\x7f' && c != '"' && c != '\\');
}

// JSON has no numbers with leading zeros.
std::string_view without_zeros(std::string_view digits) {
  const std::size_t first = digits.find_first_not_of('0');
  return digits.substr(std::min(first, digits.size() - 1));
}

void append_leaf(std::string& out, const zarel::AnswerTerm& term) {
  switch (term.kind()) {
    case zarel::AnswerTerm::Kind::kNumber:
      out += without_zeros(term.text());
      break;
    case zarel::AnswerTerm::Kind::kString:
      out += "{\"string\":";
      append_json_string(out, term.name());
      out += '}';
      break;
    case zarel::AnswerTerm::Kind::kQualifiedConstant:
      out += "{\"prefix\":";
      append_json_string(out, term.prefix());
      out += ",\"name\":";
      append_json_string(out, term.name());
      out += ",\"address\":";
      append_json_string(out, term.text().substr(1, term.text().size() - 2));
      out += '}';
      break;
    default:
      append_json_string(out, term.text());
  }
}

void append_walk(std::string& out, const zarel::AnswerTerms& terms) {
  using Step = zarel::TermWalk::Step;
  zarel::TermWalk walk(terms);
  bool is_first = true;
  for (Step step = walk.next(); step != Step::kEnd; step = walk.next()) {
    if (step == Step::kEndFunction) {
      out += "]}";
      is_first = false;
      continue;
    }
    if (!is_first) out += ',';
    is_first = step == Step::kBeginFunction;
    if (is_first) {
      out += "{\"function\":";
      append_json_string(out, walk.term().text());
      out += ",\"arguments\":[";
    } else {
      append_leaf(out, walk.term());
    }
  }
}

}    // namespace

void append_json_string(std::string& out, std::string_view bytes) {
  out += '"';
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t end = at;
    while (end < bytes.size() && is_plain(bytes[end])) ++end;
    out += bytes.substr(at, end - at);
    at = end == bytes.size() ? end : end + append_special(out, bytes, end);
  }
  out += '"';
}

void append_json_term(std::string& out, const zarel::AnswerTerm& term) {
  append_walk(out, zarel::AnswerTerms(term.text(), term.namespaces()));
}

void append_json_terms(std::string& out, const zarel::AnswerTerms& terms) {
  out += '[';
  append_walk(out, terms);
  out += ']';
}

}    // namespace workbench
