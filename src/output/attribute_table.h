#pragma once
// attribute_table.h - the attributes of one answer set, each with its sign and its arrow.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "output/position_index.h"

namespace zarel {

// Gives the numbers 0, 1, 2, ... to attributes. There are few of them as a rule, so that looking
// one up stays within the cache, and what is gathered by attribute compares numbers.
class AttributeTable {
 public:
  // The number of the attribute, shown with "-" in front when it is negated; the same name, sign
  // and arrow give the same number. Throws std::length_error when all texts exceed 4 GB.
  std::uint32_t number_of(std::string_view name, bool negated, std::string_view arrow);

  // The attribute as it is printed, its arrow behind it; valid until the next number_of.
  std::string_view text(std::uint32_t number) const { return text_of(attributes_[number]); }

  // Its parts, valid as long.
  struct Parts {
    std::string_view name;
    bool negated;
    std::string_view arrow;
  };
  Parts parts(std::uint32_t number) const;

  void clear();

 private:
  struct Attribute {
    std::uint32_t begin, name_end, arrow_end;
  };

  std::string_view text_of(const Attribute& attribute) const;
  Attribute stored(std::string_view name, bool negated, std::string_view arrow);

  std::string text_;
  std::vector<Attribute> attributes_;
  PositionIndex index_;
};

}    // namespace zarel
