#include "dl/explain/ground_terms.h"

#include <algorithm>

#include "dl/names.h"

namespace dl {
namespace {

constexpr std::size_t kFirstSlots = 64;
constexpr std::size_t kBlock = std::size_t{1} << 16;
constexpr NameNumber kNoName = 0xffffffffu;

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
  hash ^= value + 0x9e3779b97f4a7c15u + (hash << 6) + (hash >> 2);
  return hash * 0xff51afd7ed558ccdu;
}

// Where clingo has a name of its own for it, that is what it compares: see Note [reserved names].
std::string ordered(std::string_view spelling) {
  std::string name;
  if (spelling.front() == '"') {
    name = spelling;
  } else {
    append_clingo_name(name, spelling);
  }
  return name;
}

}    // namespace

NameNumber GroundTerms::name(std::string_view spelling, std::size_t hash) {
  if (2 * (names_.size() + 1) > name_slots_.size()) grow_names();
  const std::size_t mask = name_slots_.size() - 1;
  const auto part = static_cast<std::uint32_t>(hash >> 32);
  std::size_t slot = hash & mask;
  for (; name_slots_[slot].name != kNoName; slot = (slot + 1) & mask) {
    const NameSlot& each = name_slots_[slot];
    if (each.hash == part && names_[each.name] == spelling) return each.name;
  }
  const auto number = static_cast<NameNumber>(names_.size());
  names_.push_back(kept(spelling));
  name_slots_[slot] = {part, number};
  return number;
}

std::string_view GroundTerms::kept(std::string_view spelling) {
  if (blocks_.empty() || blocks_.back().capacity() - blocks_.back().size() < spelling.size()) {
    blocks_.emplace_back().reserve(std::max(kBlock, spelling.size()));
  }
  std::string& block = blocks_.back();
  block += spelling;
  return std::string_view(block).substr(block.size() - spelling.size());
}

void GroundTerms::grow_names() {
  name_slots_.assign(std::max(kFirstSlots, 2 * name_slots_.size()), {});
  const std::size_t mask = name_slots_.size() - 1;
  for (NameNumber number = 0; number < names_.size(); ++number) {
    const std::size_t hash = hash_of(names_[number]);
    std::size_t slot = hash & mask;
    while (name_slots_[slot].name != kNoName) slot = (slot + 1) & mask;
    name_slots_[slot] = {static_cast<std::uint32_t>(hash >> 32), number};
  }
}

// A string is spelled with its quotes, so a name is never both.
GroundTerm GroundTerms::simple(GroundKind kind, NameNumber name) {
  if (constants_.size() <= name) constants_.resize(name + 1, kNoTerm);
  if (constants_[name] == kNoTerm) {
    constants_[name] = static_cast<GroundTerm>(terms_.size());
    terms_.push_back({kind, name, 0, 0});
  }
  return constants_[name];
}

std::uint64_t GroundTerms::hash_of(NameNumber functor, std::span<const GroundTerm> arguments) {
  std::uint64_t hash = mixed(arguments.size(), functor);
  for (const GroundTerm argument : arguments) hash = mixed(hash, argument);
  return hash ^ (hash >> 32);
}

GroundTerm GroundTerms::compound(NameNumber functor, std::span<const GroundTerm> arguments) {
  if (2 * (compounds_ + 1) > slots_.size()) grow();
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash_of(functor, arguments) & mask;
  for (; slots_[slot] != kNoTerm; slot = (slot + 1) & mask) {
    const GroundTerm other = slots_[slot];
    if (terms_[other].name == functor && std::ranges::equal(this->arguments(other), arguments)) {
      return other;
    }
  }
  const auto term = static_cast<GroundTerm>(terms_.size());
  terms_.push_back({GroundKind::kCompound, functor, static_cast<std::uint32_t>(arguments_.size()),
                    static_cast<std::uint32_t>(arguments.size())});
  // The arguments may lie in this very vector.
  const std::vector<GroundTerm> copy(arguments.begin(), arguments.end());
  arguments_.insert(arguments_.end(), copy.begin(), copy.end());
  slots_[slot] = term;
  ++compounds_;
  return term;
}

void GroundTerms::grow() {
  const std::vector<GroundTerm> old = std::move(slots_);
  slots_.assign(std::max(kFirstSlots, 2 * old.size()), kNoTerm);
  const std::size_t mask = slots_.size() - 1;
  for (const GroundTerm term : old) {
    if (term == kNoTerm) continue;
    std::size_t slot = hash_of(terms_[term].name, arguments(term)) & mask;
    while (slots_[slot] != kNoTerm) slot = (slot + 1) & mask;
    slots_[slot] = term;
  }
}

GroundKind GroundTerms::kind(GroundTerm term) const {
  return is_integer(term) ? GroundKind::kInteger : terms_[term].kind;
}

std::span<const GroundTerm> GroundTerms::arguments(GroundTerm term) const {
  if (is_integer(term)) return {};
  const Stored& stored = terms_[term];
  return std::span(arguments_).subspan(stored.begin, stored.count);
}

std::strong_ordering GroundTerms::compare(GroundTerm left, GroundTerm right) const {
  // Nested terms wait here instead of in calls: they may be nested deep.
  std::vector<std::pair<GroundTerm, GroundTerm>> waiting{{left, right}};
  while (!waiting.empty()) {
    const auto [a, b] = waiting.back();
    waiting.pop_back();
    if (a == b) continue;
    const auto kinds = kind(a) <=> kind(b);
    if (std::is_neq(kinds)) return kinds;
    if (is_integer(a)) return value(a) <=> value(b);
    const std::span<const GroundTerm> lefts = arguments(a);
    const std::span<const GroundTerm> rights = arguments(b);
    if (lefts.size() != rights.size()) return lefts.size() <=> rights.size();
    std::string_view x = spelling(name_of(a));
    std::string_view y = spelling(name_of(b));
    if (kind(a) ==
        GroundKind::kString) {    // without the last quote, which is greater than a blank
      x.remove_suffix(1);
      y.remove_suffix(1);
    }
    const auto names = ordered(x) <=> ordered(y);
    if (std::is_neq(names)) return names;
    for (std::size_t i = lefts.size(); i-- > 0;) waiting.emplace_back(lefts[i], rights[i]);
  }
  return std::strong_ordering::equal;
}

void GroundTerms::append(std::string& out, GroundTerm term) const {
  struct Open {
    std::span<const GroundTerm> arguments;
    std::size_t next;
  };
  std::vector<Open> open;
  const auto begin = [&](GroundTerm each) {
    if (is_integer(each)) {
      out += std::to_string(value(each));
      return;
    }
    out += spelling(name_of(each));
    if (kind(each) != GroundKind::kCompound) return;
    out += '(';
    open.push_back({arguments(each), 0});
  };
  begin(term);
  while (!open.empty()) {
    Open& top = open.back();
    if (top.next == top.arguments.size()) {
      out += ')';
      open.pop_back();
      continue;
    }
    if (top.next != 0) out += ',';
    begin(top.arguments[top.next++]);
  }
}

}    // namespace dl
