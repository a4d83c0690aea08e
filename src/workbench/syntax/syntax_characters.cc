#include "workbench/syntax/syntax_characters.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include "base/characters.h"
#include "workbench/syntax/syntax_foreign.h"

namespace workbench {
namespace {

// A character, decoded; of what is no UTF-8, one byte without a code point.
struct Character {
  std::string_view text;
  std::optional<char32_t> code;
};

Character character_at(std::string_view text, std::size_t offset) {
  const auto byte = [&](std::size_t i) {
    return static_cast<unsigned char>(offset + i < text.size() ? text[offset + i] : '\0');
  };
  const unsigned char first = byte(0);
  const std::size_t length = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
  if (length <= 1) {
    return {text.substr(offset, 1), length == 1 ? std::optional<char32_t>(first) : std::nullopt};
  }
  char32_t code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return {text.substr(offset, 1), std::nullopt};
    code = (code << 6) | (byte(i) & 0x3F);
  }
  return {text.substr(offset, length), code};
}

// What a character was to be, which then is its mending.
struct Meant {
  std::string_view characters;    // one behind the other
  std::string_view meant;
  std::string_view help;
};

constexpr Meant kMeant[] = {
    {"\u00A0\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u202F\u3000\f\v",
     " ", "write an ordinary blank"},
    {"\u200B\u200C\u200D\u2060\uFEFF\u00AD", "", "take it out: it cannot be seen"},
    {"\u2010\u2011\u2012\u2013\u2014\u2015\u2212\uFF0D", "-", "write - instead"},
    {"\u2260", "!=", "write != instead"},
    {"\u2264\u2A7D", "<=", "write <= instead"},
    {"\u2265\u2A7E", ">=", "write >= instead"},
    {"\u2190\u21D0", ":-", "write :- instead"},
    {"\u2192", "->", "write -> in a frame, and :- in a rule, the head first"},
    {"\u2227", ",", "write a comma instead"},
    {"\u2228", "v", "write v in a head; a body has no alternatives"},
    {"\u00AC", "not ", "write not, or - for strong negation"},
    {"\u00D7\u22C5\u00B7", "*", "write * instead"},
    {"\u2026", "..", "write .. instead"},
    {"\uFF0C\u3001", ",", "write , instead"},
    {"\uFF0E\u3002", ".", "write . instead"},
    {"\uFF08", "(", "write ( instead"},
    {"\uFF09", ")", "write ) instead"},
};

constexpr std::string_view kQuotes =
    "\u201C\u201D\u201E\u201F\u00AB\u00BB\u2018\u2019\u201A\u201B`\u00B4";

// A byte that is no character is in no list of them.
bool is_in(std::string_view characters, const Character& character) {
  return character.code && characters.find(character.text) != std::string_view::npos;
}

// Letters of all scripts, roughly: what is no sign, no blank and no picture.
bool is_letter(char32_t code) {
  if (code < 0xC0 || code == 0xD7 || code == 0xF7) return false;
  return (code < 0x2000) || (code >= 0x2C00 && code < 0x3000) || (code > 0x3020 && code < 0xD800) ||
         (code >= 0xF900 && code < 0xFE00) || (code >= 0x20000 && code < 0x30000);
}

// Goes along the line of a character.
class Line {
 public:
  Line(const zarel::Place& place, SourceTexts& texts)
      : texts_(texts),
        place_(place),
        text_(texts.text(place.first.file)),
        offset_(texts.offset(place.first.file, place.first.line, place.first.column)) {}

  bool is_known(std::string_view byte) const { return text_.substr(offset_).starts_with(byte); }
  std::string_view text() const { return text_; }
  std::size_t offset() const { return offset_; }
  const zarel::Place& place() const { return place_; }
  SourceTexts& texts() const { return texts_; }
  char before() const { return offset_ == 0 ? '\n' : text_[offset_ - 1]; }
  bool has(std::string_view next) const { return text_.substr(offset_).starts_with(next); }

  // The place of the bytes [begin, end) of the line, which may begin in front of the character.
  zarel::Place between(std::size_t begin, std::size_t end) const {
    const std::size_t last_begin = last_character(begin, end);
    zarel::Position last = position(last_begin);
    last.column += static_cast<std::uint32_t>(end - 1 - last_begin);
    return {position(begin), last};
  }
  // Where the line ends, or so many bytes further on.
  std::size_t line_end(std::size_t most = std::string_view::npos) const {
    const std::string_view rest = text_.substr(offset_, most);
    return offset_ + std::min(rest.find_first_of("\r\n"), rest.size());
  }
  bool is_first_of_line() const {
    const std::size_t begin = offset_ - (place_.first.column - 1);
    return text_.substr(begin, offset_ - begin).find_first_not_of(" \t") == std::string_view::npos;
  }

 private:
  // A byte that is no UTF-8 may look like the rest of a character that begins further left.
  std::size_t last_character(std::size_t begin, std::size_t end) const {
    std::size_t last = end - 1;
    while (last > begin && zarel::continues_character(text_[last])) --last;
    return last;
  }
  zarel::Position position(std::size_t offset) const {
    zarel::Position result = place_.first;
    const auto characters = [&](std::size_t from, std::size_t to) {
      return static_cast<std::uint32_t>(
          std::count_if(text_.begin() + static_cast<std::ptrdiff_t>(from),
                        text_.begin() + static_cast<std::ptrdiff_t>(to),
                        [](char c) { return !zarel::continues_character(c); }));
    };
    if (offset < offset_) {
      result.column -= static_cast<std::uint32_t>(offset_ - offset);
      result.character -= characters(offset, offset_);
    } else {
      result.column += static_cast<std::uint32_t>(offset - offset_);
      result.character += characters(offset_, offset);
    }
    return result;
  }

  SourceTexts& texts_;
  zarel::Place place_;
  std::string_view text_;
  std::size_t offset_;
};

constexpr std::size_t kLongestQuoted = 1'000;

// 'ann', or the same with other quotes: from quote to quote, if there is another in the line.
Message quoted(const Line& line, const Character& character) {
  const bool is_plain = character.text == "'";
  const std::size_t begin = line.offset() + character.text.size();
  const std::size_t end = line.line_end(kLongestQuoted);
  std::size_t closing = begin;
  Character other;
  for (; closing < end; closing += other.text.size()) {
    other = character_at(line.text(), closing);
    if (is_plain ? other.text == "'" : is_in(kQuotes, other) || other.text == "\"") break;
  }
  Message message{is_plain ? "single-quotes" : "typographic-quotes",
                  line.between(line.offset(), begin),
                  filled("a quoted constant has the quotes \", not {}", {character.text})};
  message.help = "write \"...\"";
  if (closing < end) {
    const std::string_view inside = line.text().substr(begin, closing - begin);
    message.place = line.between(line.offset(), closing + other.text.size());
    message.help = filled("write \"{}\"", {inside});
    if (inside.find('"') == std::string_view::npos) {
      message.fixes = {replaced(message.place, filled("\"{}\"", {inside}))};
    }
  }
  return message;
}

Message quote_in_name(const Line& line, const Character& character) {
  return {"sign-in-name",
          line.between(line.offset(), line.offset() + character.text.size()),
          filled("a name has no {} in it", {character.text}),
          "",
          {},
          "names are made of letters, digits and _: write X1 or X_new"};
}

Message unclosed_string(const Line& line) {
  return {"unclosed-string",
          line.between(line.offset(), line.offset() + 1),
          "the string that begins here is not closed",
          "",
          {},
          "put a quote where it ends"};
}

Message comment(const Line& line, std::string_view sign) {
  Message message{"foreign-comment", line.between(line.offset(), line.line_end()),
                  "a comment begins with %"};
  message.help = filled("write % instead of {}", {sign});
  if (sign != "/*") {
    message.fixes = {replaced(line.between(line.offset(), line.offset() + sign.size()), "%")};
  } else {
    message.help = "write % in front of each line";
  }
  return message;
}

// A name with letters that are none here.
Message foreign_letter(const Line& line) {
  const std::string_view text = line.text();
  const auto is_part = [&](std::size_t offset) {
    const Character character = character_at(text, offset);
    return zarel::is_in_word(text[offset]) || (character.code && is_letter(*character.code));
  };
  std::size_t begin = line.offset();
  while (begin != 0 && line.offset() - begin < kLongestQuoted &&
         zarel::is_in_word(text[begin - 1])) {
    --begin;
  }
  std::size_t end = line.offset();
  while (end < text.size() && end - begin < kLongestQuoted && is_part(end)) {
    end += character_at(text, end).text.size();
  }
  const std::string_view name = text.substr(begin, end - begin);
  const zarel::Place place = line.between(begin, end);
  return {"foreign-letter",
          place,
          filled("the name {} has letters other than a to z", {name}),
          "",
          {},
          filled("a constant may stand in quotes: \"{}\"", {name}),
          {replaced(place, filled("\"{}\"", {name}))}};
}

// Signs of the ASCII range that mean something elsewhere.
std::optional<Message> foreign_sign(const Line& line, const Character& character) {
  const auto place = [&](std::size_t length) {
    return line.between(line.offset(), line.offset() + length);
  };
  const char behind =
      line.offset() + 1 < line.text().size() ? line.text()[line.offset() + 1] : '\n';
  if (character.text == "/") {
    if (behind == '/' || behind == '*') return comment(line, behind == '/' ? "//" : "/*");
  }
  if (character.text == "#" && (line.is_first_of_line() || behind == ' ' || behind == '!')) {
    return comment(line, "#");
  }
  if (line.has("\\+")) {
    return Message{"negation-sign",
                   place(2),
                   "default negation is written not",
                   "",
                   {},
                   "write not and a blank instead",
                   {replaced(place(2), "not ")}};
  }
  if (line.has("\\=")) {
    const std::size_t length = line.has("\\==") ? 3 : 2;
    return Message{"comparison-slip",
                   place(length),
                   "this comparison is written !=",
                   "",
                   {},
                   "comparisons are ==, !=, <, <=, > and >=",
                   {replaced(place(length), "!=")}};
  }
  if (character.text == "/" || character.text == "\\" || character.text == "^") {
    const Statement statement(line.place(), line.texts());
    return arithmetic(statement, statement.at());
  }
  return std::nullopt;
}

// Where "*/" stands that ends a comment; the line's end when it is far away.
zarel::Position end_of_comment(const Line& line) {
  constexpr std::size_t kLongestComment = 4'000;
  const std::string_view rest = line.text().substr(line.offset(), kLongestComment);
  const std::string_view comment = rest.substr(0, rest.find("*/"));
  zarel::Position last = line.between(line.offset(), line.line_end()).last;
  const std::size_t line_end = comment.rfind('\n');
  if (comment.size() == rest.size() || line_end == std::string_view::npos) return last;
  last.line += static_cast<std::uint32_t>(std::count(comment.begin(), comment.end(), '\n'));
  last.column = static_cast<std::uint32_t>(comment.size() - line_end) + 1;
  return last;
}

std::string code_point(char32_t code) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "U+%04X", static_cast<unsigned>(code));
  return text.data();
}

// What is said of a character of which nothing else is known.
std::string nowhere(const Character& character) {
  if (!character.code) {
    std::array<char, 16> byte{};
    std::snprintf(byte.data(), byte.size(), "0x%02X",
                  static_cast<unsigned>(static_cast<unsigned char>(character.text[0])));
    return filled("the byte {} is no character of UTF-8", {byte.data()});
  }
  constexpr char32_t kFirstVisible = 0x21;
  constexpr char32_t kDelete = 0x7F;
  const std::string code = code_point(*character.code);
  if (*character.code < kFirstVisible || *character.code == kDelete) {
    return filled("the character {} belongs nowhere", {code});
  }
  return filled("the character {} ({}) belongs nowhere", {character.text, code});
}

Message plain(const Line& line, const Character& character) {
  std::size_t end = line.offset();
  while (line.text().substr(end).starts_with(character.text)) end += character.text.size();
  Message message{"unknown-character", line.between(line.offset(), end), nowhere(character)};
  if (!character.code) {
    message.help = "save the file as UTF-8";
    return message;
  }
  const std::string code = code_point(*character.code);
  for (const Meant& meant : kMeant) {
    if (!is_in(meant.characters, character)) continue;
    if (meant.meant.empty() || meant.meant == " ") {
      message.text = filled("the character {} belongs nowhere", {code});
    }
    message.help = meant.help;
    message.fixes = {replaced(message.place, meant.meant)};
  }
  return message;
}

Message answer(const Line& line, const Character& character) {
  const bool is_quote = character.text == "'" || is_in(kQuotes, character);
  if (is_quote) {
    const bool is_behind_name = zarel::is_in_word(line.before());
    return is_behind_name ? quote_in_name(line, character) : quoted(line, character);
  }
  if (character.text == "\"") return unclosed_string(line);
  if (auto message = foreign_sign(line, character)) return *message;
  if (character.code && is_letter(*character.code)) return foreign_letter(line);
  return plain(line, character);
}

// Blanks of files that come from elsewhere.
bool is_harmless(const Line& line, const Character& character) {
  if (character.text == "\uFEFF") return line.offset() == 0;
  return character.text == "\r" && (line.has("\r\n") || line.offset() + 1 == line.text().size());
}

}    // namespace

CharacterAnswer unknown_character(const zarel::Place& place, std::string_view byte,
                                  SourceTexts& texts, std::string_view told_in_line) {
  const Line line(place, texts);
  if (byte.empty() || !line.is_known(byte)) {    // the file cannot be read again
    const Character character = character_at(byte, 0);
    if (character.text == told_in_line) return {std::nullopt, place.first, byte};
    return {Message{"unknown-character", place, nowhere(character)}, place.first, byte};
  }
  const Character character = character_at(line.text(), line.offset());
  zarel::Position last = place.first;
  last.column += static_cast<std::uint32_t>(character.text.size()) - 1;
  if (is_harmless(line, character) || character.text == told_in_line) {
    return {std::nullopt, last, character.text};
  }
  Message message = answer(line, character);
  if (line.has("/*")) return {std::move(message), end_of_comment(line), character.text};
  if (message.place.last.column > last.column) last = message.place.last;
  return {std::move(message), last, character.text};
}

}    // namespace workbench
