#include "output/frame_molecules.h"

#include <array>

#include "model/generic_encoding.h"

namespace zarel {
namespace {

constexpr std::size_t kMostArguments = 4;
using Arguments = std::array<std::string_view, kMostArguments>;

// The first arguments, split at the commas outside parentheses and quotes: function terms stay
// whole.
Arguments split_arguments(std::string_view text) {
  Arguments pieces;
  std::size_t count = 0;
  std::size_t begin = 0;
  std::size_t depth = 0;
  bool is_quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '"') is_quoted = !is_quoted;
    if (is_quoted) continue;
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ',' || depth != 0) continue;
    pieces[count++] = text.substr(begin, i - begin);
    begin = i + 1;
    if (count == kMostArguments) return pieces;
  }
  pieces[count] = text.substr(begin);
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
