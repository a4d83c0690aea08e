#pragma once
// frame_map.h - the attribute values of one answer set, gathered for each object.

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "output/position_index.h"

namespace zarel {

// One statement about an object.
struct AttributeStatement {
  std::string_view object;
  std::string_view suffix;    // of its frame space: "@" and a name, or nothing
  std::string_view attribute;
  bool negated = false;      // the attribute is shown with "-" in front
  std::string_view arrow;    // without quotes; nothing when there is no value
  std::string_view value;
};

// Note [frame storage]
// A frame atom has about fifty bytes of text, so a map of strings would take several times the
// answer set. All texts stand in one buffer, an attribute in front of its arrow as both are
// printed; everything else is 32-bit positions. An attribute's values, and an object's attributes,
// are chained in order of arrival. The frame space of an attribute is its object's: objects of the
// same name in two frame spaces have two keys.
class FrameMap {
 public:
  // Appends the value to the object's first attribute of this name, sign and arrow, making it when
  // there is none. Throws std::length_error when the texts of one answer set exceed 4 GB.
  void add_value(const AttributeStatement& statement);

  // Appends an attribute with an empty value to the object, even when there is an equal one.
  // Throws like add_value.
  void add_valueless(const AttributeStatement& statement);

  // Appends all objects to `out`, as o[a->v,b->{w,x}]@space, in the byte-wise order of object and
  // suffix.
  void stringMolecules(std::string& out) const;

  void clear();

 private:
  using Position = std::uint32_t;
  static constexpr Position kNone = PositionIndex::kNone;

  struct Range {
    Position begin, end;
  };
  struct Value {
    Range text;
    Position next = kNone;
  };
  struct FRAMETRIPLE {
    Range attribute;    // the arrow stands behind it
    Position arrow_end;
    Position object;
    Position first_value, last_value;
    Position next = kNone;    // in the object
  };
  struct Object {
    Range name;    // the suffix stands behind it; both are the key
    Position key_end;
    Position first_triple = kNone, last_triple = kNone;
  };

  Range store(std::string_view text);
  std::string_view text_of(Position begin, Position end) const;
  std::string_view key_of(const Object& object) const;
  Position find_or_add_object(const AttributeStatement& statement);
  FRAMETRIPLE stored_triple(const AttributeStatement& statement);
  std::uint32_t hash_of(const FRAMETRIPLE& triple) const;
  Position find_equal(const FRAMETRIPLE& triple, std::uint32_t hash) const;
  void append_triple(FRAMETRIPLE triple, std::string_view value);
  Position add_stored_value(std::string_view value);
  std::vector<Position> objects_in_key_order() const;
  void append_object(std::string& out, const Object& object) const;
  void append_triple_text(std::string& out, const FRAMETRIPLE& triple) const;

  std::string text_;
  std::deque<Object> objects_;    // deques: no copy of everything when they grow
  std::deque<FRAMETRIPLE> triples_;
  std::deque<Value> values_;
  PositionIndex object_index_;    // by key
  PositionIndex triple_index_;    // by object, attribute and arrow; the first of equal ones
};

}    // namespace zarel
