#include <algorithm>
#include <iterator>
#include <nlohmann/json.hpp>
#include <unordered_map>

#include "workbench/data/data_text.h"
#include "workbench/data/rows.h"

namespace workbench {
namespace {

constexpr std::size_t kMostKeys = 10'000;    // every row has a field for each

// The text as the library's parser takes it, character by character.
class TextIterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = const char*;
  using reference = char;

  explicit TextIterator(DataText* text = nullptr) : text_(text) {}
  char operator*() const { return text_->current(); }
  TextIterator& operator++() {
    text_->advance();
    return *this;
  }
  // With the end, which alone is asked for.
  bool operator==(const TextIterator& /*end*/) const { return !text_->has_more(); }
  bool operator!=(const TextIterator& end) const { return !(*this == end); }

 private:
  DataText* text_;
};

class JsonRows : public RowSource {
 public:
  explicit JsonRows(std::FILE* file) : text_(file) {}

  void read(const std::function<bool(const Row&)>& use) override {
    use_ = &use;
    pass_byte_order_mark();
    while (pass_blanks()) {
      if (text_.current() != '[' && text_.current() != '{') refuse_outside();
      const bool is_list = text_.current() == '[';
      Handler handler{*this};
      const bool is_good = nlohmann::json::sax_parse(TextIterator(&text_), TextIterator(), &handler,
                                                     nlohmann::json::input_format_t::json, is_list);
      if (!is_good) break;
    }
    if (text_.has_failed())
      throw RowFault{"read-failure", {}, "the file cannot be read to its end"};
    if (fault_) throw *fault_;
  }

  bool has_fixed_columns() const override { return false; }
  zarel::SourceLocation place() const override { return text_.place_of_mark(); }

  // Behind the key, a colon and blanks: to the end of the value when that is plain.
  zarel::SourceRange place_of(std::size_t column) const override {
    if (column >= key_ends_.size() || key_ends_[column] == 0) return range(0, 1);
    const std::string_view row = text_.marked();
    const std::size_t begin =
        std::min(row.find_first_not_of(" \t\r\n:", key_ends_[column]), row.size() - 1);
    std::size_t end = begin + 1;
    if (row[begin] == '"') {
      while (end < row.size() && row[end] != '"') end += row[end] == '\\' ? 2 : 1;
      end = std::min(end + 1, row.size());
    } else if (row[begin] != '{' && row[begin] != '[') {
      end = std::min(row.find_first_of(" \t\r\n,}", begin), row.size());
    }
    return range(begin, end);
  }

  RowText row_text() const override {
    const zarel::SourceLocation begin = text_.place_of_mark();
    return {text_.marked(), begin, has_mark_ && begin.line == 1};
  }

 private:
  // What the library's parser calls. False ends it.
  struct Handler {
    JsonRows& rows;

    bool null() { return rows.value(FieldKind::kEmpty, {}); }
    bool boolean(bool value) { return rows.value(FieldKind::kPlain, value ? "true" : "false"); }
    bool number_integer(std::int64_t value) {
      return rows.value(FieldKind::kNumber, std::to_string(value));
    }
    bool number_unsigned(std::uint64_t value) {
      return rows.value(FieldKind::kNumber, std::to_string(value));
    }
    bool number_float(double /*value*/, const std::string& spelling) {
      return rows.value(FieldKind::kNumber, spelling);
    }
    bool string(const std::string& text) { return rows.value(FieldKind::kText, text); }
    bool binary(const nlohmann::json::binary_t& /*value*/) { return false; }
    bool start_object(std::size_t /*size*/) { return rows.open(false); }
    bool key(const std::string& name) { return rows.key(name); }
    bool end_object() { return rows.close(); }
    bool start_array(std::size_t /*size*/) { return rows.open(true); }
    bool end_array() { return rows.close(); }
    bool parse_error(std::size_t /*place*/, const std::string& /*token*/,
                     const nlohmann::json::exception& /*error*/) {
      return rows.refuse("this is no JSON", "check the commas, quotes and brackets in front of it");
    }
  };

  // The last character that was read stands so far behind the mark.
  std::size_t last() const { return std::max<std::size_t>(text_.marked().size(), 1) - 1; }

  zarel::SourceRange range(std::size_t begin, std::size_t end) const {
    const auto first = place_in(text_.marked(), begin, text_.place_of_mark());
    const auto behind = place_in(text_.marked(), end - 1, text_.place_of_mark());
    return {first.line, first.column, behind.line, behind.column};
  }

  bool refuse(std::string text, std::string help = {}) {
    if (!fault_) {
      fault_ = RowFault{
          "malformed-data", range(last(), last() + 1), std::move(text), {}, std::move(help)};
    }
    return false;
  }

  void refuse_outside() {
    text_.advance();
    refuse("an object is expected here, in braces",
           "data is a list of objects, or one object behind the other");
    throw *fault_;
  }

  void pass_byte_order_mark() {
    if (!text_.has_more() || !text_.begin().starts_with("\xEF\xBB\xBF")) return;
    for (int i = 0; i < 3; ++i) text_.advance();
    text_.mark(0);
    has_mark_ = true;
  }

  // False at the end.
  bool pass_blanks() {
    while (text_.has_more()) {
      const char c = text_.current();
      if (c != ' ' && c != '\t' && c != '\r' && c != '\n') {
        text_.mark(0);
        return true;
      }
      text_.advance();
    }
    return false;
  }

  // Depth 0 is outside of rows, or in the list of them; 1 in a row; more in one of its values.
  bool open(bool is_list) {
    if (depth_ == 0 && is_list) {
      if (is_in_list_) return refuse("an object is expected here, in braces");
      is_in_list_ = true;
      return true;
    }
    ++depth_;
    if (depth_ == 1) {
      text_.mark(1);
      row_.clear();
      row_.fields.resize(columns_.size());
      key_ends_.assign(columns_.size(), 0);
      next_column_ = 0;
    } else if (depth_ == 2 && is_list) {
      is_in_value_list_ = true;
      field() = {FieldKind::kList, row_.elements.size(), 0};
    } else {
      field() = {FieldKind::kNested, 0, 0};
      is_in_value_list_ = false;
    }
    return true;
  }

  bool close() {
    if (depth_ == 0) {
      is_in_list_ = false;
      return true;
    }
    if (--depth_ == 1) is_in_value_list_ = false;
    return depth_ != 0 || (*use_)(row_);
  }

  Field& field() { return row_.fields[column_]; }

  bool value(FieldKind kind, std::string_view text) {
    if (depth_ == 0) return refuse("an object is expected here, in braces");
    if (depth_ == 1) {
      field() = row_.added(kind, text);
    } else if (depth_ == 2 && is_in_value_list_) {
      row_.elements.push_back(row_.added(kind, text));
      ++field().length;
    }
    return true;
  }

  // Most objects have their keys in the same order.
  bool key(const std::string& name) {
    if (depth_ != 1) return true;
    column_ = next_column_;
    if (column_ == columns_.size() || columns_[column_] != name) {
      const auto [entry, is_new] = numbers_.try_emplace(name, columns_.size());
      column_ = entry->second;
      if (is_new) {
        if (columns_.size() == kMostKeys) return refuse("the objects have too many different keys");
        columns_.push_back(name);
        row_.fields.emplace_back();
        key_ends_.push_back(0);
      }
    }
    next_column_ = column_ + 1;
    if (key_ends_[column_] != 0) return refuse("the key " + name + " comes twice in this object");
    key_ends_[column_] = text_.marked().size();
    return true;
  }

  DataText text_;
  const std::function<bool(const Row&)>* use_ = nullptr;
  Row row_;
  std::vector<std::size_t> key_ends_;    // by column, behind the mark; 0: not in this row
  std::unordered_map<std::string, std::size_t> numbers_;    // of columns
  std::size_t column_ = 0;
  std::size_t next_column_ = 0;
  std::size_t depth_ = 0;
  bool has_mark_ = false;    // of the byte order, in front of all
  bool is_in_list_ = false;
  bool is_in_value_list_ = false;
  std::optional<RowFault> fault_;
};

}    // namespace

std::unique_ptr<RowSource> json_rows(std::FILE* file) {
  return std::make_unique<JsonRows>(file);
}

}    // namespace workbench
