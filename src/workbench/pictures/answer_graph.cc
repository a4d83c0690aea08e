#include "workbench/pictures/answer_graph.h"

#include "model/generic_encoding.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

constexpr std::string_view kMembership = ":";
constexpr std::string_view kSubclass = "::";

std::string text_of(const zarel::AnswerTerm& term) {
  std::string text;
  append_term(text, term);
  return text;
}

std::string signed_text(bool is_negated, const zarel::AnswerTerm& term) {
  std::string text(is_negated ? "-" : "");
  append_term(text, term);
  return text;
}

// A space has no such byte.
std::string key_of(std::string_view space, const zarel::AnswerTerm& term) {
  std::string key(space);
  key += '\n';
  return key += term.text();
}

bool is_datum(const zarel::AnswerTerm& term) {
  return term.kind() == zarel::AnswerTerm::Kind::kNumber ||
         term.kind() == zarel::AnswerTerm::Kind::kString;
}

}    // namespace

AnswerGraph::AnswerGraph(std::span<const std::string> chosen)
    : chosen_(chosen.begin(), chosen.end()) {
  for (const std::string& name : chosen_) is_met_.emplace(name, false);
}

std::vector<std::string> AnswerGraph::never_met() const {
  std::vector<std::string> names;
  for (const std::string& name : chosen_) {
    if (!is_met_.at(name)) names.push_back(name);
  }
  return names;
}

bool AnswerGraph::is_chosen(std::string_view name) {
  if (chosen_.empty()) return true;
  const auto found = is_met_.find(std::string(name));
  if (found == is_met_.end()) return false;
  return found->second = true;
}

bool AnswerGraph::takes(const AnswerSet& set, const Item& item) {
  if (chosen_.empty()) return true;
  switch (item.kind) {
    case ItemKind::kAtom:
      return is_chosen(text_of(set.atom(item).relation));
    case ItemKind::kMembership:
      return is_chosen(kMembership);
    case ItemKind::kSubclass:
      return is_chosen(kSubclass);
    default:
      return is_chosen(text_of(set.statement(item).attribute));
  }
}

// Whether a value is an object shows only when all was seen.
void AnswerGraph::add(const AnswerSet& set, const std::string& label) {
  boxes_.clear();
  clusters_.clear();
  text_boxes_.clear();
  const Place place{set, label.empty() ? kNoCluster : graph_.add_cluster(label, kNoCluster)};
  std::vector<const Item*> taken;
  for (const Item& item : set.items()) {
    if (!takes(set, item)) continue;
    taken.push_back(&item);
    add_boxes(place, item);
  }
  for (const Item* const item : taken) add_item(place, *item);
}

std::uint32_t AnswerGraph::cluster(const Place& place, std::string_view space) {
  if (space == zarel::kDefaultSpace) return place.cluster;
  const auto [entry, is_new] = clusters_.try_emplace(std::string(space));
  if (is_new) {
    std::string label("@");
    entry->second = graph_.add_cluster(label += space, place.cluster);
  }
  return entry->second;
}

std::uint32_t AnswerGraph::box(const Place& place, std::string_view space,
                               const zarel::AnswerTerm& term) {
  const auto [entry, is_new] = boxes_.try_emplace(key_of(space, term));
  if (is_new) entry->second = graph_.add({text_of(term), cluster(place, space)});
  return entry->second;
}

std::uint32_t AnswerGraph::text_box(std::uint32_t cluster) {
  const auto [entry, is_new] = text_boxes_.try_emplace(cluster);
  if (is_new) entry->second = graph_.add({"", cluster, Box::Shape::kText});
  return entry->second;
}

void AnswerGraph::add_boxes(const Place& place, const Item& item) {
  if (item.kind == ItemKind::kAtom) {
    const zarel::AnswerAtom atom = place.set.atom(item);
    for (const zarel::AnswerTerm& argument : atom.arguments) box(place, atom.space, argument);
    return;
  }
  if (item.kind == ItemKind::kMembership || item.kind == ItemKind::kSubclass) {
    const zarel::ClassStatement statement = place.set.class_statement(item);
    box(place, statement.space, statement.object);
    box(place, statement.space, statement.class_name);
    return;
  }
  const ObjectStatement statement = place.set.statement(item);
  box(place, statement.space, statement.object);
}

void AnswerGraph::add_item(const Place& place, const Item& item) {
  if (item.kind == ItemKind::kAtom) return add_atom(place, item);
  if (item.kind == ItemKind::kValue || item.kind == ItemKind::kAttribute)
    return add_statement(place, item);
  const zarel::ClassStatement statement = place.set.class_statement(item);
  graph_.arrows.push_back(
      {box(place, statement.space, statement.object),
       box(place, statement.space, statement.class_name), item.is_negated ? "-" : "",
       item.kind == ItemKind::kSubclass ? Arrow::Kind::kSubclass : Arrow::Kind::kMembership,
       item.is_negated});
}

void AnswerGraph::add_atom(const Place& place, const Item& item) {
  const zarel::AnswerAtom atom = place.set.atom(item);
  const std::string name = signed_text(item.is_negated, atom.relation);
  std::vector<std::uint32_t> arguments;
  for (const zarel::AnswerTerm& argument : atom.arguments) {
    arguments.push_back(box(place, atom.space, argument));
  }
  if (arguments.size() < 2) {
    const std::uint32_t to =
        arguments.empty() ? text_box(cluster(place, atom.space)) : arguments.front();
    graph_.boxes[to].lines.push_back({name, item.is_negated});
    return;
  }
  if (arguments.size() == 2) {
    graph_.arrows.push_back(
        {arguments[0], arguments[1], name, Arrow::Kind::kPlain, item.is_negated});
    return;
  }
  const std::uint32_t atom_box =
      graph_.add({name, cluster(place, atom.space), Box::Shape::kRelation, item.is_negated});
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    graph_.arrows.push_back(
        {atom_box, arguments[i], std::to_string(i + 1), Arrow::Kind::kPlain, item.is_negated});
  }
}

// The arrow is written where it is not that of a single value.
void AnswerGraph::add_statement(const Place& place, const Item& item) {
  const ObjectStatement statement = place.set.statement(item);
  const std::uint32_t object = box(place, statement.space, statement.object);
  std::string text = signed_text(item.is_negated, statement.attribute);
  const auto value = item.kind == ItemKind::kValue && !is_datum(statement.value)
                         ? boxes_.find(key_of(statement.space, statement.value))
                         : boxes_.end();
  if (value != boxes_.end()) {
    if (statement.arrow != "->") (text += ' ') += statement.arrow;
    graph_.arrows.push_back(
        {object, value->second, std::move(text), Arrow::Kind::kPlain, item.is_negated});
    return;
  }
  if (item.kind == ItemKind::kValue) {
    ((text += ' ') += statement.arrow) += ' ';
    append_term(text, statement.value);
  }
  graph_.boxes[object].lines.push_back({std::move(text), item.is_negated});
}

}    // namespace workbench
