#pragma once
// frame_map.h - the attribute values of one answer set, gathered for each object.

#include <array>
#include <string>
#include <string_view>

#include "output/answer_sink.h"
#include "output/attribute_table.h"
#include "output/frame_records.h"

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

// Note [frames in parts]
// The atoms of a large answer set come in any order of their objects. Adding each to its object at
// once would go to cold memory several times for each atom, in tables of a hundred megabytes. So
// atoms are only written down, those of one object in the same one of many parts; for printing,
// each part is grouped by itself, in tables that are small enough for the cache and used again for
// the next one.
class FrameMap {
 public:
  // The name spaces, null for none, are those of qualified constants, and outlive this.
  explicit FrameMap(const NamespaceTable* namespaces = nullptr) : namespaces_(namespaces) {}

  bool is_empty() const { return is_empty_; }

  // Appends the value to the object's first attribute of this name, sign and arrow, making it when
  // there is none. Throws std::length_error when the texts of one answer set exceed 4 GB.
  void add_value(const AttributeStatement& statement) { add(statement, true); }

  // Appends an attribute with an empty value to the object, even when there is an equal one.
  // Throws like add_value.
  void add_valueless(const AttributeStatement& statement) { add(statement, false); }

  // Appends all objects to `out`, as o[a->v,b->{w,x}]@space, in the byte-wise order of object and
  // suffix.
  void stringMolecules(std::string& out) const;

  // Tells the sink of all objects in that order.
  void report_objects(AnswerSink& sink) const;

  void clear();

 private:
  static constexpr unsigned kPartBits = 7;    // a million atoms have 250 KB in each part

  void add(const AttributeStatement& statement, bool has_value);

  const NamespaceTable* namespaces_;
  AttributeTable attributes_;
  std::array<FrameRecords, 1U << kPartBits> parts_;    // by the first bits of the object's hash
  bool is_empty_ = true;
};

}    // namespace zarel
