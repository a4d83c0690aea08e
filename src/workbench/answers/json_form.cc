// json_form.cc - answers for programs: an object a line, as docs/answers.schema.json says.

#include <algorithm>
#include <array>
#include <cstdio>
#include <initializer_list>

#include "model/generic_encoding.h"
#include "workbench/answers/buffered_form.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/json_text.h"

namespace workbench {
namespace {

using zarel::AnswerTerms;

class JsonForm : public BufferedForm {
 public:
  JsonForm(std::ostream& out, const FormSettings& settings)
      : BufferedForm(out), settings_(settings) {}

  void answer_set(AnswerSet& set) override;
  void row(const AnswerTerms& values) override;
  void truth(bool holds) override;
  void finish(const RunEnding& ending) override;

 private:
  template <typename Append>
  void add_list(std::string_view name, const AnswerSet& set, std::initializer_list<ItemKind> kinds,
                Append&& append);
  void add_atom(const zarel::AnswerAtom& atom);
  void add_class(const zarel::ClassStatement& statement, ItemKind kind);
  void add_object(const zarel::AnswerObject& object);
  void add_attribute(const zarel::AnswerAttribute& attribute);
  void add_space(std::string_view space);
  template <typename Costs>
  void add_costs(const Costs& costs);

  const FormSettings& settings_;
};

void JsonForm::add_space(std::string_view space) {
  if (space == zarel::kDefaultSpace) return;
  text_ += ",\"space\":";
  append_json_term(text_, zarel::AnswerTerm(space));
}

void JsonForm::add_atom(const zarel::AnswerAtom& atom) {
  text_ += "{\"relation\":";
  append_json_term(text_, atom.relation);
  text_ += ",\"arguments\":";
  append_json_terms(text_, atom.arguments);
  add_space(atom.space);
  text_ += atom.is_negated ? ",\"negated\":true}" : "}";
}

void JsonForm::add_class(const zarel::ClassStatement& statement, ItemKind kind) {
  const bool is_subclass = kind == ItemKind::kSubclass;
  text_ += is_subclass ? "{\"class\":" : "{\"object\":";
  append_json_term(text_, statement.object);
  text_ += is_subclass ? ",\"superclass\":" : ",\"class\":";
  append_json_term(text_, statement.class_name);
  add_space(statement.space);
  text_ += statement.is_negated ? ",\"negated\":true}" : "}";
}

void JsonForm::add_attribute(const zarel::AnswerAttribute& attribute) {
  text_ += "{\"name\":";
  append_json_term(text_, attribute.name);
  if (!attribute.arrow.empty()) {
    text_ += ",\"arrow\":";
    append_json_string(text_, attribute.arrow);
  }
  text_ += ",\"values\":[";
  const char* separator = "";
  for (const zarel::AnswerTerm& value : attribute.values) {
    text_ += separator;
    append_json_term(text_, value);
    separator = ",";
  }
  text_ += attribute.is_negated ? "],\"negated\":true}" : "]}";
}

void JsonForm::add_object(const zarel::AnswerObject& object) {
  text_ += "{\"object\":";
  append_json_term(text_, object.name);
  add_space(object.space);
  text_ += ",\"attributes\":[";
  const char* separator = "";
  for (const zarel::AnswerAttribute& attribute : object.attributes) {
    text_ += separator;
    add_attribute(attribute);
    separator = ",";
  }
  text_ += "]}";
}

template <typename Append>
void JsonForm::add_list(std::string_view name, const AnswerSet& set,
                        std::initializer_list<ItemKind> kinds, Append&& append) {
  ((text_ += ",\"") += name) += "\":[";
  const char* separator = "";
  for (const Item& item : set.items()) {
    if (std::ranges::find(kinds, item.kind) == kinds.end()) continue;
    text_ += separator;
    append(item);
    separator = ",";
    write_piece();
  }
  text_ += ']';
}

template <typename Costs>
void JsonForm::add_costs(const Costs& costs) {
  text_ += ",\"cost\":[";
  const char* separator = "";
  for (const auto& [weight, level] : costs) {
    ((text_ += separator) += "{\"weight\":") += weight;
    ((text_ += ",\"level\":") += level) += '}';
    separator = ",";
  }
  text_ += ']';
}

void JsonForm::answer_set(AnswerSet& set) {
  text_ += "{\"kind\":\"answer_set\",\"number\":";
  text_ += std::to_string(set.number);
  if (set.is_improving) text_ += ",\"improving\":true";
  if (!set.costs.empty()) add_costs(set.costs);
  add_list("atoms", set, {ItemKind::kAtom}, [&](const Item& item) { add_atom(set.atom(item)); });
  add_list("classes", set, {ItemKind::kMembership, ItemKind::kSubclass},
           [&](const Item& item) { add_class(set.class_statement(item), item.kind); });
  text_ += ",\"objects\":[";
  const char* separator = "";
  set.each_object([&](const zarel::AnswerObject& object) {
    text_ += separator;
    add_object(object);
    separator = ",";
    write_piece();
  });
  text_ += "]}\n";
  write_piece();
}

// A value of each variable; where these are not known, by its number.
void JsonForm::row(const AnswerTerms& values) {
  text_ += "{\"kind\":\"row\",\"values\":{";
  std::size_t number = 0;
  for (const zarel::AnswerTerm& value : values) {
    if (number != 0) text_ += ',';
    const std::vector<std::string>& names = settings_.query_variables;
    append_json_string(text_, number < names.size() ? names[number] : std::to_string(number + 1));
    text_ += ':';
    append_json_term(text_, value);
    ++number;
  }
  text_ += "}}\n";
  write_piece();
}

void JsonForm::truth(bool holds) {
  text_ += "{\"kind\":\"truth\",\"holds\":";
  text_ += holds ? "true}\n" : "false}\n";
}

void JsonForm::finish(const RunEnding& ending) {
  text_ += "{\"kind\":\"end\",\"status\":";
  text_ += std::to_string(static_cast<int>(ending.status));
  text_ += ending.asked.has_query ? ",\"rows\":" : ",\"answer_sets\":";
  text_ += std::to_string(ending.asked.has_query ? ending.found.rows : ending.found.answer_sets);
  if (!ending.found.costs.empty()) add_costs(ending.found.costs);
  text_ += ",\"complete\":";
  text_ += ending.judgement.end == SearchEnd::kAll ? "true" : "false";
  if (!ending.found.costs.empty()) {
    text_ += ",\"optimal\":";
    text_ += ending.judgement.is_unproven ? "false" : "true";
  }
  std::array<char, 32> seconds{};
  std::snprintf(seconds.data(), seconds.size(), "%.3f", ending.seconds);
  ((text_ += ",\"seconds\":") += seconds.data()) += "}\n";
  flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_json_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<JsonForm>(out, settings);
}

}    // namespace workbench
