#include "workbench/answers/answer_filter.h"

#include <iterator>
#include <utility>

#include "model/generic_encoding.h"
#include "workbench/answers/term_text.h"

namespace workbench {

AnswerFilter::AnswerFilter(AnswerConsumer& next, std::vector<ItemPattern> patterns)
    : AnswerStage(next), patterns_(std::move(patterns)) {
  for (const ItemPattern& pattern : patterns_) {
    if (!pattern.leaves_out) shows_the_rest_ = false;
    for (const ItemPattern::Reading& reading : pattern.readings) {
      by_name_[static_cast<std::size_t>(reading.kind)][reading.second].push_back(
          {&pattern, reading.first});
      if (reading.kind == PatternKind::kAttribute && !reading.first.empty())
        members_[reading.first];
    }
  }
}

AnswerFilter::Parts AnswerFilter::parts_of(const AnswerSet& set, const Item& item) {
  switch (item.kind) {
    case ItemKind::kAtom:
      return {PatternKind::kRelation, {}, set.atom(item).relation};
    case ItemKind::kMembership:
    case ItemKind::kSubclass: {
      const zarel::ClassStatement said = set.class_statement(item);
      const bool is_member = item.kind == ItemKind::kMembership;
      return {is_member ? PatternKind::kMembership : PatternKind::kSubclass, said.object,
              said.class_name};
    }
    case ItemKind::kValue:
    case ItemKind::kAttribute:
      break;
  }
  const ObjectStatement said = set.statement(item);
  return {PatternKind::kAttribute, said.object, said.attribute};
}

// Only an address has another name than its text.
std::string_view AnswerFilter::shown_name(const zarel::AnswerTerm& term) {
  if (term.namespaces() == nullptr || term.text().find('#') == std::string_view::npos) {
    return term.text();
  }
  name_.clear();
  append_term(name_, term);
  return name_;
}

bool AnswerFilter::is_named(const zarel::AnswerTerm& term, std::string_view name) {
  return term.text() == name || shown_name(term) == name;
}

void AnswerFilter::note_members(const AnswerSet& set) {
  if (members_.empty()) return;
  for (auto& [name, members] : members_) members.clear();
  for (const Item& item : set.items()) {
    if (item.kind != ItemKind::kMembership || item.is_negated) continue;
    const zarel::ClassStatement said = set.class_statement(item);
    auto found = members_.find(said.class_name.text());
    if (found == members_.end()) found = members_.find(shown_name(said.class_name));
    if (found != members_.end()) found->second.insert(said.object.text());
  }
}

bool AnswerFilter::matches(const Candidate& candidate, const AnswerSet& set, const Item& item,
                           const Parts& parts) {
  const ItemPattern& pattern = *candidate.pattern;
  if (pattern.is_negated && !item.is_negated) return false;
  if (!pattern.space.empty() && pattern.space != set.space(item)) return false;
  if (pattern.arity && *pattern.arity != set.arity(item)) return false;
  if (candidate.first.empty() || is_named(parts.first, candidate.first)) return true;
  if (parts.kind != PatternKind::kAttribute) return false;
  return members_.find(candidate.first)->second.contains(parts.first.text());
}

template <typename Visit>
void AnswerFilter::each_candidate(const Parts& parts, Visit&& visit) {
  const Index& index = by_name_[static_cast<std::size_t>(parts.kind)];
  const auto visit_named = [&index, &visit](std::string_view name) {
    const auto found = index.find(name);
    if (found != index.end()) std::ranges::for_each(found->second, visit);
  };
  visit_named({});
  visit_named(parts.second.text());
  const std::string_view shown = shown_name(parts.second);
  if (shown != parts.second.text()) visit_named(shown);
}

bool AnswerFilter::shows(const AnswerSet& set, const Item& item) {
  if (item.kind == ItemKind::kAtom && set.space(item) == zarel::kServiceSpace) return false;
  if (patterns_.empty()) return true;
  const Parts parts = parts_of(set, item);
  bool is_shown = shows_the_rest_;
  bool is_left_out = false;
  each_candidate(parts, [&](const Candidate& candidate) {
    if (!matches(candidate, set, item, parts)) return;
    (candidate.pattern->leaves_out ? is_left_out : is_shown) = true;
  });
  return is_shown && !is_left_out;
}

void AnswerFilter::answer_set(AnswerSet& set) {
  note_members(set);
  set.keep_if([this, &set](const Item& item) { return shows(set, item); });
  next().answer_set(set);
}

}    // namespace workbench
