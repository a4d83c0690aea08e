#include "dl/explain/answer_index.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace dl {
namespace {

constexpr std::size_t kFirstSlots = 64;

// The part of a hash that a slot keeps.
std::uint32_t part_of(std::size_t hash) {
  return static_cast<std::uint32_t>(hash >> 32);
}

}    // namespace

std::size_t AnswerIndex::hash_of(PredicateNumber predicate, std::span<const GroundTerm> arguments) {
  std::uint64_t hash = predicate * 0x9e3779b97f4a7c15u;
  for (const GroundTerm argument : arguments) {
    hash = (hash ^ argument) * 0xff51afd7ed558ccdu;
    hash ^= hash >> 29;
  }
  return hash ^ (hash >> 32);
}

PredicateNumber AnswerIndex::number(const Predicate& predicate) {
  const auto found = numbers_.find(predicate);
  if (found != numbers_.end()) return found->second;
  const auto number = static_cast<PredicateNumber>(predicates_.size());
  predicates_.push_back({predicate, {}, {}, {}});
  numbers_.emplace(predicate, number);
  return number;
}

PredicateNumber AnswerIndex::contrary(PredicateNumber number) {
  Predicate key = predicate(number);
  key.strongly_negated = !key.strongly_negated;
  return this->number(key);
}

AtomNumber AnswerIndex::add(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                            std::size_t hash) {
  if (2 * (atoms_.size() + 1) > slots_.size()) {
    make_slots(std::max(kFirstSlots, 2 * slots_.size()));
  }
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hash & mask;
  for (; slots_[slot].atom != kNoAtom; slot = (slot + 1) & mask) {
    if (is_at(slots_[slot], predicate, arguments, hash)) return slots_[slot].atom;
  }
  const auto atom = static_cast<AtomNumber>(atoms_.size());
  atoms_.push_back({predicate, static_cast<std::uint32_t>(arguments_.size())});
  arguments_.insert(arguments_.end(), arguments.begin(), arguments.end());
  slots_[slot] = {part_of(hash), atom};
  predicates_[predicate].atoms.push_back(atom);
  return atom;
}

bool AnswerIndex::is_at(const Slot& slot, PredicateNumber predicate,
                        std::span<const GroundTerm> arguments, std::size_t hash) const {
  return slot.hash == part_of(hash) && atoms_[slot.atom].predicate == predicate &&
         std::ranges::equal(this->arguments(slot.atom), arguments);
}

void AnswerIndex::clear() {
  for (Entry& entry : predicates_) entry = {entry.key, {}, {}, {}};
  atoms_.clear();
  arguments_.clear();
  slots_.clear();
}

void AnswerIndex::reserve(std::size_t atoms) {
  atoms_.reserve(atoms);
  if (2 * (atoms + 1) > slots_.size()) make_slots(std::bit_ceil(2 * (atoms + 1)));
}

void AnswerIndex::make_slots(std::size_t count) {
  slots_.assign(count, {});
  const std::size_t mask = slots_.size() - 1;
  for (AtomNumber atom = 0; atom < atoms_.size(); ++atom) {
    const std::size_t hash = hash_of(atoms_[atom].predicate, arguments(atom));
    std::size_t slot = hash & mask;
    while (slots_[slot].atom != kNoAtom) slot = (slot + 1) & mask;
    slots_[slot] = {part_of(hash), atom};
  }
}

std::span<const GroundTerm> AnswerIndex::arguments(AtomNumber atom) const {
  const Atom& stored = atoms_[atom];
  return std::span(arguments_).subspan(stored.begin, predicates_[stored.predicate].key.arity);
}

AtomNumber AnswerIndex::find(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                             std::size_t hash) const {
  if (slots_.empty()) return kNoAtom;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t slot = hash & mask; slots_[slot].atom != kNoAtom; slot = (slot + 1) & mask) {
    if (is_at(slots_[slot], predicate, arguments, hash)) return slots_[slot].atom;
  }
  return kNoAtom;
}

std::span<const AtomNumber> AnswerIndex::atoms(PredicateNumber predicate) const {
  return predicates_[predicate].atoms;
}

// Counts, then puts each atom into the stretch of its value.
void AnswerIndex::index_place(Entry& entry, std::uint32_t place) {
  PlaceIndex& index = entry.places[place];
  for (const AtomNumber atom : entry.atoms) ++index.stretches[arguments(atom)[place]].second;
  std::uint32_t begin = 0;
  for (const AtomNumber atom : entry.atoms) {
    auto& [first, count] = index.stretches[arguments(atom)[place]];
    if (count == 0) continue;
    first = begin;
    begin += std::exchange(count, 0);
  }
  index.atoms.resize(entry.atoms.size());
  // A count of 0 says that nothing was put there yet; all are counted once more.
  for (const AtomNumber atom : entry.atoms) {
    auto& [first, count] = index.stretches[arguments(atom)[place]];
    index.atoms[first + count++] = atom;
  }
}

std::span<const AtomNumber> AnswerIndex::atoms_with(PredicateNumber predicate, std::uint32_t place,
                                                    GroundTerm value) {
  Entry& entry = predicates_[predicate];
  if (entry.places.empty()) {
    entry.places.resize(entry.key.arity);
    entry.has_place.resize(entry.key.arity, 0);
  }
  if (entry.has_place[place] == 0) {
    index_place(entry, place);
    entry.has_place[place] = 1;
  }
  const PlaceIndex& index = entry.places[place];
  const auto found = index.stretches.find(value);
  if (found == index.stretches.end()) return {};
  return std::span(index.atoms).subspan(found->second.first, found->second.second);
}

void AnswerIndex::append(std::string& out, PredicateNumber predicate,
                         std::span<const GroundTerm> arguments) const {
  const Predicate& key = predicates_[predicate].key;
  if (key.strongly_negated) out += '-';
  out += terms_.spelling(key.name);
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    out += i == 0 ? '(' : ',';
    terms_.append(out, arguments[i]);
  }
  if (!arguments.empty()) out += ')';
}

}    // namespace dl
