#pragma once
// flat_frame.h - facts of one frame that are read as one token. See Note [flat facts].

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "frames/frame.h"

namespace zarel {

// A piece of a flat frame, from left to right: an object, its attributes, each followed by its
// values, and the object's end. A value is a name, an integer or an object again.
struct FlatFramePart {
  enum class Kind : std::uint8_t { kObject, kAttribute, kName, kInteger, kObjectEnd };

  Kind kind;
  ARROW arrow;            // of an attribute
  std::uint32_t begin;    // in the text
  std::uint32_t length;
  std::uint32_t value;    // of an integer
};

// The flat frame that was read last: name[name->value,...], without variables, "-", "not", function
// terms and qualified constants.
class FlatFrame {
 public:
  // Reads the one that begins with the first `word_length` characters of the text. Its length; 0
  // without one.
  std::size_t read(std::string_view text, std::size_t word_length);

  std::span<const FlatFramePart> parts() const { return parts_; }
  std::string_view text(const FlatFramePart& part) const {
    return text_.substr(part.begin, part.length);
  }

 private:
  enum class Next { kAttribute, kValue, kBehindValue, kBehindAttribute, kNothing };

  void add(FlatFramePart::Kind kind, std::size_t length, ARROW arrow = ARROW::kNone,
           std::uint32_t value = 0);
  bool take(char character);
  void pass_blank();
  ARROW take_arrow();
  Next open_object(std::size_t name_length);
  Next read_attribute();
  Next read_value();
  Next read_behind_value();
  Next read_behind_attribute();

  std::string_view text_;
  std::size_t position_ = 0;
  std::vector<FlatFramePart> parts_;
  std::vector<char> is_in_braces_;    // for each open object, whether the values it is at are
};

}    // namespace zarel
