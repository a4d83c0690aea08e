// table_form.cc - answers as tables, for people: one for each relation and each class.

#include <map>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "workbench/answers/forms.h"
#include "workbench/answers/set_heading.h"
#include "workbench/answers/term_text.h"
#include "workbench/answers/text_table.h"

namespace workbench {
namespace {

using zarel::AnswerTerm;

// What the tables of an answer set are made of, each kind in the order of arrival.
using Items = std::vector<const Item*>;

// An object in a frame space, by the solver's texts of both.
using ObjectKey = std::pair<std::string_view, std::string_view>;
struct ObjectHash {
  std::size_t operator()(const ObjectKey& key) const {
    const std::hash<std::string_view> hash;
    return hash(key.first) * 31 + hash(key.second);
  }
};

struct Object {
  AnswerTerm name;
  std::string_view space;
  Items said;
  bool has_class = false;
};

class TableForm : public AnswerConsumer {
 public:
  TableForm(std::ostream& out, const FormSettings& settings)
      : out_(out), settings_(settings), table_(settings.limit) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override { text_ += holds ? "true\n" : "false\n"; }
  void flush() override;
  void finish(const RunEnding& ending) override;

 private:
  using Objects = std::unordered_map<ObjectKey, Object, ObjectHash>;

  void print_relations(const AnswerSet& set);
  void print_classes(const AnswerSet& set);
  void print_subclasses(const AnswerSet& set);
  void print_objects(const AnswerSet& set, std::string title,
                     const std::vector<const Object*>& objects);
  void add_term(const AnswerTerm& term);
  void print_table();
  void write_piece() {
    constexpr std::size_t kPiece = std::size_t{1} << 16;
    if (text_.size() >= kPiece) write();
  }
  void write();
  std::size_t width() const { return &out_ == settings_.terminal ? settings_.terminal_width : 0; }

  std::ostream& out_;
  const FormSettings& settings_;
  std::string text_;
  TextTable table_;
  std::string cell_;
  bool has_sets_ = false;    // answer sets came
  bool has_rows_ = false;    // of a query
};

std::string relation_title(const zarel::AnswerAtom& atom, std::size_t arity) {
  std::string title = atom.is_negated ? "-" : "";
  append_term(title, atom.relation);
  if (arity != 0) (title += '/') += std::to_string(arity);
  append_space(title, atom.space);
  return title;
}

std::string class_title(const zarel::ClassStatement& said) {
  std::string title = said.is_negated ? "-:" : ":";
  append_term(title, said.class_name);
  append_space(title, said.space);
  return title;
}

void TableForm::add_term(const AnswerTerm& term) {
  cell_.clear();
  append_term(cell_, term);
  table_.add_cell(cell_, term.kind() == AnswerTerm::Kind::kNumber);
}

void TableForm::print_table() {
  if (has_sets_) text_ += '\n';
  table_.append_to(text_, width(), [this] { write_piece(); });
}

void TableForm::write() {
  out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
  text_.clear();
}

void TableForm::flush() {
  write();
  out_.flush();
}

void TableForm::print_relations(const AnswerSet& set) {
  std::map<std::tuple<std::string_view, std::size_t, bool, std::string_view>, std::size_t> known;
  std::vector<Items> groups;
  for (const Item& item : set.items()) {
    if (item.kind != ItemKind::kAtom) continue;
    const zarel::AnswerAtom atom = set.atom(item);
    const auto [entry, is_new] = known.try_emplace(
        {atom.relation.text(), set.arity(item), atom.is_negated, atom.space}, groups.size());
    if (is_new) groups.emplace_back();
    groups[entry->second].push_back(&item);
  }
  for (const Items& items : groups) {
    const std::size_t arity = set.arity(*items.front());
    table_.begin(relation_title(set.atom(*items.front()), arity));
    for (std::size_t i = 0; i < arity; ++i) table_.add_column(std::to_string(i + 1));
    for (const Item* const item : items) {
      for (const AnswerTerm& term : set.atom(*item).arguments) add_term(term);
    }
    print_table();
  }
}

void TableForm::print_subclasses(const AnswerSet& set) {
  for (const bool is_negated : {false, true}) {
    table_.begin(is_negated ? "-::" : "::");
    table_.add_column("class");
    table_.add_column("superclass");
    bool has_some = false;
    for (const Item& item : set.items()) {
      if (item.kind != ItemKind::kSubclass || item.is_negated != is_negated) continue;
      const zarel::ClassStatement said = set.class_statement(item);
      add_term(said.object);
      cell_.clear();
      append_term(cell_, said.class_name);
      append_space(cell_, said.space);
      table_.add_cell(cell_, false);
      has_some = true;
    }
    if (!has_some) continue;
    print_table();
  }
}

// What an object says, under one name.
using AttributeKey = std::tuple<std::string_view, bool, std::string_view>;

std::string attribute_title(const ObjectStatement& said) {
  std::string title = said.is_negated ? "-" : "";
  append_term(title, said.attribute);
  if (said.arrow != "->") title += said.arrow;
  return title;
}

void TableForm::print_objects(const AnswerSet& set, std::string title,
                              const std::vector<const Object*>& objects) {
  table_.begin(std::move(title));
  table_.add_column("object");
  std::map<AttributeKey, std::size_t> columns;
  for (const Object* const object : objects) {
    for (const Item* const item : object->said) {
      const ObjectStatement said = set.statement(*item);
      const AttributeKey key{said.attribute.text(), said.is_negated, said.arrow};
      if (columns.try_emplace(key, columns.size()).second) {
        table_.add_column(attribute_title(said));
      }
    }
  }
  struct Value {
    std::string text;
    bool is_number = true;
  };
  std::vector<Value> values(columns.size());
  for (const Object* const object : objects) {
    for (Value& value : values) value = {};
    for (const Item* const item : object->said) {
      const ObjectStatement said = set.statement(*item);
      Value& value = values[columns.at({said.attribute.text(), said.is_negated, said.arrow})];
      if (!value.text.empty()) value.text += ", ";
      value.is_number = value.text.empty() && said.value.kind() == AnswerTerm::Kind::kNumber;
      said.arrow.empty() ? void(value.text = "yes") : append_term(value.text, said.value);
    }
    add_term(object->name);
    for (const Value& value : values) table_.add_cell(value.text, value.is_number);
  }
  print_table();
}

// A member is in the tables of all of its classes; who has none is among the objects of its space.
void TableForm::print_classes(const AnswerSet& set) {
  Objects objects;
  std::vector<Object*> in_order;
  const auto object_of = [&](const AnswerTerm& name, std::string_view space) -> Object& {
    const auto [entry, is_new] = objects.try_emplace({name.text(), space}, Object{name, space, {}});
    if (is_new) in_order.push_back(&entry->second);
    return entry->second;
  };
  using Members = std::pair<std::string, std::vector<const Object*>>;
  std::map<std::tuple<std::string_view, bool, std::string_view>, std::size_t> known;
  std::vector<Members> classes;
  for (const Item& item : set.items()) {
    if (item.kind == ItemKind::kValue || item.kind == ItemKind::kAttribute) {
      const ObjectStatement said = set.statement(item);
      object_of(said.object, said.space).said.push_back(&item);
    } else if (item.kind == ItemKind::kMembership) {
      const zarel::ClassStatement said = set.class_statement(item);
      const auto [entry, is_new] =
          known.try_emplace({said.class_name.text(), said.is_negated, said.space}, classes.size());
      if (is_new) classes.emplace_back(class_title(said), std::vector<const Object*>());
      Object& object = object_of(said.object, said.space);
      object.has_class = object.has_class || !said.is_negated;
      classes[entry->second].second.push_back(&object);
    }
  }
  for (const auto& [title, members] : classes) print_objects(set, title, members);
  std::map<std::string_view, std::vector<const Object*>> others;
  for (const Object* const object : in_order) {
    if (!object->has_class && !object->said.empty()) others[object->space].push_back(object);
  }
  for (const auto& [space, those] : others) {
    std::string title = "objects";
    append_space(title, space);
    print_objects(set, std::move(title), those);
  }
}

void TableForm::answer_set(AnswerSet& set) {
  if (std::exchange(has_sets_, true)) text_ += '\n';
  (text_ += set_heading(set)) += '\n';
  print_relations(set);
  print_subclasses(set);
  print_classes(set);
}

void TableForm::row(const zarel::AnswerTerms& values) {
  if (!std::exchange(has_rows_, true)) {
    table_.begin({});
    std::size_t number = 0;
    for ([[maybe_unused]] const AnswerTerm& value : values) {
      const std::vector<std::string>& names = settings_.query_variables;
      table_.add_column(number < names.size() ? names[number] : std::to_string(number + 1));
      ++number;
    }
  }
  for (const AnswerTerm& value : values) add_term(value);
}

// The rows of a query are one table, so that they wait for the last one.
void TableForm::finish(const RunEnding& ending) {
  if (has_rows_) print_table();
  if (settings_.counts_only && !ending.asked.is_ground) {
    text_ += std::to_string(number_of_answers(ending.found, ending.asked)) += '\n';
  }
  flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_table_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<TableForm>(out, settings);
}

}    // namespace workbench
