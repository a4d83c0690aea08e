#include "workbench/data/declaration.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

#include "base/characters.h"
#include "parser/flat_words.h"

namespace workbench {
namespace {

using zarel::SourceSpan;

constexpr std::string_view kFirstWord = "data";
constexpr std::uint64_t kGreatestInteger = 2147483647;

struct Token {
  enum class Kind : std::uint8_t { kWord, kNumber, kString, kSign, kEnd };
  Kind kind = Kind::kEnd;
  std::string_view text;    // of a string: what is in its quotes
  std::size_t begin = 0;
  std::size_t length = 0;

  bool is(std::string_view sign) const { return kind == Kind::kSign && text == sign; }
  bool is_word(std::string_view word) const { return kind == Kind::kWord && text == word; }
};

bool has_ending(std::string_view path, std::initializer_list<std::string_view> endings) {
  std::string lower(path);
  for (char& c : lower) {
    if (zarel::is_upper_case(c)) c = static_cast<char>(c - 'A' + 'a');
  }
  return std::ranges::any_of(endings, [&](std::string_view end) { return lower.ends_with(end); });
}

class DeclarationReader {
 public:
  DeclarationReader(std::string_view text, const zarel::SourceLocation& place)
      : text_(text.substr(0, text.find_last_not_of(" \t\r") + 1)), place_(place) {}

  DataDeclaration read() {
    next();    // "data"
    next();
    read_target();
    expect("(");
    result_.file_place = span(token_);
    result_.file = take_string("the file's name in double quotes");
    if (is_database_file(result_.file) && token_.is(",") && has_query()) take_query();
    while (token_.is(",")) {
      next();
      read_item();
    }
    expect(")");
    if (token_.is("@")) read_space();
    if (token_.is(".")) next();
    if (token_.kind != Token::Kind::kEnd) refuse("nothing more is expected here");
    result_.place = {place_.file, range(0, text_.size())};
    result_.place.range.first_column -= 2;    // with "%!"
    return std::move(result_);
  }

 private:
  [[noreturn]] void refuse(std::string text, std::string help = {}) const {
    throw DeclarationFault{span(token_), std::move(text), std::move(help)};
  }

  zarel::SourceRange range(std::size_t begin, std::size_t length) const {
    const auto first = static_cast<std::uint32_t>(place_.column + 2 + begin);
    const auto size = static_cast<std::uint32_t>(std::max<std::size_t>(length, 1));
    return {place_.line, first, place_.line, first + size - 1};
  }
  SourceSpan span(const Token& token) const {
    return {place_.file, range(token.begin, token.length)};
  }

  void next() {
    end_of_last_ = position_;
    position_ = std::min(text_.find_first_not_of(" \t", position_), text_.size());
    token_ = {Token::Kind::kEnd, {}, position_, 0};
    if (position_ == text_.size()) return;
    const std::string_view rest = text_.substr(position_);
    std::size_t length = 1;
    token_.kind = Token::Kind::kSign;
    if (rest[0] == '"') {
      const std::size_t end = rest.find('"', 1);
      if (end == std::string_view::npos) {
        token_.length = rest.size();
        refuse("the double quote here is not closed");
      }
      length = end + 1;
      token_.kind = Token::Kind::kString;
      token_.text = rest.substr(1, end - 1);
    } else {
      while (length < rest.size() && zarel::is_in_word(rest[0]) && zarel::is_in_word(rest[length]))
        ++length;
      if (zarel::is_in_word(rest[0])) {
        const bool is_number = std::ranges::all_of(rest.substr(0, length), zarel::is_digit);
        token_.kind = is_number ? Token::Kind::kNumber : Token::Kind::kWord;
      }
      for (const std::string_view arrow : {"->>", "->"}) {
        if (length == 1 && rest.starts_with(arrow)) length = arrow.size();
      }
      token_.text = rest.substr(0, length);
    }
    token_.length = length;
    position_ += length;
  }

  void expect(std::string_view sign) {
    if (!token_.is(sign)) refuse(std::string("a ").append(sign).append(" is expected here"));
    next();
  }

  std::string take_string(std::string_view what) {
    if (token_.kind != Token::Kind::kString) refuse(std::string(what).append(" is expected here"));
    std::string text(token_.text);
    next();
    return text;
  }

  std::uint64_t take_number() {
    std::uint64_t value = kGreatestInteger + 1;
    if (token_.kind == Token::Kind::kNumber)
      std::from_chars(token_.text.data(), token_.text.data() + token_.text.size(), value);
    if (value == 0 || value > kGreatestInteger)
      refuse("a number from 1 to 2147483647 is expected here");
    next();
    return value;
  }

  void read_target() {
    result_.name_place = span(token_);
    if (token_.kind == Token::Kind::kWord) {
      if (!is_relation_name(token_.text)) {
        refuse(std::string(token_.text).append(" is no name of a relation or a class"),
               "begin it with a small letter");
      }
      result_.relation = token_.text;
      next();
    } else if (!token_.is("[")) {
      refuse("the name of a relation is expected here",
             "write, for example, %! data sold(\"sales.csv\", customer, amount)");
    }
    if (!token_.is("[")) return;
    next();
    result_.key = read_column();
    expect("]");
  }

  // Whether a string without anything of a column is next.
  bool has_query() {
    const auto [first, second] = next_two();
    return first.kind == Token::Kind::kString && (second.is(",") || second.is(")"));
  }

  // The tokens behind this one.
  std::pair<Token, Token> next_two() {
    const Token token = token_;
    const std::size_t position = position_;
    next();
    const Token first = token_;
    next();
    const Token second = std::exchange(token_, token);
    position_ = position;
    end_of_last_ = token.begin;
    return {first, second};
  }

  void take_query() {
    next();
    result_.query = take_string("a table or a query");
  }

  void read_item() {
    if (token_.kind == Token::Kind::kWord && next_two().first.is("=")) return read_option();
    result_.columns.push_back(read_column());
  }

  DataColumn read_column() {
    DataColumn column;
    column.place = span(token_);
    read_column_name(column);
    if (token_.is("->") || token_.is("->>")) {
      if (column.number != 0) refuse("an attribute's name is expected in front of the arrow");
      column.attribute = std::exchange(column.name, {});
      column.arrow = token_.is("->>") ? zarel::ARROW::kSet : zarel::ARROW::kSingle;
      next();
      read_column_name(column);
    }
    if (token_.is(":")) read_kind(column);
    if (token_.is("*")) {
      next();
      column.factor = take_number();
      set_scaled(column);
    }
    if (token_.is("+")) {
      next();
      column.offset = take_number();
      set_scaled(column);
    }
    column.place.range.last_column = static_cast<std::uint32_t>(place_.column + 1 + end_of_last_);
    return column;
  }

  void set_scaled(DataColumn& column) const {
    if (column.kind != ColumnKind::kAny && column.kind != ColumnKind::kInteger &&
        column.kind != ColumnKind::kScaled) {
      refuse("only numbers are multiplied and added to");
    }
    column.kind = ColumnKind::kScaled;
  }

  void read_column_name(DataColumn& column) {
    if (token_.kind == Token::Kind::kNumber) {
      column.number = take_number();
      return;
    }
    if (token_.kind != Token::Kind::kWord && token_.kind != Token::Kind::kString)
      refuse("the name of a column is expected here",
             "a name that is no plain word stands in double quotes");
    column.name = token_.text;
    next();
  }

  void read_kind(DataColumn& column) {
    constexpr std::array<std::pair<std::string_view, ColumnKind>, 5> kKinds = {{
        {"any", ColumnKind::kAny},
        {"text", ColumnKind::kText},
        {"integer", ColumnKind::kInteger},
        {"constant", ColumnKind::kConstant},
        {"date", ColumnKind::kDate},
    }};
    next();
    const auto* const found =
        std::ranges::find_if(kKinds, [&](const auto& kind) { return token_.is_word(kind.first); });
    if (found == kKinds.end()) {
      refuse("the kind of a column is expected here",
             "kinds are text, integer, constant, date and any");
    }
    column.kind = found->second;
    next();
  }

  bool take_yes_or_no() {
    const bool is_yes = token_.is_word("yes");
    if (!is_yes && !token_.is_word("no")) refuse("yes or no is expected here");
    next();
    return is_yes;
  }

  void read_option() {
    const Token name = token_;
    next();
    next();    // "="
    if (name.text == "delimiter") {
      const Token value = token_;
      const std::string text = take_string("a sign in double quotes");
      const bool is_tab = text == "\\t" || text == "tab";
      if (!is_tab && (text.size() != 1 || text == "\r")) {
        token_ = value;
        refuse("a delimiter is one sign", "write delimiter=\";\", or \"tab\" for a tabulator");
      }
      result_.delimiter = is_tab ? '\t' : text[0];
    } else if (name.text == "header") {
      result_.has_header = take_yes_or_no();
    } else if (name.text == "trim") {
      result_.trims = take_yes_or_no();
    } else if (name.text == "quote") {
      result_.quote = take_string("a text in double quotes");
    } else if (name.text == "table" || name.text == "query") {
      if (!is_database_file(result_.file)) {
        token_ = name;
        refuse("tables are in databases only");
      }
      result_.query = take_string("a text in double quotes");
    } else if (name.text == "empty") {
      read_empty();
    } else {
      token_ = name;
      refuse(std::string("there is no option ").append(name.text),
             "options are delimiter, header, trim, empty, quote, table and query");
    }
  }

  // "skip-row", or a value as it would be written.
  void read_empty() {
    const bool is_string = token_.kind == Token::Kind::kString;
    if (!is_string && token_.kind != Token::Kind::kNumber && !is_name_in_small_letters())
      refuse("a constant, a string, an integer or skip-row is expected here");
    result_.empty = EmptyRule::kValue;
    result_.empty_value = text_.substr(token_.begin, token_.length);
    if (token_.kind == Token::Kind::kNumber) {
      result_.empty_value = std::to_string(token_.text == "0" ? (next(), 0) : take_number());
      return;
    }
    const bool may_be_rule = token_.is_word("skip");
    next();
    if (!may_be_rule || !token_.is("-")) return;
    next();
    if (!token_.is_word("row")) refuse("row is expected here");
    next();
    result_.empty = EmptyRule::kSkipRow;
  }

  bool is_name_in_small_letters() const {
    return token_.kind == Token::Kind::kWord && is_relation_name(token_.text);
  }

  void read_space() {
    next();
    if (!is_name_in_small_letters()) refuse("the name of a frame space is expected here");
    result_.frame_space = token_.text;
    next();
  }

  std::string_view text_;
  zarel::SourceLocation place_;
  std::size_t position_ = 0;
  std::size_t end_of_last_ = 0;    // of the token in front of token_
  Token token_;
  DataDeclaration result_;
};

}    // namespace

bool is_data_declaration(std::string_view remark) {
  remark.remove_prefix(std::min(remark.find_first_not_of(" \t"), remark.size()));
  return remark.starts_with(kFirstWord) &&
         (remark.size() == kFirstWord.size() || !zarel::is_in_word(remark[kFirstWord.size()]));
}

std::variant<DataDeclaration, DeclarationFault> read_declaration(
    std::string_view remark, const zarel::SourceLocation& place) {
  try {
    return DeclarationReader(remark, place).read();
  } catch (const DeclarationFault& fault) {
    return fault;
  }
}

bool is_relation_name(std::string_view text) {
  return !text.empty() && zarel::is_lower_case(text[0]) &&
         zarel::length_of_name(text) == text.size();
}

bool is_database_file(std::string_view path) {
  return has_ending(path, {".db", ".sqlite", ".sqlite3"});
}

bool is_data_file(std::string_view path) {
  return has_ending(path, {".csv", ".tsv", ".json", ".jsonl", ".ndjson"}) || is_database_file(path);
}

}    // namespace workbench
