#pragma once
// declaration.h - how a file of data becomes facts: "%! data ..." in a program, taken apart.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/place.h"
#include "frames/frame.h"
#include "workbench/messages/message.h"

namespace workbench {

// What the values of a column become. kAny: a whole number an integer, a name a constant, all else
// a string. kScaled: a number, times the factor and plus the offset an integer.
enum class ColumnKind : std::uint8_t { kAny, kText, kInteger, kConstant, kDate, kScaled };

struct DataColumn {
  std::string name;          // in the file
  std::size_t number = 0;    // or its position there, from 1
  ColumnKind kind = ColumnKind::kAny;
  std::uint64_t factor = 1;
  std::uint64_t offset = 0;
  std::string attribute = {};    // of a frame; empty: called like the column
  zarel::ARROW arrow = zarel::ARROW::kSingle;
  zarel::SourceSpan place = {};    // not known for a column that nobody declared
};

// What becomes of a row of a relation in which a field is empty.
enum class EmptyRule : std::uint8_t { kError, kSkipRow, kValue };

struct DataDeclaration {
  std::string relation;             // or the class of the objects, which may be empty
  std::optional<DataColumn> key;    // of frames: the column with the objects
  std::string file;
  std::string query;                  // of a database: a table or a query
  std::vector<DataColumn> columns;    // none: all
  char delimiter = '\0';              // none: as the file's name tells
  bool has_header = true;
  bool trims = false;    // blanks around fields are left out
  EmptyRule empty = EmptyRule::kError;
  std::string empty_value;             // as written
  std::optional<std::string> quote;    // in place of a double quote
  std::string frame_space = {};        // empty: that of the place
  // Not known for a file that the command line names.
  zarel::SourceSpan place = {};    // from "%!" to the end
  zarel::SourceSpan name_place = {};
  zarel::SourceSpan file_place = {};

  bool is_declared() const { return place.file != zarel::kNoFile; }
};

// What is wrong with a declaration, and where.
struct DeclarationFault {
  zarel::SourceSpan place;
  std::string text;
  std::string help = {};
};

// Whether the text behind "%!" is a declaration: its first word is "data".
bool is_data_declaration(std::string_view remark);

// Takes it apart; `place` is that of the "%!" in front of it.
std::variant<DataDeclaration, DeclarationFault> read_declaration(
    std::string_view remark, const zarel::SourceLocation& place);

// Whether the text is a name in small letters, as of a relation.
bool is_relation_name(std::string_view text);

// Whether the file's name is that of data, by its ending; and of a database.
bool is_data_file(std::string_view path);
bool is_database_file(std::string_view path);

}    // namespace workbench
