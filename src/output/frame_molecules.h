#pragma once
// frame_molecules.h - frame atoms of the generic encoding, turned back into frame notation.

#include <string>
#include <string_view>

#include "output/frame_map.h"

namespace zarel {

// A frame atom as the solver printed it.
struct FrameAtom {
  std::string_view relation;
  std::string_view arguments;    // comma-separated, without blanks
  std::string_view space;        // ends in the frame marker
  bool negativeAtom = false;
  bool noValue = false;    // an attribute without a value
};

// Appends a class or membership statement to `out`, as o::d or o:d with its frame space; records a
// value in `frameMap`, which prints it with its object later, and appends nothing; does neither for
// another relation. The frame space "default" is never shown. Arguments that are missing count as
// empty.
void printToNestedFrameSyntax(const FrameAtom& atom, FrameMap& frameMap, std::string& out);

}    // namespace zarel
