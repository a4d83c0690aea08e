#include "workbench/syntax/syntax_statement.h"

#include <algorithm>
#include <array>

#include "base/characters.h"

namespace workbench {
namespace {

constexpr std::size_t kMostBehind = 200;         // tokens that are looked at behind a refused one
constexpr std::size_t kFewBehind = 20;           // where they are another statement
constexpr std::size_t kLongestBehind = 4'096;    // bytes of them
constexpr std::size_t kLongestLine = 400;        // bytes in front of an unknown character

// Longer ones first.
constexpr std::array kSigns = std::to_array<std::string_view>(
    {"*->>", "!=>", "*->", "=>>", "->>", "=>", "->", ":-", ":~", "<-", "::", "<=", ">=", "==",
     "!=",   "<>",  "@",   ",",   ".",   ":",  ";",  "-",  "~",  "!",  "+",  "*",  "$",  "&",
     "=",    "|",   "(",   ")",   "[",   "]",  "{",  "}",  "<",  ">",  "?",  "_"});

std::size_t length_of_word(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && zarel::is_in_word(text[length])) ++length;
  return length;
}

// One character of UTF-8, or a byte that is none.
std::size_t length_of_character(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && length < 4 && (text[length] & 0xC0) == 0x80) ++length;
  return (text[0] & 0xC0) == 0xC0 ? length : 1;
}

bool is_behind(const zarel::Position& first, const zarel::Position& second) {
  return first.line < second.line || (first.line == second.line && first.column < second.column);
}

bool touches(const Token& first, const Token& second) {
  const zarel::Position& last = first.place.last;
  const zarel::Position& next = second.place.first;
  return last.line == next.line && last.column + 1 == next.column;
}

bool is_opening(std::string_view text) {
  return text == "(" || text == "[" || text == "{";
}
bool is_closing(std::string_view text) {
  return text == ")" || text == "]" || text == "}";
}

}    // namespace

zarel::Place joined(const zarel::Place& first, const zarel::Place& last) {
  return {first.first, last.last};
}

void TokenReader::pass(std::size_t size) {
  for (const char character : text_.substr(offset_, size)) {
    if (character == '\n') {
      ++position_.line;
      position_.column = position_.character = 1;
    } else {
      ++position_.column;
      // The bytes behind the first one of a character have its number.
      if ((character & 0xC0) != 0x80) ++position_.character;
    }
  }
  offset_ = std::min(offset_ + size, text_.size());
}

void TokenReader::pass_blanks() {
  while (offset_ < text_.size()) {
    const std::string_view rest = text_.substr(offset_);
    if (rest[0] == '%') {
      pass(std::min(rest.find('\n'), rest.size()));
    } else if (rest.starts_with("ASITIS %*")) {
      pass(std::min(rest.find("*%"), rest.size() - 2) + 2);
    } else if (rest[0] == ' ' || rest[0] == '\t' || rest[0] == '\r' || rest[0] == '\n') {
      pass(1);
    } else {
      return;
    }
  }
}

std::size_t TokenReader::length_of_token(TokenKind& kind) const {
  const std::string_view rest = text_.substr(offset_);
  const char first = rest[0];
  const std::size_t word = length_of_word(rest);
  if (word != 0) {
    kind = zarel::is_upper_case(first) ? TokenKind::kVariable
           : zarel::is_digit(first)    ? TokenKind::kNumber
           : first == '_'              ? TokenKind::kSign
                                       : TokenKind::kName;
    if (kind != TokenKind::kNumber) return word;
    return std::min(rest.find_first_not_of("0123456789"), rest.size());
  }
  if (first == '"' && rest.find('"', 1) != std::string_view::npos) {
    kind = TokenKind::kQuoted;
    return rest.find('"', 1) + 1;
  }
  if (first == '#' && length_of_word(rest.substr(1)) != 0) {
    kind = TokenKind::kDirective;
    return 1 + length_of_word(rest.substr(1));
  }
  kind = TokenKind::kSign;
  for (const std::string_view sign : kSigns) {
    if (rest.starts_with(sign)) return sign.size();
  }
  kind = TokenKind::kForeign;
  return length_of_character(rest);
}

Token TokenReader::next() {
  pass_blanks();
  if (offset_ >= text_.size()) return {TokenKind::kEnd, {}, {position_, position_}};
  Token token;
  const std::size_t length = length_of_token(token.kind);
  token.text = text_.substr(offset_, length);
  token.place.first = position_;
  pass(length - 1);
  token.place.last = position_;
  if ((token.text.back() & 0xC0) == 0x80) --token.place.last.character;
  token.place.last.character = std::max(token.place.last.character, token.place.first.character);
  pass(1);
  return token;
}

Statement::Statement(const zarel::Diagnostic& finding, SourceTexts& texts) {
  end_.place = finding.place;
  const zarel::Place from = finding.refusal ? finding.refusal->statement : finding.place;
  if (finding.refusal) {
    expected_ = finding.refusal->expected;
    lacks_full_stop_ = finding.refusal->lacks_full_stop;
  }
  const std::string_view text = texts.text(from.first.file);
  const std::size_t offset = texts.offset(from.first.file, from.first.line, from.first.column);
  text_before_ = text.substr(0, offset);
  read(TokenReader(text, offset, from.first), finding.place.first);
}

Statement::Statement(const zarel::Place& character, SourceTexts& texts) {
  end_.place = character;
  const zarel::Position& at = character.first;
  const std::string_view text = texts.text(at.file);
  const std::size_t offset = texts.offset(at.file, at.line, at.column);
  // Where the line is long, what stands far in front of the character does not matter.
  const bool is_long = at.column > kLongestLine;
  const zarel::Position begin = is_long ? at : zarel::Position{at.file, at.line, 1, 1};
  const std::size_t from = is_long ? offset : offset - (at.column - 1);
  text_before_ = text.substr(0, from);
  read(TokenReader(text, from, begin), at);
}

// The tokens up to the refused one, and some behind it, to the end of the statement.
void Statement::read(TokenReader reader, const zarel::Position& refused) {
  Token token = reader.next();
  for (; token.kind != TokenKind::kEnd && is_behind(token.place.last, refused);
       token = reader.next()) {
    tokens_.push_back(token);
  }
  at_ = tokens_.size();
  const std::size_t most = reader.offset() + kLongestBehind;
  const std::size_t most_tokens = at_ + (lacks_full_stop_ ? kFewBehind : kMostBehind);
  while (token.kind != TokenKind::kEnd && tokens_.size() < most_tokens && reader.offset() < most) {
    tokens_.push_back(token);
    const std::size_t last = tokens_.size() - 1;
    token = reader.next();
    const bool is_last = text(last) == "." && token.text != "." && text(last - 1) != "." &&
                         token.kind != TokenKind::kNumber && token.text != "[";
    if (is_last && !(last == at_ && touches(tokens_[last], token))) break;
  }
  leave_template();
  find_brackets();
}

// Of a statement in a definition, what stands in front of it is none of it.
void Statement::leave_template() {
  if (text(0) != "#template") return;
  std::size_t begin = 0;
  int depth = 0;
  int groups = 0;
  for (std::size_t i = 0; i < at_; ++i) {
    if (is_opening(text(i))) {
      ++depth;
      if (text(i) == "{" && depth == 1 && ++groups == 2) {
        template_brace_ = tokens_[i];
        begin = i + 1;
      }
    }
    if (is_closing(text(i))) --depth;
    const bool is_end = text(i) == "." && text(i + 1) != "." && (i == 0 || text(i - 1) != ".");
    if (groups == 2 && is_end && depth <= 1) {
      begin = i + 1;
      depth = 1;
    }
  }
  tokens_.erase(tokens_.begin(), tokens_.begin() + static_cast<std::ptrdiff_t>(begin));
  at_ -= begin;
}

void Statement::find_brackets() {
  neck_ = tokens_.size();
  for (std::size_t i = 0; i < at_; ++i) {
    const std::string_view sign = text(i);
    if (is_opening(sign)) open_.push_back(i);
    if (is_closing(sign) && !open_.empty()) open_.pop_back();
    if (open_.empty() && neck_ == tokens_.size() && is_neck(sign)) neck_ = i;
  }
}

const Token& Statement::token(std::size_t index) const {
  return index < tokens_.size() ? tokens_[index] : end_;
}

bool Statement::touch(std::size_t first) const {
  return first + 1 < size() && touches(token(first), token(first + 1));
}

std::size_t Statement::literal() const {
  std::size_t depth = 0;
  for (std::size_t i = at_; i-- != 0;) {
    const std::string_view sign = text(i);
    if (is_closing(sign)) ++depth;
    if (is_opening(sign) && depth-- == 0) return i + 1;
    const bool is_border = sign == "," || sign == ";" || sign == "|" || sign == "v" ||
                           (sign == ":" && innermost() == "{") || is_neck(sign);
    if (depth == 0 && is_border) return i + 1;
  }
  return 0;
}

bool Statement::expects(std::string_view word) const {
  return std::find(expected_.begin(), expected_.end(), word) != expected_.end();
}

std::string Statement::unused_variable() const {
  for (const std::string_view name : {"N", "M", "Z", "D", "R"}) {
    const auto is_name = [&](const Token& token) { return token.text == name; };
    if (std::none_of(tokens_.begin(), tokens_.end(), is_name)) return std::string(name);
  }
  return "Value";
}

bool begins_term(const Token& token) {
  switch (token.kind) {
    case TokenKind::kName:
      return token.text != "not" && token.text != "non" && token.text != "v";
    case TokenKind::kVariable:
    case TokenKind::kNumber:
    case TokenKind::kQuoted:
      return true;
    case TokenKind::kDirective:
      return token.text == "#maxint";
    default:
      return token.text == "_";
  }
}

bool ends_term(const Token& token) {
  return begins_term(token) || token.text == ")" || token.text == "]" || token.text == "}";
}

bool is_neck(std::string_view text) {
  return text == ":-" || text == "<-" || text == ":~";
}

bool is_aggregate(std::string_view text) {
  constexpr std::array kNames =
      std::to_array<std::string_view>({"#any", "#avg", "#count", "#max", "#min", "#sum", "#times"});
  return std::find(kNames.begin(), kNames.end(), text) != kNames.end();
}

}    // namespace workbench
