#pragma once
// fact_rows.h - rows as facts: binds the columns of a declaration, and tells what is wrong.

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "parser/fact_builder.h"
#include "workbench/data/rows.h"
#include "workbench/data/values.h"
#include "workbench/messages/message.h"
#include "zarel/program.h"

namespace workbench {

// Of one declaration and the rows that it is about.
class FactRows {
 public:
  // All must outlive it. Messages go to `sink`.
  FactRows(const DataDeclaration& how, RowSource& source, zarel::FactBuilder& facts,
           zarel::FileTable& files, const MessageSink& sink);

  // Makes facts of all rows.
  void read();

 private:
  // A column of the facts, and what its values looked like.
  struct Bound {
    DataColumn column;
    std::string name;                                         // as messages call it
    std::size_t index = kNoColumn;                            // in the file
    zarel::NameId attribute = {};                             // of a frame
    std::array<std::optional<zarel::Place>, 4> looks = {};    // where each came first
    std::array<std::string, 4> examples = {};
    std::size_t rows_without = 0;    // while no row had the column
    zarel::Place first_without = {};
  };
  static constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

  bool take(const Row& row);
  void bind();
  bool bind_declared(Bound& bound);
  void take_all_columns();
  void name_attribute(Bound& bound);
  std::optional<zarel::TERMT> value(const Row& row, Bound& bound, const Field& field);
  void add_relation(const Row& row);
  void add_object(const Row& row);
  void add_attributes(const Row& row, Bound& bound);
  void note_look(Bound& bound, std::string_view text);
  bool tell_unknown(const Bound& bound);
  void note_empty(Bound& bound);
  void tell_empty(const Bound& bound, const zarel::Place& place);
  void tell_at_end(Bound& bound);
  void tell_looks(Bound& bound);
  void tell_of_column(Message message, const Bound& bound);
  void tell(Message message, const zarel::SourceSpan& declared);
  zarel::Place place(const Bound& bound);
  // Where the column is declared, or the file.
  const zarel::SourceSpan& declared(const Bound& bound) const {
    return bound.column.place.file != zarel::kNoFile ? bound.column.place : how_.file_place;
  }
  bool is_frame() const { return how_.key.has_value(); }
  static Field field(const Row& row, const Bound& bound) {
    return bound.index < row.fields.size() ? row.fields[bound.index] : Field{};
  }

  const DataDeclaration& how_;
  RowSource& source_;
  zarel::FactBuilder& facts_;
  zarel::FileTable& files_;
  const MessageSink& sink_;
  Values values_;
  zarel::NameId relation_{};
  zarel::NameId frame_space_{};
  std::optional<zarel::TERMT> empty_;
  std::optional<Bound> key_;
  std::vector<Bound> columns_;
  bool takes_all_;    // nobody chose columns
  bool is_broken_ = false;
  std::size_t columns_known_ = 0;
  std::unordered_map<std::string, std::size_t> numbers_;    // of columns known, the last of a name
  std::vector<zarel::TERMT> terms_;
  std::vector<zarel::FactBuilder::Attribute> attributes_;
};

}    // namespace workbench
