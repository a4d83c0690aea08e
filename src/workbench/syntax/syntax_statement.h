#pragma once
// syntax_statement.h - the words and signs of a statement that the grammar refused, as its writer
// sees them: what the scanner knows, and what it does not.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostic.h"
#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

enum class TokenKind : std::uint8_t {
  kEnd,         // there is no such token
  kName,        // begins with a small letter
  kVariable,    // begins with a capital letter
  kNumber,
  kQuoted,       // with its quotes
  kDirective,    // "#" and a word
  kSign,
  kForeign,    // a character that belongs nowhere
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::string_view text = {};
  zarel::Place place = {};
};

// From where something stands to where something else ends.
zarel::Place joined(const zarel::Place& first, const zarel::Place& last);

// Goes through a text token by token, without blanks, comments and verbatim sections. Positions are
// counted on from the first one.
class TokenReader {
 public:
  TokenReader(std::string_view text, std::size_t offset, const zarel::Position& position)
      : text_(text), offset_(offset), position_(position) {}

  Token next();    // kEnd behind the last, with the place of the text's end
  std::size_t offset() const { return offset_; }

 private:
  void pass(std::size_t size);
  void pass_blanks();
  std::size_t length_of_token(TokenKind& kind) const;

  std::string_view text_;
  std::size_t offset_;
  zarel::Position position_;
};

class Statement {
 public:
  // What stands around a refused token; a file that is gone has no tokens.
  Statement(const zarel::Diagnostic& finding, SourceTexts& texts);
  // What stands in the line of an unknown character, which is the token that is looked at.
  Statement(const zarel::Place& character, SourceTexts& texts);

  std::size_t size() const { return tokens_.size(); }
  std::size_t at() const { return at_; }    // the token that is looked at, or size()
  const Token& token(std::size_t index) const;
  std::string_view text(std::size_t index) const { return token(index).text; }
  const Token& found() const { return token(at_); }
  const Token& before(std::size_t distance = 1) const { return token(at_ - distance); }
  const Token& behind(std::size_t distance = 1) const { return token(at_ + distance); }

  // Whether nothing stands between a token and the one behind it.
  bool touch(std::size_t first) const;
  // Brackets that are open in front of the refused token, the innermost last.
  const std::vector<std::size_t>& open() const { return open_; }
  std::string_view innermost() const { return open_.empty() ? "" : text(open_.back()); }
  // The sign between head and body; size() when none stands in front of the refused token.
  std::size_t neck() const { return neck_; }
  bool is_in_body() const { return neck_ != size(); }
  // The first token of the literal or argument that the refused token stands in or behind.
  std::size_t literal() const;

  bool expects(std::string_view word) const;
  const std::vector<std::string_view>& expected() const { return expected_; }
  bool lacks_full_stop() const { return lacks_full_stop_; }
  const Token& template_brace() const { return template_brace_; }    // of the one it stands in
  std::string_view text_before() const { return text_before_; }      // of the whole statement
  std::string unused_variable() const;                               // in the statement

 private:
  void read(TokenReader reader, const zarel::Position& refused);
  void leave_template();
  void find_brackets();

  std::vector<Token> tokens_;
  std::size_t at_ = 0;
  std::vector<std::size_t> open_;
  std::size_t neck_ = 0;
  std::vector<std::string_view> expected_;
  bool lacks_full_stop_ = false;
  Token end_;
  Token template_brace_;
  std::string_view text_before_;
};

// What kind of thing a token may end or begin.
bool ends_term(const Token& token);
bool begins_term(const Token& token);
bool is_neck(std::string_view text);
bool is_aggregate(std::string_view text);

}    // namespace workbench
