#include "workbench/data/fact_rows.h"

#include <algorithm>
#include <utility>

#include "base/characters.h"
#include "workbench/messages/nearest.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using zarel::NameId;
using zarel::SourceSpan;
using zarel::TERMT;

std::string shown_name(const DataColumn& column) {
  return column.number == 0 ? column.name : "column " + std::to_string(column.number);
}

std::string_view plural(ValueLook look) {
  switch (look) {
    case ValueLook::kInteger:
      return "integers";
    case ValueLook::kConstant:
      return "constants";
    case ValueLook::kString:
    case ValueLook::kNumeric:
      return "strings";
  }
  return {};
}

// How the column is declared anew, with that behind its name.
std::string as_declared(const DataColumn& column, std::string_view with) {
  if (column.number != 0) return std::to_string(column.number).append(with);
  const bool is_word = std::ranges::all_of(column.name, zarel::is_in_word);
  std::string text = is_word ? column.name : '"' + column.name + '"';
  return text.append(with);
}

}    // namespace

FactRows::FactRows(const DataDeclaration& how, RowSource& source, zarel::FactBuilder& facts,
                   zarel::FileTable& files, const MessageSink& sink)
    : how_(how),
      source_(source),
      facts_(facts),
      files_(files),
      sink_(sink),
      values_(how.quote),
      frame_space_(zarel::FactBuilder::name(how.frame_space)),
      takes_all_(how.columns.empty()) {
  if (!how.relation.empty()) relation_ = zarel::FactBuilder::name(how.relation);
  if (how.key) key_ = Bound{*how.key, shown_name(*how.key)};
  for (const DataColumn& column : how.columns) columns_.push_back({column, shown_name(column)});
  if (how.empty != EmptyRule::kValue) return;
  const std::string& value = how.empty_value;
  empty_ = zarel::is_digit(value[0]) ? TERMT::integer(std::stoi(value))
                                     : TERMT::constant(zarel::FactBuilder::name(value));
}

void FactRows::read() {
  try {
    source_.read([this](const Row& row) { return take(row); });
  } catch (const RowFault& fault) {
    if (is_broken_) return;
    Message message{fault.code, {}, fault.text, fault.label};
    message.help = fault.help;
    const RowText row = source_.row_text();
    files_[facts_.file()].wide.note(row.text, row.begin.line, row.begin.column);
    const zarel::SourceRange nowhere{};
    const bool is_of_file = fault.place.first_line == 0;
    message.place = files_.place(SourceSpan{facts_.file(), is_of_file ? nowhere : fault.place});
    tell(std::move(message), how_.file_place);
    return;
  }
  if (columns_known_ != source_.columns().size()) bind();
  if (is_broken_) return;
  if (columns_known_ == 0) return;    // there are no rows
  for (Bound& bound : columns_) tell_at_end(bound);
  if (key_) tell_at_end(*key_);
}

// Whether to go on.
bool FactRows::take(const Row& row) {
  if (columns_known_ != source_.columns().size()) bind();
  if (is_broken_) return false;
  const zarel::SourceLocation begin = source_.place();
  facts_.stand_at({begin.line, begin.column, begin.line, begin.column});
  if (is_frame()) {
    add_object(row);
  } else {
    add_relation(row);
  }
  return true;
}

// To the columns of the file that are new.
void FactRows::bind() {
  const std::vector<std::string>& names = source_.columns();
  const bool is_first = columns_known_ == 0;
  const std::size_t first_new = std::exchange(columns_known_, names.size());
  for (std::size_t i = first_new; i < names.size(); ++i) {
    const auto [entry, is_new] = numbers_.try_emplace(names[i], i);
    if (!is_new) entry->second = kNoColumn;    // which one is not known
  }
  bool is_good = !key_ || bind_declared(*key_);
  if (!takes_all_) {
    for (Bound& bound : columns_) is_good = bind_declared(bound) && is_good;
    is_broken_ = !is_good;
    return;
  }
  is_broken_ = !is_good;
  for (std::size_t i = first_new; i < names.size() && !is_broken_; ++i) {
    if (key_ && key_->index == i) continue;
    Bound bound{DataColumn{names[i]}, names[i], i};
    if (!is_first && !is_frame()) {
      tell({"ragged-row",
            place(bound),
            "the object has a key that the first one does not: " + names[i],
            {},
            {},
            "declare the columns that are wanted"},
           how_.file_place);
      continue;
    }
    name_attribute(bound);
    columns_.push_back(std::move(bound));
  }
  if (columns_.empty() && !is_frame()) is_broken_ = true;    // of an object without keys
}

// False when there is no such column, and never will be.
bool FactRows::bind_declared(Bound& bound) {
  if (bound.index != kNoColumn) return true;
  const DataColumn& column = bound.column;
  if (column.number != 0) {
    if (column.number <= columns_known_ && source_.has_fixed_columns())
      bound.index = column.number - 1;
  } else if (const auto found = numbers_.find(column.name); found != numbers_.end()) {
    bound.index = found->second;
  }
  name_attribute(bound);
  if (bound.index != kNoColumn || !source_.has_fixed_columns()) return true;
  return !tell_unknown(bound);
}

void FactRows::name_attribute(Bound& bound) {
  const std::string& attribute =
      bound.column.attribute.empty() ? bound.column.name : bound.column.attribute;
  if (!is_frame() || bound.index == kNoColumn) return;
  if (attribute.find('"') != std::string::npos) {
    tell({"data-value",
          place(bound),
          "a column with a double quote in its name is no attribute",
          {},
          {},
          "declare the columns, with names for the attributes: price -> 2"},
         how_.file_place);
    return;
  }
  const std::string position = "column_" + std::to_string(bound.index + 1);
  bound.attribute = zarel::FactBuilder::name(as_constant(attribute.empty() ? position : attribute));
}

bool FactRows::tell_unknown(const Bound& bound) {
  if (bound.index != kNoColumn) return false;
  const DataColumn& column = bound.column;
  Message message{"unknown-column", files_.place(column.place), {}};
  message.text = "the file has no " + bound.name;
  if (column.number == 0) {
    message.text = "the file has no column " + column.name;
    if (numbers_.contains(column.name)) {
      message.text = "the file has two columns " + column.name;
      message.help = "give the column by its position, from 1";
    } else {
      const std::vector<std::string>& names = source_.columns();
      const std::vector<std::string_view> views(names.begin(), names.end());
      const std::string near(nearest(column.name, views));
      if (!near.empty()) message.help = "did you mean " + near + "?";
      if (near.empty() && !names.empty()) {
        constexpr std::size_t kMostNames = 10;
        message.help = "its columns are " + names[0];
        for (std::size_t i = 1; i < std::min(names.size(), kMostNames); ++i)
          message.help += ", " + names[i];
        if (names.size() > kMostNames) message.help += ", ...";
      }
    }
  }
  sink_(std::move(message));
  return true;
}

void FactRows::tell(Message message, const SourceSpan& declared) {
  if (declared.file != zarel::kNoFile)
    message.notes.push_back({files_.place(declared), "declared here"});
  sink_(std::move(message));
}

// Of the field in the row that was handed over.
zarel::Place FactRows::place(const Bound& bound) {
  const RowText row = source_.row_text();
  zarel::WideCharacters& wide = files_[facts_.file()].wide;
  if (row.has_mark_in_front) wide.note("\xEF\xBB\xBF", 1, 1);
  wide.note(row.text, row.begin.line, row.begin.column);
  if (bound.index != kNoColumn)
    return files_.place(SourceSpan{facts_.file(), source_.place_of(bound.index)});
  const zarel::SourceLocation begin = source_.place();
  return files_.place(zarel::SourceLocation{begin.line, begin.column, facts_.file()});
}

std::optional<TERMT> FactRows::value(const Row& row, Bound& bound, const Field& field) {
  const std::string_view text = row.text_of(field.kind == FieldKind::kList ? Field{} : field);
  const std::optional<TERMT> term = values_.read(field.kind, text, bound.column);
  const std::int64_t bound_of_all = facts_.greatest_integer();
  if (term && term->kind == zarel::TermKind::kInteger && term->value() > bound_of_all) {
    const std::string number = std::to_string(term->value());
    Message message{"maxint-exceeded", place(bound), number + " is larger than #maxint"};
    message.help = "write #maxint = " + number + ". or more";
    tell(std::move(message), declared(bound));
    return std::nullopt;
  }
  if (term) {
    if (bound.column.kind == ColumnKind::kAny) note_look(bound, text);
    return term;
  }
  const ValueFault& fault = values_.fault();
  Message message{fault.code, place(bound), bound.name + ' ' + fault.text};
  message.help = fault.help;
  tell(std::move(message), declared(bound));
  return std::nullopt;
}

void FactRows::note_look(Bound& bound, std::string_view text) {
  const auto look = static_cast<std::size_t>(values_.look());
  if (bound.looks[look]) return;
  bound.looks[look] = place(bound);
  bound.examples[look] = text;
}

// Of a column that was in no row so far, it is told at the end whether there is one at all.
void FactRows::note_empty(Bound& bound) {
  if (bound.index != kNoColumn) return tell_empty(bound, place(bound));
  if (bound.rows_without++ == 0) bound.first_without = place(bound);
}

void FactRows::tell_empty(const Bound& bound, const zarel::Place& place) {
  Message message{"empty-value", place, bound.name + " is empty"};
  if (bound.rows_without > 1) {
    message.label =
        "and in " + counted(bound.rows_without - 1, "row") + " more before the first one with it";
  }
  message.help = "declare empty=skip-row to leave such rows out, or empty=unknown for a value";
  tell(std::move(message), declared(bound));
}

void FactRows::add_relation(const Row& row) {
  terms_.clear();
  bool is_good = true;
  for (Bound& bound : columns_) {
    const Field field = FactRows::field(row, bound);
    std::optional<TERMT> term = empty_;
    if (field.kind == FieldKind::kEmpty) {
      if (how_.empty == EmptyRule::kSkipRow) return;
      if (!term) note_empty(bound);
    } else {
      term = value(row, bound, field);
    }
    if (term) terms_.push_back(*term);
    is_good = is_good && term;
  }
  if (!is_good || terms_.empty()) return;
  const SourceSpan here{
      facts_.file(),
      {source_.place().line, source_.place().column, source_.place().line, source_.place().column}};
  facts_.fact(relation_, terms_, frame_space_, how_.is_declared() ? how_.name_place : here);
}

void FactRows::add_object(const Row& row) {
  const Field field = FactRows::field(row, *key_);
  if (field.kind == FieldKind::kEmpty) {
    if (how_.empty != EmptyRule::kSkipRow) note_empty(*key_);
    return;
  }
  const std::optional<TERMT> object = value(row, *key_, field);
  if (!object) return;
  attributes_.clear();
  for (Bound& bound : columns_) add_attributes(row, bound);
  if (!how_.relation.empty()) facts_.member(*object, relation_, frame_space_);
  if (!attributes_.empty()) facts_.object(*object, attributes_, frame_space_);
}

// None of an empty field; of a list each element, behind an arrow for sets.
void FactRows::add_attributes(const Row& row, Bound& bound) {
  const Field field = FactRows::field(row, bound);
  const auto add = [&](const Field& of) {
    std::optional<TERMT> term = empty_;
    if (of.kind != FieldKind::kEmpty) term = value(row, bound, of);
    if (term) attributes_.push_back({bound.attribute, bound.column.arrow, *term});
  };
  if (field.kind != FieldKind::kList || bound.column.arrow != zarel::ARROW::kSet) return add(field);
  for (std::size_t i = 0; i < field.length; ++i) add(row.elements[field.begin + i]);
}

void FactRows::tell_at_end(Bound& bound) {
  if (tell_unknown(bound)) return;
  if (bound.first_without.is_known()) tell_empty(bound, bound.first_without);
  tell_looks(bound);
}

// A warning stands where the column is declared, if it is: there a remark can allow it.
void FactRows::tell_of_column(Message message, const Bound& bound) {
  if (how_.is_declared()) {
    message.notes.push_back({message.place, std::exchange(message.label, {})});
    message.place = files_.place(declared(bound));
  } else {
    message.help += ", in a line %! data " + how_.relation + "(\"" + how_.file + "\", ...)";
  }
  sink_(std::move(message));
}

void FactRows::tell_looks(Bound& bound) {
  std::vector<std::size_t> seen;    // looks, in the order of the file
  for (std::size_t i = 0; i < bound.looks.size(); ++i) {
    if (bound.looks[i]) seen.push_back(i);
  }
  const auto position = [&](std::size_t look) {
    const zarel::Position& first = bound.looks[look]->first;
    return std::pair(first.line, first.column);
  };
  std::ranges::sort(seen, {}, position);
  constexpr auto kNumeric = static_cast<std::size_t>(ValueLook::kNumeric);
  if (bound.looks[kNumeric]) {
    const std::string& example = bound.examples[kNumeric];
    Message message{"number-as-text", *bound.looks[kNumeric],
                    bound.name + " holds " + example + ", which becomes a string"};
    const bool has_fraction = example.find('.') != std::string::npos;
    message.help =
        has_fraction ? "write " + as_declared(bound.column, "*100 for integers in hundredths, or ")
                     : "write ";
    message.help += as_declared(bound.column, ":text if it is meant");
    message.label = example + " is one of the strings";
    return tell_of_column(std::move(message), bound);
  }
  if (seen.size() < 2) return;
  const auto look = [&](std::size_t i) { return static_cast<ValueLook>(seen[i]); };
  Message message{"mixed-column", *bound.looks[seen[1]], {}};
  message.text = bound.name + " holds " + std::string(plural(look(0))) + " and " +
                 std::string(plural(look(1)));
  const auto becomes = [&](std::size_t i) {
    std::string text = bound.examples[seen[i]];
    text += " is one of the ";
    return text.append(plural(look(i)));
  };
  message.label = becomes(1);
  message.notes.push_back({*bound.looks[seen[0]], becomes(0)});
  message.help = "write " + as_declared(bound.column, ":text to make all of them strings");
  tell_of_column(std::move(message), bound);
}

}    // namespace workbench
