#include "workbench/answers/answer_sorter.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <string>
#include <tuple>
#include <unordered_map>

#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

using zarel::AnswerTerm;
using Step = zarel::TermWalk::Step;

constexpr int kEnd = 0;    // the ranks of terms begin behind it
constexpr int kEndFunction = 1;
constexpr int kNumber = 2;
constexpr int kConstant = 3;
constexpr int kString = 4;
constexpr int kFunction = 5;

int rank_of(const AnswerTerm& term) {
  switch (term.kind()) {
    case AnswerTerm::Kind::kNumber:
      return kNumber;
    case AnswerTerm::Kind::kString:
      return kString;
    case AnswerTerm::Kind::kFunction:
      return kFunction;
    case AnswerTerm::Kind::kConstant:
    case AnswerTerm::Kind::kQualifiedConstant:
      break;
  }
  return kConstant;
}

int rank_of(Step step, const AnswerTerm& term) {
  return step == Step::kEnd             ? kEnd
         : step == Step::kEndFunction   ? kEndFunction
         : step == Step::kBeginFunction ? kFunction
                                        : rank_of(term);
}

int sign_of(bool is_less, bool is_more) {
  return is_less ? -1 : is_more ? 1 : 0;
}

// Integers of any length.
int compare_numbers(std::string_view left, std::string_view right) {
  const bool is_negative = left.starts_with('-');
  if (is_negative != right.starts_with('-')) return is_negative ? -1 : 1;
  if (left.size() != right.size()) return (left.size() < right.size()) != is_negative ? -1 : 1;
  return is_negative ? right.compare(left) : left.compare(right);
}

// What a constant is shown as; `room` is for what has a prefix.
std::string_view shown_name(const AnswerTerm& term, std::string& room) {
  if (term.prefix().empty()) return term.text();
  room.clear();
  append_term(room, term);
  return room;
}

// Of the same rank, and no functions with their arguments.
int compare_leaves(const AnswerTerm& left, const AnswerTerm& right, int rank) {
  if (rank == kNumber) return compare_numbers(left.text(), right.text());
  if (rank != kConstant) return left.text().compare(right.text());
  std::string left_room, right_room;
  return shown_name(left, left_room).compare(shown_name(right, right_room));
}

std::uint64_t first_bytes(std::string_view text) {
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < sizeof bytes; ++i) {
    bytes <<= 8U;
    if (i < text.size()) bytes |= static_cast<unsigned char>(text[i]);
  }
  return bytes;
}

// The first argument as a number whose order is that of the values, as far as it goes.
std::uint64_t leading_bits(const AnswerTerm& term, int rank) {
  if (rank == kNumber) {
    std::int64_t value = 0;
    const std::string_view text = term.text();
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc()) value = text.starts_with('-') ? INT64_MIN : INT64_MAX;
    return static_cast<std::uint64_t>(value) ^ (std::uint64_t{1} << 63U);
  }
  std::string room;
  return first_bytes(rank == kConstant   ? shown_name(term, room)
                     : rank == kFunction ? term.name()
                                         : term.text());
}

// Items are equal in what they are sorted by first when they are of the same group.
struct Group {
  ItemKind kind;
  std::string_view name;    // of a relation or a class
  std::size_t arity;
  bool is_negated;
  std::string_view space;

  auto fields() const { return std::tie(kind, name, arity, is_negated, space); }
  friend bool operator<(const Group& left, const Group& right) {
    return left.fields() < right.fields();
  }
};

// Objects are all of one group, in which what they say is looked at.
bool is_said_of_object(const Item& item) {
  return item.kind == ItemKind::kValue || item.kind == ItemKind::kAttribute;
}

Group group_of(const AnswerSet& set, const Item& item) {
  if (is_said_of_object(item)) return {ItemKind::kValue, {}, 0, false, {}};
  if (item.kind == ItemKind::kAtom) {
    return {item.kind, set.atom(item).relation.text(), set.arity(item), item.is_negated,
            set.space(item)};
  }
  const bool is_member = item.kind == ItemKind::kMembership;
  const std::string_view name =
      is_member ? set.class_statement(item).class_name.text() : std::string_view();
  return {item.kind, name, 0, item.is_negated, set.space(item)};
}

// The numbers of groups in their order: there are few, so that items are compared by these.
std::vector<std::uint32_t> group_numbers(const AnswerSet& set) {
  std::map<Group, std::uint32_t> known;
  std::vector<const std::uint32_t*> of_items;
  of_items.reserve(set.items().size());
  for (const Item& item : set.items()) {
    of_items.push_back(&known.try_emplace(group_of(set, item), 0).first->second);
  }
  std::uint32_t number = 0;
  for (auto& [group, own] : known) own = number++;
  std::vector<std::uint32_t> numbers;
  numbers.reserve(of_items.size());
  for (const std::uint32_t* const own : of_items) numbers.push_back(*own);
  return numbers;
}

AnswerTerm first_value(const AnswerSet& set, const Item& item) {
  switch (item.kind) {
    case ItemKind::kAtom: {
      const zarel::AnswerTerms arguments = set.atom(item).arguments;
      return arguments.is_empty() ? AnswerTerm() : *arguments.begin();
    }
    case ItemKind::kMembership:
    case ItemKind::kSubclass:
      return set.class_statement(item).object;
    case ItemKind::kValue:
    case ItemKind::kAttribute:
      break;
  }
  return set.statement(item).object;
}

int compare_terms(const AnswerTerm& left, const AnswerTerm& right) {
  return compare_values(zarel::AnswerTerms(left.text(), left.namespaces()),
                        zarel::AnswerTerms(right.text(), right.namespaces()));
}

int compare_statements(const ObjectStatement& left, const ObjectStatement& right) {
  if (const int order = compare_terms(left.object, right.object)) return order;
  if (const int order = left.space.compare(right.space)) return order;
  if (const int order = compare_terms(left.attribute, right.attribute)) return order;
  if (left.is_negated != right.is_negated) return left.is_negated ? 1 : -1;
  if (const int order = left.arrow.compare(right.arrow)) return order;
  return compare_terms(left.value, right.value);
}

// Of the same group.
int compare_items(const AnswerSet& set, const Item& left, const Item& right) {
  if (is_said_of_object(left)) {
    return compare_statements(set.statement(left), set.statement(right));
  }
  if (left.kind == ItemKind::kAtom) {
    return compare_values(set.atom(left).arguments, set.atom(right).arguments);
  }
  const zarel::ClassStatement first = set.class_statement(left);
  const zarel::ClassStatement second = set.class_statement(right);
  if (const int order = compare_terms(first.object, second.object)) return order;
  return compare_terms(first.class_name, second.class_name);
}

struct Key {
  std::uint32_t group;
  int rank;
  std::uint64_t bits;
  const Item* item;
};

}    // namespace

int compare_values(const zarel::AnswerTerms& left, const zarel::AnswerTerms& right) {
  zarel::TermWalk left_walk(left);
  zarel::TermWalk right_walk(right);
  for (;;) {
    const Step left_step = left_walk.next();
    const Step right_step = right_walk.next();
    const int left_rank = rank_of(left_step, left_walk.term());
    const int right_rank = rank_of(right_step, right_walk.term());
    if (left_rank != right_rank) return sign_of(left_rank < right_rank, true);
    if (left_rank == kEnd) return 0;
    if (left_rank == kEndFunction) continue;
    const int order = compare_leaves(left_walk.term(), right_walk.term(), left_rank);
    if (order != 0) return order;
  }
}

void AnswerSorter::answer_set(AnswerSet& set) {
  const std::vector<std::uint32_t> groups = group_numbers(set);
  std::vector<Key> keys;
  keys.reserve(groups.size());
  for (const Item& item : set.items()) {
    const AnswerTerm value = first_value(set, item);
    const int rank = rank_of(value);
    keys.push_back({groups[keys.size()], rank, leading_bits(value, rank), &item});
  }
  std::ranges::sort(keys, [&set](const Key& left, const Key& right) {
    if (left.group != right.group) return left.group < right.group;
    if (left.rank != right.rank) return left.rank < right.rank;
    if (left.bits != right.bits) return left.bits < right.bits;
    return compare_items(set, *left.item, *right.item) < 0;
  });
  std::vector<Item> sorted;
  sorted.reserve(keys.size());
  for (const Key& key : keys) sorted.push_back(*key.item);
  set.put_in_order(std::move(sorted));
  next().answer_set(set);
}

}    // namespace workbench
