#pragma once
// frame_molecules.h - frame atoms of the generic encoding, turned back into frame notation.

#include "output/answer_sink.h"
#include "output/frame_map.h"

namespace zarel {

// A frame atom as the solver printed it; its space ends in the frame marker.
struct FrameAtom {
  const AnswerAtom& atom;
  bool noValue;    // an attribute without a value
};

// Tells the sink of a class or membership statement, and of an atom with another relation; records
// a value in `frameMap`, for the sink to be told of with its object later. Arguments that are
// missing count as empty.
void printToNestedFrameSyntax(const FrameAtom& frame, FrameMap& frameMap, AnswerSink& sink);

}    // namespace zarel
