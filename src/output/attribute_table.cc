#include "output/attribute_table.h"

#include "output/position_index.h"

namespace zarel {

std::string_view AttributeTable::text_of(const Attribute& attribute) const {
  return std::string_view(text_).substr(attribute.begin, attribute.arrow_end - attribute.begin);
}

AttributeTable::Attribute AttributeTable::stored(std::string_view name, bool negated,
                                                 std::string_view arrow) {
  Attribute attribute{};
  attribute.begin = checked_position(text_.size());
  if (negated) text_ += '-';
  attribute.name_end = checked_position(text_.append(name).size());
  attribute.arrow_end = checked_position(text_.append(arrow).size());
  return attribute;
}

std::uint32_t AttributeTable::number_of(std::string_view name, bool negated,
                                        std::string_view arrow) {
  const Attribute attribute = stored(name, negated, arrow);
  const std::string_view text = text_of(attribute);
  const std::uint32_t hash = hash_text(text);
  const std::uint32_t known = index_.find(hash, [&](std::uint32_t number) {
    const Attribute& other = attributes_[number];
    return other.name_end - other.begin == attribute.name_end - attribute.begin &&
           text_of(other) == text;
  });
  if (known != PositionIndex::kNone) {
    text_.resize(attribute.begin);
    return known;
  }
  const std::uint32_t number = checked_position(attributes_.size());
  attributes_.push_back(attribute);
  index_.insert(hash, number);
  return number;
}

AttributeTable::Parts AttributeTable::parts(std::uint32_t number) const {
  const Attribute& attribute = attributes_[number];
  const std::string_view all = text_of(attribute);
  std::string_view name = all.substr(0, attribute.name_end - attribute.begin);
  const bool negated = name.starts_with('-');    // no name begins so by itself
  if (negated) name.remove_prefix(1);
  return {name, negated, all.substr(attribute.name_end - attribute.begin)};
}

void AttributeTable::clear() {
  text_.clear();
  attributes_.clear();
  index_.clear();
}

}    // namespace zarel
