#include "output/frame_molecules.h"

#include <algorithm>
#include <array>

#include "model/generic_encoding.h"

namespace zarel {
namespace {

using Arguments = std::array<std::string_view, 4>;    // more are ignored

// The end of the argument that begins at this place: the next comma outside parentheses and quotes,
// so that function terms stay whole, or the end of the text.
std::size_t end_of_argument(std::string_view text, std::size_t begin) {
  std::size_t depth = 0;
  for (std::size_t i = begin; i < text.size(); ++i) {
    switch (text[i]) {
      case '"':
        i = std::min(text.find('"', i + 1), text.size());
        break;
      case '(':
        ++depth;
        break;
      case ')':
        --depth;
        break;
      case ',':
        if (depth == 0) return i;
        break;
      default:
        break;
    }
  }
  return text.size();
}

// The first arguments; those that are missing are empty.
Arguments split_arguments(std::string_view text) {
  Arguments pieces;
  std::size_t begin = 0;
  for (std::string_view& piece : pieces) {
    if (begin > text.size()) break;
    const std::size_t end = end_of_argument(text, begin);
    piece = text.substr(begin, end - begin);
    begin = end + 1;
  }
  return pieces;
}

// Unlike plain atoms, frames never show the default space, whatever the settings say.
std::string suffix_of(std::string_view space) {
  space.remove_suffix(kFrameMarker.size());
  if (space == kDefaultSpace) return {};
  std::string suffix = "@";
  suffix += space;
  return suffix;
}

std::string_view without_quotes(std::string_view arrow) {
  return arrow.size() < 2 ? std::string_view() : arrow.substr(1, arrow.size() - 2);
}

}    // namespace

void printToNestedFrameSyntax(const FrameAtom& atom, FrameMap& frameMap, std::string& out) {
  const std::string suffix = suffix_of(atom.space);
  const auto [object, second, value, arrow] = split_arguments(atom.arguments);
  if (atom.relation == kSubClassOf || atom.relation == kInstanceOf) {
    out.append(object).append(atom.relation == kSubClassOf ? "::" : ":");
    out.append(second).append(suffix);
  } else if (atom.noValue) {
    frameMap.add_valueless({object, suffix, second, atom.negativeAtom, {}, {}});
  } else if (atom.relation == kValueOf) {
    frameMap.add_value({object, suffix, second, atom.negativeAtom, without_quotes(arrow), value});
  }
}

}    // namespace zarel
