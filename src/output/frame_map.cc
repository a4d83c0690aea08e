#include "output/frame_map.h"

#include "output/molecules.h"

namespace zarel {

void FrameMap::add(const AttributeStatement& statement, bool has_value) {
  constexpr unsigned kHashBits = 32;
  const std::uint32_t hash = hash_text(statement.object) ^ hash_text(statement.suffix);
  parts_[hash >> (kHashBits - kPartBits)].add(
      {statement.object, statement.suffix, statement.value, hash,
       attributes_.number_of(statement.attribute, statement.negated, statement.arrow), has_value});
  is_empty_ = false;
}

void FrameMap::stringMolecules(std::string& out) const {
  if (is_empty_) return;
  Molecules molecules(attributes_);
  for (const FrameRecords& part : parts_) molecules.add_objects_of(part);
  molecules.append_in_key_order(out);
}

void FrameMap::clear() {
  if (is_empty_) return;
  attributes_.clear();
  for (FrameRecords& part : parts_) part.clear();
  is_empty_ = true;
}

}    // namespace zarel
