#include "output/frame_map.h"

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace zarel {
namespace {

std::uint32_t hash_text(std::string_view text) {
  return static_cast<std::uint32_t>(std::hash<std::string_view>{}(text));
}

// A size as a position, below the one that means none.
std::uint32_t checked_position(std::size_t size) {
  if (size >= PositionIndex::kNone) throw std::length_error("frame texts of one answer set");
  return static_cast<std::uint32_t>(size);
}

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

FrameMap::Range FrameMap::store(std::string_view text) {
  const Position begin = checked_position(text_.size());
  const Position end = checked_position(text_.size() + text.size());
  text_ += text;
  return {begin, end};
}

std::string_view FrameMap::text_of(Position begin, Position end) const {
  return std::string_view(text_).substr(begin, end - begin);
}

std::string_view FrameMap::key_of(const Object& object) const {
  return text_of(object.name.begin, object.key_end);
}

FrameMap::Position FrameMap::find_or_add_object(const AttributeStatement& statement) {
  Object object{};
  object.name = store(statement.object);
  object.key_end = store(statement.suffix).end;
  const std::string_view key = key_of(object);
  const std::uint32_t hash = hash_text(key);
  const Position known = object_index_.find(
      hash, [&](Position position) { return key_of(objects_[position]) == key; });
  if (known != kNone) {
    text_.resize(object.name.begin);
    return known;
  }
  const Position position = checked_position(objects_.size());
  objects_.push_back(object);
  object_index_.insert(hash, position);
  return position;
}

FrameMap::FRAMETRIPLE FrameMap::stored_triple(const AttributeStatement& statement) {
  FRAMETRIPLE triple{};
  triple.object = find_or_add_object(statement);
  const Position begin = store(statement.negated ? "-" : "").begin;
  triple.attribute = {begin, store(statement.attribute).end};
  triple.arrow_end = store(statement.arrow).end;
  return triple;
}

std::uint32_t FrameMap::hash_of(const FRAMETRIPLE& triple) const {
  constexpr std::uint32_t kSpread =
      0x9E3779B1U;    // so that neighbouring objects do not share their slots
  return hash_text(text_of(triple.attribute.begin, triple.arrow_end)) ^ triple.object * kSpread;
}

FrameMap::Position FrameMap::find_equal(const FRAMETRIPLE& triple, std::uint32_t hash) const {
  const Range attribute = triple.attribute;
  return triple_index_.find(hash, [&](Position position) {
    const FRAMETRIPLE& other = triples_[position];
    return other.object == triple.object &&
           other.attribute.end - other.attribute.begin == attribute.end - attribute.begin &&
           text_of(other.attribute.begin, other.arrow_end) ==
               text_of(attribute.begin, triple.arrow_end);
  });
}

void FrameMap::add_value(const AttributeStatement& statement) {
  const FRAMETRIPLE triple = stored_triple(statement);
  const std::uint32_t hash = hash_of(triple);
  const Position known = find_equal(triple, hash);
  if (known == kNone) {
    triple_index_.insert(hash, checked_position(triples_.size()));
    append_triple(triple, statement.value);
    return;
  }
  text_.resize(triple.attribute.begin);
  const Position value = add_stored_value(statement.value);
  values_[triples_[known].last_value].next = value;
  triples_[known].last_value = value;
}

void FrameMap::add_valueless(const AttributeStatement& statement) {
  const FRAMETRIPLE triple = stored_triple(statement);
  const std::uint32_t hash = hash_of(triple);
  if (find_equal(triple, hash) == kNone) {
    triple_index_.insert(hash, checked_position(triples_.size()));
  }
  append_triple(triple, {});
}

void FrameMap::append_triple(FRAMETRIPLE triple, std::string_view value) {
  const Position position = checked_position(triples_.size());
  triple.first_value = triple.last_value = add_stored_value(value);
  Object& object = objects_[triple.object];
  (object.last_triple == kNone ? object.first_triple : triples_[object.last_triple].next) =
      position;
  object.last_triple = position;
  triples_.push_back(triple);
}

FrameMap::Position FrameMap::add_stored_value(std::string_view value) {
  const Position position = checked_position(values_.size());
  values_.push_back({store(value)});
  return position;
}

std::vector<FrameMap::Position> FrameMap::objects_in_key_order() const {
  struct Entry {
    std::uint64_t leading;
    Position position;
  };
  std::vector<Entry> entries;
  entries.reserve(objects_.size());
  for (const Object& object : objects_) {
    entries.push_back({leading_bytes(key_of(object)), static_cast<Position>(entries.size())});
  }
  std::sort(entries.begin(), entries.end(), [this](const Entry& left, const Entry& right) {
    if (left.leading != right.leading) return left.leading < right.leading;
    return key_of(objects_[left.position]) < key_of(objects_[right.position]);
  });
  std::vector<Position> positions;
  positions.reserve(entries.size());
  for (const Entry& entry : entries) positions.push_back(entry.position);
  return positions;
}

void FrameMap::append_triple_text(std::string& out, const FRAMETRIPLE& triple) const {
  const bool has_several = triple.first_value != triple.last_value;
  out += text_of(triple.attribute.begin, triple.arrow_end);
  if (has_several) out += '{';
  for (Position at = triple.first_value; at != kNone; at = values_[at].next) {
    if (at != triple.first_value) out += ',';
    out += text_of(values_[at].text.begin, values_[at].text.end);
  }
  if (has_several) out += '}';
}

void FrameMap::append_object(std::string& out, const Object& object) const {
  const std::string_view key = key_of(object);
  out += key.substr(0, key.find('@'));
  out += '[';
  for (Position at = object.first_triple; at != kNone; at = triples_[at].next) {
    if (at != object.first_triple) out += ',';
    append_triple_text(out, triples_[at]);
  }
  out += ']';
  out += text_of(object.name.end, object.key_end);
}

void FrameMap::stringMolecules(std::string& out) const {
  bool is_first = true;
  for (const Position position : objects_in_key_order()) {
    if (!is_first) out += ',';
    append_object(out, objects_[position]);
    is_first = false;
  }
}

void FrameMap::clear() {
  text_.clear();
  objects_.clear();
  triples_.clear();
  values_.clear();
  object_index_.clear();
  triple_index_.clear();
}

}    // namespace zarel
