#include "output/molecules.h"

#include <algorithm>

namespace zarel {
namespace {

// The first eight bytes as a number that orders as they do, so that sorting rarely looks at the
// texts.
std::uint64_t leading_bytes(std::string_view text) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) {
    number = number << 8U | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  }
  return number;
}

}    // namespace

void Molecules::add_objects_of(const FrameRecords& part) {
  part.for_each([this](const FrameRecord& record) { add(record); });
  for (const Object& object : objects_) add_molecule(object);
  objects_.clear();
  triples_.clear();
  values_.clear();
  object_index_.clear();
  triple_index_.clear();
}

void Molecules::add(const FrameRecord& record) {
  constexpr std::uint32_t kSpread = 0x9E3779B1U;    // an odd number of no pattern
  const Position object = find_or_add_object(record);
  const std::uint32_t hash = (record.hash + record.attribute) * kSpread;
  const Position known = triple_index_.find(hash, [&](Position position) {
    return triples_[position].object == object && triples_[position].attribute == record.attribute;
  });
  if (known == kNone) triple_index_.insert(hash, checked_position(triples_.size()));
  const Position value = checked_position(values_.size());
  values_.push_back({record.value});
  if (known == kNone || !record.has_value) return append_triple(object, record);
  values_[triples_[known].last_value].next = value;
  triples_[known].last_value = value;
}

Molecules::Position Molecules::find_or_add_object(const FrameRecord& record) {
  const std::string_view key(record.name.data(), record.name.size() + record.suffix.size());
  const Position known = object_index_.find(
      record.hash, [&](Position position) { return objects_[position].key == key; });
  if (known != kNone) return known;
  const Position position = checked_position(objects_.size());
  objects_.push_back({key, record.name.size(), record.hash});
  object_index_.insert(record.hash, position);
  return position;
}

// Appends the attribute with the value that was added last.
void Molecules::append_triple(Position object, const FrameRecord& record) {
  const Position position = checked_position(triples_.size());
  const auto value = static_cast<Position>(values_.size() - 1);
  triples_.push_back({object, record.attribute, value, value});
  Object& owner = objects_[object];
  (owner.last_triple == kNone ? owner.first_triple : triples_[owner.last_triple].next) = position;
  owner.last_triple = position;
}

void Molecules::add_molecule(const Object& object) {
  text_ += object.key.substr(0, object.key.find('@'));
  text_ += '[';
  for (Position at = object.first_triple; at != kNone; at = triples_[at].next) {
    if (at != object.first_triple) text_ += ',';
    add_triple_text(triples_[at]);
  }
  text_ += ']';
  text_ += object.key.substr(object.name_size);
  molecules_.push_back({object.key, text_.size()});
}

void Molecules::add_triple_text(const FRAMETRIPLE& triple) {
  const bool has_several = triple.first_value != triple.last_value;
  text_ += attributes_.text(triple.attribute);
  if (has_several) text_ += '{';
  for (Position at = triple.first_value; at != kNone; at = values_[at].next) {
    if (at != triple.first_value) text_ += ',';
    text_ += values_[at].text;
  }
  if (has_several) text_ += '}';
}

std::vector<Molecules::Position> Molecules::positions_in_key_order() const {
  struct Entry {
    std::uint64_t leading;
    Position position;
  };
  std::vector<Entry> entries;
  entries.reserve(molecules_.size());
  for (const Molecule& molecule : molecules_) {
    entries.push_back({leading_bytes(molecule.key), checked_position(entries.size())});
  }
  std::sort(entries.begin(), entries.end(), [this](const Entry& left, const Entry& right) {
    if (left.leading != right.leading) return left.leading < right.leading;
    return molecules_[left.position].key < molecules_[right.position].key;
  });
  std::vector<Position> positions;
  positions.reserve(entries.size());
  for (const Entry& entry : entries) positions.push_back(entry.position);
  return positions;
}

void Molecules::append_in_key_order(std::string& out) const {
  bool is_first = true;
  for (const Position position : positions_in_key_order()) {
    if (!is_first) out += ',';
    const std::size_t begin = position == 0 ? 0 : molecules_[position - 1].end;
    out += std::string_view(text_).substr(begin, molecules_[position].end - begin);
    is_first = false;
  }
}

}    // namespace zarel
