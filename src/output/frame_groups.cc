#include "output/frame_groups.h"

namespace zarel {

void FrameGroups::add(const FrameRecords& part) {
  part.for_each([this](const FrameRecord& record) { add(record); });
  object_index_.clear();
  triple_index_.clear();
}

void FrameGroups::clear() {
  objects_.clear();
  triples_.clear();
  values_.clear();
}

void FrameGroups::add(const FrameRecord& record) {
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

FrameGroups::Position FrameGroups::find_or_add_object(const FrameRecord& record) {
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
void FrameGroups::append_triple(Position object, const FrameRecord& record) {
  const Position position = checked_position(triples_.size());
  const auto value = static_cast<Position>(values_.size() - 1);
  triples_.push_back({object, record.attribute, value, value});
  Object& owner = objects_[object];
  (owner.last_triple == kNone ? owner.first_triple : triples_[owner.last_triple].next) = position;
  owner.last_triple = position;
}

}    // namespace zarel
