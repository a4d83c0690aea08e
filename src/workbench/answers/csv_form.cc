// csv_form.cc - answers for spreadsheets and data frames: a relation a table.

#include <functional>
#include <map>
#include <unordered_map>
#include <vector>

#include "base/characters.h"
#include "model/generic_encoding.h"
#include "workbench/answers/csv_text.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

// What the rows of one table have in common.
struct TableKey {
  ItemKind kind = ItemKind::kAtom;
  bool is_negated = false;
  std::string_view relation, space;
  std::size_t arity = 0;

  bool operator==(const TableKey&) const = default;
};

struct KeyHash {
  std::size_t operator()(const TableKey& key) const {
    return std::hash<std::string_view>()(key.relation) + key.arity;
  }
};

// A byte that is no part of a word is told by its code, so that any name is that of a file.
void append_file_name(std::string& out, std::string_view text) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  for (const char c : text) {
    if (zarel::is_in_word(c)) {
      out += c;
    } else {
      const auto code = static_cast<unsigned char>(c);
      ((out += '%') += kDigits[code >> 4U]) += kDigits[code & 0xFU];
    }
  }
}

std::string file_name(const TableKey& key) {
  std::string name = key.is_negated ? "neg-" : "";
  switch (key.kind) {
    case ItemKind::kAtom:
      append_file_name(name, key.relation);
      (name += '-') += std::to_string(key.arity);
      break;
    case ItemKind::kMembership:
      name += "memberships";
      break;
    case ItemKind::kSubclass:
      name += "subclasses";
      break;
    case ItemKind::kValue:
    case ItemKind::kAttribute:
      name += "attributes";
      break;
  }
  if (key.space != zarel::kDefaultSpace) {
    name += '@';
    append_file_name(name, key.space);
  }
  return name += ".csv";
}

// As the user would call it.
std::string table_words(const TableKey& key) {
  std::string words = key.is_negated ? "-" : "";
  switch (key.kind) {
    case ItemKind::kAtom:
      words += key.relation;
      if (key.arity != 0) (words += '/') += std::to_string(key.arity);
      break;
    case ItemKind::kMembership:
      words += "memberships";
      break;
    case ItemKind::kSubclass:
      words += "subclasses";
      break;
    case ItemKind::kValue:
    case ItemKind::kAttribute:
      words += "attributes";
      break;
  }
  append_space(words, key.space);
  return words;
}

std::string numbers_up_to(std::size_t count) {
  std::string numbers;
  for (std::size_t i = 1; i <= count; ++i) {
    if (i != 1) numbers += ',';
    numbers += std::to_string(i);
  }
  return numbers;
}

std::string columns_of(const TableKey& key) {
  switch (key.kind) {
    case ItemKind::kAtom:
      return numbers_up_to(key.arity);
    case ItemKind::kMembership:
      return "object,class";
    case ItemKind::kSubclass:
      return "class,superclass";
    case ItemKind::kValue:
    case ItemKind::kAttribute:
      break;
  }
  return "object,attribute,arrow,value";
}

// Where the tables of one run go.
class Tables {
 public:
  Tables(std::ostream* only, OutputFolder* folder) : only_(only), folder_(folder) {}

  // A stream for a new table, whose words tell it apart.
  std::ostream& open(const std::string& name, const std::string& words) {
    if (folder_ != nullptr) return folder_->file(name);
    if (!first_.empty()) refuse(words);
    first_ = words;
    return *only_;
  }
  bool is_folder() const { return folder_ != nullptr; }
  void flush() {
    if (only_ != nullptr) only_->flush();
  }

 private:
  [[noreturn]] void refuse(const std::string& words) const {
    std::string text("a file of CSV holds one relation, and the answers have ");
    ((text += first_) += " and ") += words;
    throw AnswersRefused{std::move(text),
                         "name a folder, as in --output DIR/, for a file a relation, or choose "
                         "one relation with --filter"};
  }

  std::ostream* only_;
  OutputFolder* folder_;
  std::string first_;
};

class Table {
 public:
  Table(const TableKey& key, std::ostream& out)
      : relation_(key.relation), space_(key.space), key_(key), out_(out) {
    key_.relation = relation_;
    key_.space = space_;
  }
  Table(const Table&) = delete;
  Table& operator=(const Table&) = delete;

  const TableKey& key() const { return key_; }
  void add_row(std::string_view row) {
    (text_ += row) += kCsvLineEnd;
    if (text_.size() >= kPiece) write();
  }
  void write() {
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
  }

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;

  const std::string relation_, space_;
  TableKey key_;
  std::ostream& out_;
  std::string text_;
};

class CsvForm : public AnswerConsumer {
 public:
  CsvForm(Tables tables, const FormSettings& settings)
      : tables_(std::move(tables)), settings_(settings) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override;
  void flush() override;
  void finish(const RunEnding& ending) override;

 private:
  void add_item(const AnswerSet& set, const Item& item);
  void add_costs(const AnswerSet& set);
  std::string header(std::string columns) const;
  Table& table(const TableKey& key);
  Table& rows_table(std::size_t columns);
  Table& open(const TableKey& key, const std::string& name, const std::string& words);

  Tables tables_;
  const FormSettings& settings_;
  std::map<std::string, Table> by_file_;
  std::unordered_map<TableKey, Table*, KeyHash> by_key_;    // those of atoms and frames
  Table* last_ = nullptr;
  Table* rows_ = nullptr;
  Table* sets_ = nullptr;
  std::string set_number_;    // of the answer set, with a comma behind it; or nothing
  std::string row_;
};

std::string CsvForm::header(std::string columns) const {
  if (settings_.has_one_set && !columns.empty()) return columns;
  return std::string("answer_set").append(columns.empty() ? "" : ",").append(columns);
}

Table& CsvForm::open(const TableKey& key, const std::string& name, const std::string& words) {
  return by_file_.try_emplace(name, key, tables_.open(name, words)).first->second;
}

Table& CsvForm::table(const TableKey& key) {
  if (last_ != nullptr && last_->key() == key) return *last_;
  const auto found = by_key_.find(key);
  if (found != by_key_.end()) return *(last_ = found->second);
  last_ = &open(key, file_name(key), table_words(key));
  by_key_.emplace(last_->key(), last_);
  last_->add_row(header(columns_of(key)));
  return *last_;
}

void CsvForm::add_item(const AnswerSet& set, const Item& item) {
  TableKey key{item.kind, item.is_negated, {}, {}, 0};
  row_ = set_number_;
  switch (item.kind) {
    case ItemKind::kAtom: {
      const zarel::AnswerAtom atom = set.atom(item);
      key.relation = atom.relation.text();
      key.arity = append_csv_terms(row_, atom.arguments);
      if (key.arity == 0) row_ = std::to_string(set.number);
      key.space = atom.space;
      break;
    }
    case ItemKind::kMembership:
    case ItemKind::kSubclass: {
      const zarel::ClassStatement said = set.class_statement(item);
      append_csv_term(row_, said.object);
      append_csv_term(row_ += ',', said.class_name);
      key.space = said.space;
      break;
    }
    case ItemKind::kValue:
    case ItemKind::kAttribute: {
      const ObjectStatement said = set.statement(item);
      key.kind = ItemKind::kValue;
      append_csv_term(row_, said.object);
      append_csv_term(row_ += ',', said.attribute);
      (row_ += ',') += said.arrow;
      row_ += ',';
      if (item.kind == ItemKind::kValue) append_csv_term(row_, said.value);
      key.space = said.space;
      break;
    }
  }
  table(key).add_row(row_);
}

// Which answer sets there are, the empty ones too, and what they cost.
void CsvForm::add_costs(const AnswerSet& set) {
  if (sets_ == nullptr) {
    sets_ = &open({}, "answer_sets.csv", {});
    sets_->add_row("answer_set,level,weight");
  }
  const std::string number = std::to_string(set.number);
  if (set.costs.empty()) sets_->add_row(number + ",,");
  for (const Cost& cost : set.costs) {
    row_ = number;
    ((row_ += ',') += cost.level) += ',';
    sets_->add_row(row_ += cost.weight);
  }
}

void CsvForm::answer_set(AnswerSet& set) {
  if (tables_.is_folder()) add_costs(set);
  set_number_.clear();
  if (!settings_.has_one_set) (set_number_ = std::to_string(set.number)) += ',';
  for (const Item& item : set.items()) add_item(set, item);
}

// Where the variables are not known, their numbers head the columns.
Table& CsvForm::rows_table(std::size_t columns) {
  if (rows_ != nullptr) return *rows_;
  rows_ = &open({}, "rows.csv", "rows");
  const std::vector<std::string>& names = settings_.query_variables;
  row_ = names.empty() ? numbers_up_to(columns) : "";
  for (const std::string& name : names) {
    if (&name != &names.front()) row_ += ',';
    append_csv_field(row_, name);
  }
  rows_->add_row(row_);
  return *rows_;
}

void CsvForm::row(const zarel::AnswerTerms& values) {
  std::string fields;
  const std::size_t count = append_csv_terms(fields, values);
  rows_table(count).add_row(fields);
}

void CsvForm::truth(bool holds) {
  Table& table = open({}, "rows.csv", "rows");
  table.add_row("holds");
  table.add_row(holds ? "true" : "false");
}

void CsvForm::flush() {
  for (auto& [name, table] : by_file_) table.write();
  tables_.flush();
}

// No rows are a table as well.
void CsvForm::finish(const RunEnding& ending) {
  if (ending.asked.has_query && !ending.asked.is_ground) rows_table(0);
  flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_csv_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<CsvForm>(Tables(&out, nullptr), settings);
}

std::unique_ptr<AnswerConsumer> make_csv_form(OutputFolder& folder, const FormSettings& settings) {
  return std::make_unique<CsvForm>(Tables(nullptr, &folder), settings);
}

}    // namespace workbench
