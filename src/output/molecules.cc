#include "output/molecules.h"

namespace zarel {

void Molecules::add_objects_of(const FrameRecords& part) {
  part_.add(part);
  for (const FrameGroups::Object& object : part_.objects()) add_molecule(object);
  part_.clear();
}

void Molecules::add_molecule(const FrameGroups::Object& object) {
  text_ += object.key.substr(0, object.key.find('@'));
  text_ += '[';
  for (Position at = object.first_triple; at != kNone; at = part_.triple(at).next) {
    if (at != object.first_triple) text_ += ',';
    add_triple_text(part_.triple(at));
  }
  text_ += ']';
  text_ += object.key.substr(object.name_size);
  molecules_.push_back({object.key, text_.size()});
}

void Molecules::add_triple_text(const FrameGroups::FRAMETRIPLE& triple) {
  const bool has_several = triple.first_value != triple.last_value;
  text_ += attributes_.text(triple.attribute);
  if (has_several) text_ += '{';
  for (Position at = triple.first_value; at != kNone; at = part_.value(at).next) {
    if (at != triple.first_value) text_ += ',';
    text_ += part_.value(at).text;
  }
  if (has_several) text_ += '}';
}

void Molecules::append_in_key_order(std::string& out) const {
  bool is_first = true;
  for (const Position position : positions_in_key_order(molecules_)) {
    if (!is_first) out += ',';
    const std::size_t begin = position == 0 ? 0 : molecules_[position - 1].end;
    out += std::string_view(text_).substr(begin, molecules_[position].end - begin);
    is_first = false;
  }
}

}    // namespace zarel
