#pragma once
// molecules.h - statements about objects, grouped and printed.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "output/attribute_table.h"
#include "output/frame_records.h"
#include "output/position_index.h"

namespace zarel {

// Groups the statements of one part after another and keeps of each only the texts of its objects
// (see Note [frames in parts]).
class Molecules {
 public:
  // Attributes are those that the records' numbers mean; they outlive this.
  explicit Molecules(const AttributeTable& attributes) : attributes_(attributes) {}

  // Adds the objects of the records, which have to outlive this; no object is in two parts.
  void add_objects_of(const FrameRecords& part);

  // Appends all objects to `out`, in the byte-wise order of name and suffix, a comma between two.
  void append_in_key_order(std::string& out) const;

 private:
  using Position = std::uint32_t;
  static constexpr Position kNone = PositionIndex::kNone;

  // An attribute's values, and an object's attributes, are chained in order of arrival.
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
    std::string_view key;
    std::size_t name_size;    // of the key; the suffix is the rest
    std::uint32_t hash;
    Position first_triple = kNone, last_triple = kNone;
  };
  struct Molecule {
    std::string_view key;
    std::size_t end;    // of its text, which begins where that of the one before ends
  };

  void add(const FrameRecord& record);
  Position find_or_add_object(const FrameRecord& record);
  void append_triple(Position object, const FrameRecord& record);
  void add_molecule(const Object& object);
  void add_triple_text(const FRAMETRIPLE& triple);
  std::vector<Position> positions_in_key_order() const;

  const AttributeTable& attributes_;

  // Of one part.
  std::vector<Object> objects_;
  std::vector<FRAMETRIPLE> triples_;
  std::vector<Value> values_;
  PositionIndex object_index_;    // by key
  PositionIndex triple_index_;    // by object and attribute; the first of equal ones

  // Of all parts.
  std::string text_;
  std::vector<Molecule> molecules_;
};

}    // namespace zarel
