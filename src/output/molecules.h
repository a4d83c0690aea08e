#pragma once
// molecules.h - statements about objects, grouped and printed.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "output/attribute_table.h"
#include "output/frame_groups.h"

namespace zarel {

// Groups the statements of one part after another, and keeps of each only the texts of its objects
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
  using Position = FrameGroups::Position;
  static constexpr Position kNone = FrameGroups::kNone;

  struct Molecule {
    std::string_view key;
    std::size_t end;    // of its text, which begins where that of the one before ends
  };

  void add_molecule(const FrameGroups::Object& object);
  void add_triple_text(const FrameGroups::FRAMETRIPLE& triple);

  const AttributeTable& attributes_;
  FrameGroups part_;    // the tables of one part, used again for the next

  // Of all parts.
  std::string text_;
  std::vector<Molecule> molecules_;
};

}    // namespace zarel
