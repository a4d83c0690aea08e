#include "workbench/answers/answer_set.h"

#include <array>

#include "model/generic_encoding.h"
#include "output/frame_map.h"

namespace workbench {
namespace {

using zarel::AnswerTerm;

// The first arguments of a frame statement.
std::array<AnswerTerm, 4> first_arguments(const zarel::AnswerTerms& arguments) {
  std::array<AnswerTerm, 4> found;
  std::size_t count = 0;
  for (const AnswerTerm& argument : arguments) {
    if (count == found.size()) break;
    found[count++] = argument;
  }
  return found;
}

std::string_view without_quotes(std::string_view text) {
  return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

class ObjectCalls : public zarel::AnswerSink {
 public:
  explicit ObjectCalls(const AnswerSet::ObjectVisitor& visit) : visit_(visit) {}

  void begin_answer_set(const zarel::AnswerSetStart& /*start*/) override {}
  void atom(const zarel::AnswerAtom& /*atom*/) override {}
  void membership(const zarel::ClassStatement& /*statement*/) override {}
  void subclass(const zarel::ClassStatement& /*statement*/) override {}
  void object(const zarel::AnswerObject& object) override { visit_(object); }
  void end_answer_set() override {}
  void cost(const zarel::AnswerCost& /*cost*/) override {}
  void query_row(const zarel::AnswerTerms& /*values*/) override {}
  void truth_value(bool /*holds*/) override {}

 private:
  const AnswerSet::ObjectVisitor& visit_;
};

// One object after the other, of statements in order.
class OrderedObject {
 public:
  bool is_of(const ObjectStatement& said) const {
    return said.object.text() == name_.text() && said.space == space_;
  }

  void add(const ObjectStatement& said) {
    name_ = said.object;
    space_ = said.space;
    const bool is_same = !attributes_.empty() && !said.arrow.empty() &&
                         attributes_.back().name.text() == said.attribute.text() &&
                         attributes_.back().is_negated == said.is_negated &&
                         attributes_.back().arrow == said.arrow;
    if (!is_same) {
      attributes_.push_back({said.attribute, said.is_negated, said.arrow, {}});
      counts_.push_back(0);
    }
    if (said.arrow.empty()) return;
    values_.push_back(said.value);
    ++counts_.back();
  }

  // Nothing while there is none; then it is gone.
  void show(const AnswerSet::ObjectVisitor& visit) {
    if (attributes_.empty()) return;
    std::span<const AnswerTerm> rest(values_);
    for (std::size_t i = 0; i < attributes_.size(); ++i) {
      attributes_[i].values = rest.subspan(0, counts_[i]);
      rest = rest.subspan(counts_[i]);
    }
    visit({name_, space_, attributes_});
    attributes_.clear();
    values_.clear();
    counts_.clear();
  }

 private:
  AnswerTerm name_;
  std::string_view space_;
  std::vector<zarel::AnswerAttribute> attributes_;
  std::vector<std::size_t> counts_;    // of the values of each
  std::vector<AnswerTerm> values_;
};

}    // namespace

std::string_view AnswerSet::raw_space(const Item& item) const {
  return part(item.begin + item.relation_size + 1, item.space_size);
}

std::string_view AnswerSet::space(const Item& item) const {
  std::string_view space = item.space_size == 0 ? zarel::kDefaultSpace : raw_space(item);
  if (item.kind != ItemKind::kAtom) space.remove_suffix(zarel::kFrameMarker.size());
  return space;
}

zarel::AnswerTerms AnswerSet::arguments(const Item& item) const {
  const std::size_t begin =
      item.begin + item.relation_size + 1 + (item.space_size == 0 ? 0 : item.space_size + 1);
  return zarel::AnswerTerms(part(begin, item.arguments_size), namespaces_);
}

std::size_t AnswerSet::arity(const Item& item) const {
  const zarel::AnswerTerms terms = arguments(item);
  return static_cast<std::size_t>(std::ranges::distance(terms.begin(), terms.end()));
}

std::string_view AnswerSet::encoding(const Item& item) const {
  std::size_t size = item.relation_size;
  if (item.space_size != 0) size += 1 + item.space_size;
  if (item.arguments_size != 0) size += 1 + item.arguments_size;
  return part(item.begin, size);
}

zarel::AnswerAtom AnswerSet::atom(const Item& item) const {
  return {AnswerTerm(relation(item), namespaces_), space(item), item.is_negated, arguments(item)};
}

zarel::AnswerAtom AnswerSet::encoded_atom(const Item& item) const {
  const std::string_view space = item.space_size == 0 ? zarel::kDefaultSpace : raw_space(item);
  return {AnswerTerm(relation(item), namespaces_), space, item.is_negated, arguments(item)};
}

zarel::ClassStatement AnswerSet::class_statement(const Item& item) const {
  const auto [object, class_name, _, unused] = first_arguments(arguments(item));
  return {object, class_name, space(item), item.is_negated};
}

ObjectStatement AnswerSet::statement(const Item& item) const {
  const auto [object, attribute, value, arrow] = first_arguments(arguments(item));
  return {object, attribute, space(item), item.is_negated, without_quotes(arrow.text()), value};
}

void AnswerSet::put_in_order(std::vector<Item> items) {
  items_ = std::move(items);
  is_in_order_ = true;
}

void AnswerSet::each_object_in_order(const ObjectVisitor& visit) const {
  OrderedObject object;
  for (const Item& item : items_) {
    if (item.kind != ItemKind::kValue && item.kind != ItemKind::kAttribute) continue;
    const ObjectStatement said = statement(item);
    if (!object.is_of(said)) object.show(visit);
    object.add(said);
  }
  object.show(visit);
}

void AnswerSet::each_object(const ObjectVisitor& visit) const {
  if (is_in_order_) return each_object_in_order(visit);
  zarel::FrameMap objects(namespaces_);
  std::string suffix;
  for (const Item& item : items_) {
    if (item.kind != ItemKind::kValue && item.kind != ItemKind::kAttribute) continue;
    const ObjectStatement said = statement(item);
    suffix.clear();
    if (said.space != zarel::kDefaultSpace) (suffix += '@') += said.space;
    const zarel::AttributeStatement told{said.object.text(), suffix,     said.attribute.text(),
                                         said.is_negated,    said.arrow, said.value.text()};
    item.kind == ItemKind::kValue ? objects.add_value(told) : objects.add_valueless(told);
  }
  if (objects.is_empty()) return;
  ObjectCalls calls(visit);
  objects.report_objects(calls);
}

void AnswerSet::clear() {
  number = 0;
  costs.clear();
  text_.clear();
  items_.clear();
  is_in_order_ = false;
}

}    // namespace workbench
