#pragma once
// frame_groups.h - statements about objects, grouped by object and attribute.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "output/frame_records.h"
#include "output/position_index.h"

namespace zarel {

// Holds the objects of the parts that were added (see Note [frames in parts]), whose records
// outlive this. An attribute's values, and an object's attributes, are chained in order of arrival.
class FrameGroups {
 public:
  using Position = std::uint32_t;
  static constexpr Position kNone = PositionIndex::kNone;

  struct Value {
    std::string_view text;
    Position next = kNone;
  };
  struct FRAMETRIPLE {
    Position object;
    std::uint32_t attribute;
    Position first_value, last_value;
    Position next = kNone;    // in the object
  };
  struct Object {
    std::string_view key;     // name and suffix
    std::size_t name_size;    // of the key; the suffix is the rest
    std::uint32_t hash;
    Position first_triple = kNone, last_triple = kNone;
  };

  // Adds the objects of the records; no object is in two parts. Throws std::length_error when there
  // are too many of anything.
  void add(const FrameRecords& part);

  const std::vector<Object>& objects() const { return objects_; }
  const FRAMETRIPLE& triple(Position position) const { return triples_[position]; }
  const Value& value(Position position) const { return values_[position]; }

  void clear();    // its memory is used again

 private:
  void add(const FrameRecord& record);
  Position find_or_add_object(const FrameRecord& record);
  void append_triple(Position object, const FrameRecord& record);

  std::vector<Object> objects_;
  std::vector<FRAMETRIPLE> triples_;
  std::vector<Value> values_;

  // Of the part that is being added.
  PositionIndex object_index_;    // by key
  PositionIndex triple_index_;    // by object and attribute; the first of equal ones
};

// The first eight bytes as a number that orders as they do, so that sorting rarely looks at the
// texts.
inline std::uint64_t leading_bytes(std::string_view text) {
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < sizeof number; ++i) {
    number = number << 8U | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
  }
  return number;
}

// The positions of the items in the byte-wise order of their keys.
template <class Item>
std::vector<std::uint32_t> positions_in_key_order(const std::vector<Item>& items) {
  struct Entry {
    std::uint64_t leading;
    std::uint32_t position;
  };
  std::vector<Entry> entries;
  entries.reserve(items.size());
  for (const Item& item : items) {
    entries.push_back({leading_bytes(item.key), checked_position(entries.size())});
  }
  std::sort(entries.begin(), entries.end(), [&items](const Entry& left, const Entry& right) {
    if (left.leading != right.leading) return left.leading < right.leading;
    return items[left.position].key < items[right.position].key;
  });
  std::vector<std::uint32_t> positions;
  positions.reserve(entries.size());
  for (const Entry& entry : entries) positions.push_back(entry.position);
  return positions;
}

}    // namespace zarel
