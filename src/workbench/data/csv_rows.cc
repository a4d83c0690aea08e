#include <algorithm>
#include <csv.h>
#include <exception>
#include <new>
#include <string_view>
#include <utility>

#include "workbench/data/data_text.h"
#include "workbench/data/rows.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::size_t kLongestRow = std::size_t{16} * 1024 * 1024;    // bytes
constexpr char kQuote = '"';

// Lines end in "\n", perhaps with "\r" in front; nothing else around a field is left out.
int is_line_end(unsigned char c) {
  return c == '\n' ? 1 : 0;
}
int is_carriage_return(unsigned char c) {
  return c == '\r' ? 1 : 0;
}

std::string_view trimmed(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(kBlanks), text.size());
  text.remove_prefix(first);
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

// The library takes pieces and calls back; it gets line by line, so that each row's place is known.
class CsvRows : public RowSource {
 public:
  CsvRows(std::FILE* file, const DataDeclaration& how) : text_(file), how_(how) {
    if (csv_init(&parser_, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
    const bool is_of_tabs = how.file.ends_with(".tsv") || how.file.ends_with(".TSV");
    delimiter_ = how.delimiter != '\0' ? how.delimiter : is_of_tabs ? '\t' : ',';
    csv_set_delim(&parser_, static_cast<unsigned char>(delimiter_));
    csv_set_space_func(&parser_, is_carriage_return);
    csv_set_term_func(&parser_, is_line_end);
  }
  CsvRows(const CsvRows&) = delete;
  CsvRows& operator=(const CsvRows&) = delete;
  ~CsvRows() override { csv_free(&parser_); }

  void read(const std::function<bool(const Row&)>& use) override {
    use_ = &use;
    pass_byte_order_mark();
    while (!is_done_) {
      const std::string_view line = text_.line();
      if (line.empty()) break;
      if (!is_in_row_) text_.mark(line.size());
      read_line(line);
      if (text_.marked().size() > kLongestRow) refuse_open_quote();
    }
    if (is_done_) return;
    if (csv_fini(&parser_, take_field, take_row, this) != 0) refuse_open_quote();
    pass_error_on();
    if (!has_header_ && how_.has_header) {
      throw RowFault{"malformed-data",
                     {},
                     "the file is empty",
                     {},
                     "a line with the names of the columns is expected, or header=no"};
    }
    if (text_.has_failed())
      throw RowFault{"read-failure", {}, "the file cannot be read to its end"};
  }

  zarel::SourceLocation place() const override { return text_.place_of_mark(); }

  zarel::SourceRange place_of(std::size_t column) const override {
    const std::string_view row = text_.marked();
    std::size_t begin = 0;
    std::size_t end = end_of_field(row, begin);
    for (; column > 0 && end < row.size() && row[end] == delimiter_; --column) {
      begin = end + 1;
      end = end_of_field(row, begin);
    }
    return range(begin, std::max(end, begin + 1));
  }

  RowText row_text() const override {
    const zarel::SourceLocation begin = text_.place_of_mark();
    return {text_.marked(), begin, has_mark_ && begin.line == 1};
  }

 private:
  void pass_byte_order_mark() {
    if (!text_.has_more()) return;
    const std::string_view begin = text_.begin();
    if (begin.starts_with("\xFF\xFE") || begin.starts_with("\xFE\xFF")) {
      throw RowFault{
          "malformed-data", {}, "the file is in UTF-16, and not in UTF-8", {}, "save it as UTF-8"};
    }
    if (!begin.starts_with(kByteOrderMark)) return;
    for (std::size_t i = 0; i < kByteOrderMark.size(); ++i) text_.advance();
    text_.mark(0);
    has_mark_ = true;
  }

  void read_line(std::string_view line) {
    const std::size_t row_size = text_.marked().size();
    has_ended_row_ = false;
    has_content_ = is_in_row_ || line.find_first_not_of("\r\n") != std::string_view::npos;
    check_carriage_returns(line, row_size);
    const std::size_t read =
        csv_parse(&parser_, line.data(), line.size(), take_field, take_row, this);
    pass_error_on();
    if (read != line.size() && !is_done_) {
      if (csv_error(&parser_) != CSV_EPARSE) throw std::bad_alloc();
      const std::size_t begin = row_size - line.size() + read;
      refuse_quote(begin, line[read] == kQuote);
    }
    is_in_row_ = has_content_ && !has_ended_row_;
  }

  // The library would pass over one that stands alone, outside of quotes.
  void check_carriage_returns(std::string_view line, std::size_t row_size) const {
    const std::size_t begin = row_size - line.size();
    for (std::size_t place = line.find('\r'); place < line.size();
         place = line.find('\r', place + 1)) {
      if (place + 1 == line.size() || line[place + 1] == '\n') continue;
      const std::string_view before = text_.marked().substr(0, begin + place);
      if (std::ranges::count(before, kQuote) % 2 != 0) continue;
      throw RowFault{"malformed-data",
                     range(begin + place, begin + place + 1),
                     "a carriage return stands in the middle of a line",
                     {},
                     "end lines with a line feed, or put the field into double quotes"};
    }
  }

  [[noreturn]] void refuse_quote(std::size_t place, bool is_quote) const {
    RowFault fault{"malformed-data", range(place, place + 1), {}};
    if (is_quote) {
      fault.text = "a double quote stands inside a field that does not begin with one";
      fault.help = "put the whole field into double quotes, and write each one in it twice";
    } else {
      fault.text = "a field goes on behind its closing double quote";
      fault.help = "write a double quote inside a field twice";
    }
    throw fault;
  }

  [[noreturn]] void refuse_open_quote() const {
    const std::string_view row = text_.marked();
    std::size_t begin = 0;
    for (std::size_t end = end_of_field(row, 0); end < row.size() && row[end] == delimiter_;
         end = end_of_field(row, begin)) {
      begin = end + 1;
    }
    throw RowFault{"malformed-data", range(begin, begin + 1),
                   "the double quote that opens this field is not closed"};
  }

  static std::size_t end_of_quotes(std::string_view row, std::size_t begin) {
    std::size_t end = begin + 1;
    while (end < row.size()) {
      if (row[end] != kQuote) {
        ++end;
      } else if (end + 1 < row.size() && row[end + 1] == kQuote) {
        end += 2;
      } else {
        return end + 1;
      }
    }
    return end;
  }

  // Behind the field that begins there: at its delimiter, at the row's end.
  std::size_t end_of_field(std::string_view row, std::size_t begin) const {
    std::size_t end = begin;
    if (end < row.size() && row[end] == kQuote) end = end_of_quotes(row, begin);
    while (end < row.size() && row[end] != delimiter_ && row[end] != '\n' && row[end] != '\r')
      ++end;
    return end;
  }

  zarel::SourceRange range(std::size_t begin, std::size_t end) const {
    const std::string_view row = text_.marked();
    const auto first = place_in(row, begin, text_.place_of_mark());
    const auto last = place_in(row, end - 1, text_.place_of_mark());
    return {first.line, first.column, last.line, last.column};
  }

  static void take_field(void* text, std::size_t size, void* self) {
    auto* const rows = static_cast<CsvRows*>(self);
    rows->guarded([&] { rows->add_field({static_cast<const char*>(text), size}); });
  }
  static void take_row(int /*end*/, void* self) {
    auto* const rows = static_cast<CsvRows*>(self);
    rows->guarded([&] { rows->end_row(); });
  }

  // No exception goes through the library, which is C.
  template <class Action>
  void guarded(Action action) {
    try {
      if (!is_done_) action();
    } catch (...) {
      error_ = std::current_exception();
      is_done_ = true;
    }
  }
  void pass_error_on() const {
    if (error_) std::rethrow_exception(error_);
  }

  void add_field(std::string_view text) {
    if (how_.trims) text = trimmed(text);
    row_.fields.push_back(row_.added(text.empty() ? FieldKind::kEmpty : FieldKind::kPlain, text));
  }

  void end_row() {
    has_ended_row_ = true;
    if (!has_header_) {
      take_header();
    } else {
      is_done_ = !is_whole() || !(*use_)(row_);
    }
    row_.clear();
  }

  bool is_whole() const {
    if (row_.fields.size() == columns_.size()) return true;
    const bool is_short = row_.fields.size() < columns_.size();
    std::string text = "the row has ";
    text.append(counted(row_.fields.size(), "field")).append(", and the first line ");
    text.append(counted(columns_.size(), how_.has_header ? "column" : "field"));
    const std::size_t end = std::max<std::size_t>(text_.marked().find_last_not_of("\r\n") + 1, 1);
    const zarel::SourceRange where =
        is_short ? range(0, end) : zarel::joined(place_of(columns_.size()), range(0, end));
    throw RowFault{"ragged-row",
                   where,
                   std::move(text),
                   {},
                   is_short ? "" : "a field with the delimiter in it stands in double quotes"};
  }

  void take_header() {
    has_header_ = true;
    for (std::size_t i = 0; i < row_.fields.size(); ++i) {
      columns_.push_back(how_.has_header ? std::string(row_.text_of(row_.fields[i]))
                                         : std::to_string(i + 1));
    }
    if (columns_.size() == 1 && how_.delimiter == '\0') look_for_delimiter();
    if (!how_.has_header) is_done_ = !(*use_)(row_);
  }

  void look_for_delimiter() const {
    const std::string_view row = text_.marked();
    const std::size_t other = row.find_first_of(delimiter_ == ',' ? ";\t|" : ",;|");
    if (other == std::string_view::npos || row[0] == kQuote) return;
    const std::string shown = row[other] == '\t' ? "tab" : std::string(1, row[other]);
    throw RowFault{"malformed-data",
                   range(other, other + 1),
                   "the first line has one column only, and this sign looks like a delimiter",
                   {},
                   "declare delimiter=\"" + shown + "\", or delimiter=\"" +
                       std::string(1, delimiter_) + "\" if there is one column"};
  }

  csv_parser parser_{};
  DataText text_;
  const DataDeclaration& how_;
  const std::function<bool(const Row&)>* use_ = nullptr;
  char delimiter_ = ',';
  Row row_;
  bool has_mark_ = false;         // of the byte order, in front of all
  bool has_header_ = false;       // the columns are known
  bool is_in_row_ = false;        // the last line did not end its row
  bool has_content_ = false;      // the last line is not blank
  bool has_ended_row_ = false;    // the last line ended one
  bool is_done_ = false;
  std::exception_ptr error_;    // of a callback
};

}    // namespace

std::unique_ptr<RowSource> csv_rows(std::FILE* file, const DataDeclaration& how) {
  return std::make_unique<CsvRows>(file, how);
}

}    // namespace workbench
