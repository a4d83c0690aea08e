#include "dl/explain/answer_index.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

namespace dl {
namespace {

constexpr std::size_t kFirstSlots = 64;

// Note [neighbours]
// What is looked up one after the other often has values one beside the other: the numbers of a
// chain, names in the order of the input. So these have hashes one beside the other, eight at a
// time, and a lookup finds in the cache what the one before has waited for.
constexpr std::size_t kNeighbours = 8;

// The part of a hash that a slot keeps.
std::uint32_t part_of(std::size_t hash) {
  return static_cast<std::uint32_t>(hash >> 32);
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
  hash = (hash ^ value) * 0xff51afd7ed558ccdu;
  return hash ^ (hash >> 29);
}

// See Note [neighbours].
std::size_t neighbourly(GroundTerm value) {
  const std::uint64_t hash = mixed(0, value / kNeighbours);
  return ((hash ^ (hash >> 32)) & ~(kNeighbours - 1)) | value % kNeighbours;
}

}    // namespace

// See Note [neighbours]; the upper half, of which slots keep a part, tells them apart.
std::size_t AnswerIndex::hash_of(PredicateNumber predicate, std::span<const GroundTerm> arguments) {
  std::uint64_t hash = predicate * 0x9e3779b97f4a7c15u;
  if (arguments.empty()) return hash ^ (hash >> 32);
  for (const GroundTerm argument : arguments.first(arguments.size() - 1)) {
    hash = mixed(hash, argument);
  }
  const GroundTerm last = arguments.back();
  hash = mixed(hash, last / kNeighbours);
  hash = ((hash ^ (hash >> 32)) & ~(kNeighbours - 1)) | last % kNeighbours;
  return hash ^ (std::uint64_t{last % kNeighbours} << 61);
}

PredicateNumber AnswerIndex::number(const Predicate& predicate) {
  const auto found = numbers_.find(predicate);
  if (found != numbers_.end()) return found->second;
  const auto number = static_cast<PredicateNumber>(predicates_.size());
  predicates_.push_back({predicate, {}, {}});
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
  for (Entry& entry : predicates_) entry = {entry.key, {}, {}};
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

// Counts, then puts each atom into its bucket, from behind, so that the atoms keep their order.
void AnswerIndex::index_place(Entry& entry, std::uint32_t place) const {
  PlaceIndex& index = entry.places[place];
  index.ends.assign(std::bit_ceil(std::max(entry.atoms.size(), kNeighbours)), 0);
  const std::size_t mask = index.ends.size() - 1;
  const auto bucket = [&](AtomNumber atom) { return neighbourly(argument(atom, place)) & mask; };
  for (const AtomNumber atom : entry.atoms) ++index.ends[bucket(atom)];
  std::partial_sum(index.ends.begin(), index.ends.end(), index.ends.begin());
  index.atoms.resize(entry.atoms.size());
  std::vector<std::uint32_t> next = index.ends;
  for (std::size_t i = entry.atoms.size(); i-- > 0;) {
    index.atoms[--next[bucket(entry.atoms[i])]] = entry.atoms[i];
  }
  const auto value = [&](AtomNumber atom) { return argument(atom, place); };
  for (std::size_t i = 0; i < next.size(); ++i) {
    const auto begin = index.atoms.begin() + next[i];
    const auto end = index.atoms.begin() + index.ends[i];
    if (!std::ranges::is_sorted(begin, end, {}, value)) {
      std::ranges::stable_sort(begin, end, {}, value);
    }
  }
}

std::span<const AtomNumber> AnswerIndex::atoms_with(PredicateNumber predicate, std::uint32_t place,
                                                    GroundTerm value) {
  Entry& entry = predicates_[predicate];
  if (entry.atoms.empty()) return {};
  entry.places.resize(entry.key.arity);
  PlaceIndex& index = entry.places[place];
  if (index.ends.empty()) index_place(entry, place);
  const std::size_t bucket = neighbourly(value) & (index.ends.size() - 1);
  const std::uint32_t begin = bucket == 0 ? 0 : index.ends[bucket - 1];
  const auto atoms = std::span(index.atoms).subspan(begin, index.ends[bucket] - begin);
  const auto value_of = [&](AtomNumber atom) { return argument(atom, place); };
  if (atoms.empty() || (value_of(atoms.front()) == value && value_of(atoms.back()) == value)) {
    return atoms;
  }
  const auto first = std::ranges::lower_bound(atoms, value, {}, value_of);
  const auto last = std::ranges::upper_bound(atoms, value, {}, value_of);
  return {first, last};
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
