#pragma once
// rows.h - the rows of a file of data, whatever its form.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/place.h"
#include "workbench/data/declaration.h"

namespace workbench {

// What a field holds. Only some forms tell a text from a number: kPlain is what may be either.
enum class FieldKind : std::uint8_t {
  kEmpty,    // nothing, or there is no such field
  kPlain,
  kText,
  kNumber,
  kList,      // of fields
  kNested,    // an object, or a list in a list: nothing that a value can hold
  kBytes,     // no text
};

struct Field {
  FieldKind kind = FieldKind::kEmpty;
  std::size_t begin = 0;     // in the row's text; of a list, in its elements
  std::size_t length = 0;    // likewise
};

struct Row {
  std::string text;               // of all fields, one behind the other
  std::vector<Field> fields;      // by column
  std::vector<Field> elements;    // of lists

  std::string_view text_of(const Field& field) const {
    return std::string_view(text).substr(field.begin, field.length);
  }
  Field added(FieldKind kind, std::string_view spelling) {
    text += spelling;
    return {kind, text.size() - spelling.size(), spelling.size()};
  }
  void clear() {
    text.clear();
    fields.clear();
    elements.clear();
  }
};

// The text that places in a row are told by: columns in characters need it. `begin` is where it
// stands.
struct RowText {
  std::string_view text;
  zarel::SourceLocation begin;
  bool has_mark_in_front = false;    // in its line, of the byte order
};

// What keeps a file from being read on.
struct RowFault {
  std::string_view code;
  zarel::SourceRange place;    // line 0: the file as a whole
  std::string text;
  std::string label = {};
  std::string help = {};
};

class RowSource {
 public:
  virtual ~RowSource() = default;

  // Hands each row over until that returns false. Throws a RowFault.
  virtual void read(const std::function<bool(const Row&)>& use) = 0;

  // By name. There may be more of them with each row when they are not fixed.
  const std::vector<std::string>& columns() const { return columns_; }
  virtual bool has_fixed_columns() const { return true; }

  // While a row is handed over, where it begins, where a field of it stands, and its text.
  virtual zarel::SourceLocation place() const = 0;
  virtual zarel::SourceRange place_of(std::size_t column) const = 0;
  virtual RowText row_text() const = 0;

 protected:
  std::vector<std::string> columns_;
};

// Of an open file, which must outlive them. A delimiter that nobody chose is asked for when it
// looks wrong.
std::unique_ptr<RowSource> csv_rows(std::FILE* file, const DataDeclaration& how);
std::unique_ptr<RowSource> json_rows(std::FILE* file);

// Of a database: a query, or a table of that name.
std::unique_ptr<RowSource> database_rows(const std::string& path, const std::string& query);

// The names of its tables. Throws a RowFault.
std::vector<std::string> tables_of(const std::string& path);

}    // namespace workbench
