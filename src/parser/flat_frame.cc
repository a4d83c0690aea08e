#include "parser/flat_frame.h"

#include <array>

#include "base/characters.h"
#include "parser/flat_words.h"
#include "parser/scanner_actions.h"

namespace zarel {
namespace {

struct SpelledArrow {
  std::string_view spelling;
  ARROW arrow;
};

// The longer of two that begin alike first.
constexpr std::array kArrows = std::to_array<SpelledArrow>({
    {"->>", ARROW::kSet},
    {"->", ARROW::kSingle},
    {"=>>", ARROW::kSetSignature},
    {"=>", ARROW::kSignature},
    {"*->>", ARROW::kInheritableSet},
    {"*->", ARROW::kInheritable},
    {"!=>", ARROW::kNegatedSignature},
});

// The length of the name, which is no variable's, that the text begins with.
std::size_t length_of_constant(std::string_view text) {
  return !text.empty() && is_upper_case(text[0]) ? 0 : length_of_name(text);
}

}    // namespace

void FlatFrame::add(FlatFramePart::Kind kind, std::size_t length, ARROW arrow,
                    std::uint32_t value) {
  parts_.push_back({kind, arrow, static_cast<std::uint32_t>(position_),
                    static_cast<std::uint32_t>(length), value});
  position_ += length;
}

bool FlatFrame::take(char character) {
  const bool is_there = has_at(text_, position_, character);
  if (is_there) ++position_;
  return is_there;
}

void FlatFrame::pass_blank() {
  static_cast<void>(take(' '));
}

ARROW FlatFrame::take_arrow() {
  for (const auto& [spelling, arrow] : kArrows) {
    if (!text_.substr(position_).starts_with(spelling)) continue;
    position_ += spelling.size();
    return arrow;
  }
  return ARROW::kNone;
}

FlatFrame::Next FlatFrame::open_object(std::size_t name_length) {
  add(FlatFramePart::Kind::kObject, name_length);
  ++position_;    // the bracket
  is_in_braces_.push_back(0);
  return Next::kAttribute;
}

FlatFrame::Next FlatFrame::read_attribute() {
  pass_blank();
  const std::size_t length = length_of_constant(text_.substr(position_));
  if (length == 0) return Next::kNothing;
  add(FlatFramePart::Kind::kAttribute, length);
  pass_blank();
  const ARROW arrow = take_arrow();
  if (arrow == ARROW::kNone) return Next::kBehindAttribute;
  parts_.back().arrow = arrow;
  pass_blank();
  is_in_braces_.back() = take('{') ? 1 : 0;
  return Next::kValue;
}

FlatFrame::Next FlatFrame::read_value() {
  pass_blank();
  const std::string_view rest = text_.substr(position_);
  if (const auto [length, value] = flat_integer(rest); length != 0) {
    add(FlatFramePart::Kind::kInteger, length, ARROW::kNone, value);
    return Next::kBehindValue;
  }
  const std::size_t length = length_of_constant(rest);
  if (length == 0) return Next::kNothing;
  if (has_at(rest, length, '[')) return open_object(length);
  add(FlatFramePart::Kind::kName, length);
  return Next::kBehindValue;
}

FlatFrame::Next FlatFrame::read_behind_value() {
  if (is_in_braces_.back() == 0) return Next::kBehindAttribute;
  pass_blank();
  if (take(',')) return Next::kValue;
  return take('}') ? Next::kBehindAttribute : Next::kNothing;
}

FlatFrame::Next FlatFrame::read_behind_attribute() {
  pass_blank();
  if (take(',')) return Next::kAttribute;
  if (!has_at(text_, position_, ']')) return Next::kNothing;
  add(FlatFramePart::Kind::kObjectEnd, 1);
  is_in_braces_.pop_back();
  return is_in_braces_.empty() ? Next::kNothing : Next::kBehindValue;
}

std::size_t FlatFrame::read(std::string_view text, std::size_t word_length) {
  if (!has_at(text, word_length, '[') || length_of_name(text) != word_length) return 0;
  text_ = text;
  position_ = 0;
  parts_.clear();
  is_in_braces_.clear();
  Next next = open_object(word_length);
  while (next != Next::kNothing) {
    switch (next) {
      case Next::kAttribute:
        next = read_attribute();
        break;
      case Next::kValue:
        next = read_value();
        break;
      case Next::kBehindValue:
        next = read_behind_value();
        break;
      case Next::kBehindAttribute:
        next = read_behind_attribute();
        break;
      case Next::kNothing:
        break;
    }
  }
  return is_in_braces_.empty() ? position_ : 0;
}

}    // namespace zarel
