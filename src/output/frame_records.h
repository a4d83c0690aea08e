#pragma once
// frame_records.h - statements about objects, written down one behind the other.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace zarel {

// A statement about an object: that it has an attribute, and mostly a value of it.
struct FrameRecord {
  std::string_view name;      // of the object
  std::string_view suffix;    // of its frame space: "@" and a name, or nothing
  std::string_view value;
  std::uint32_t hash;         // of name and suffix, which together tell objects apart
  std::uint32_t attribute;    // its number
  bool has_value;
};

// Records in one buffer, some thirty bytes each, read again from the first to the last.
class FrameRecords {
 public:
  // Appends a copy. Throws std::length_error when all together exceed 4 GB.
  void add(const FrameRecord& record);

  // Calls visit(record) for each. Its name and suffix stand side by side, and its texts are valid
  // until the next add.
  template <typename Visit>
  void for_each(Visit visit) const;

  void clear() { bytes_.clear(); }

 private:
  // What stands in front of a record's texts.
  struct Head {
    std::uint32_t hash, attribute, name_size, suffix_size, value_size;
  };
  static constexpr std::uint32_t kNoValue = UINT32_MAX;    // in place of its size

  std::string bytes_;
};

template <typename Visit>
void FrameRecords::for_each(Visit visit) const {
  const char* at = bytes_.data();
  const char* const end = at + bytes_.size();
  while (at != end) {
    Head head;
    std::memcpy(&head, at, sizeof head);
    const char* const suffix = at + sizeof head + head.name_size;
    const char* const value = suffix + head.suffix_size;
    const bool has_value = head.value_size != kNoValue;
    const std::size_t value_size = has_value ? head.value_size : 0;
    visit(FrameRecord{{at + sizeof head, head.name_size},
                      {suffix, head.suffix_size},
                      {value, value_size},
                      head.hash,
                      head.attribute,
                      has_value});
    at = value + value_size;
  }
}

}    // namespace zarel
