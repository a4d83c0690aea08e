#pragma once
// frame_walk.h - one way through a frame for all that is done with it.

#include <vector>

#include "frames/frame.h"

namespace zarel {

// Note [frames of any depth]
// Frames nest as deep as the input says, deeper than the call stack stands. So everything that goes
// through one goes by this walk, which keeps its place in a list of its own: an attribute is
// entered, then each value in turn, a value's own attributes right behind it, and the attribute is
// left behind the last of them.
//
// The visitor has: void enter_attribute(const FRAME&, const ATTRIBUTE&), void value(const FRAME&,
// const ATTRIBUTE&, const FRAME& value), void leave_attribute(const FRAME&, const ATTRIBUTE&).
template <class Visitor>
void walk_frame(const FRAME& frame, Visitor& visitor) {
  struct Step {
    const FRAME* frame;
    std::size_t attribute;
    std::size_t value;
  };
  std::vector<Step> open{{&frame, 0, 0}};
  while (!open.empty()) {
    Step& place = open.back();
    const FRAME& owner = *place.frame;
    if (place.attribute == owner.getAttributes().size()) {
      open.pop_back();
      continue;
    }
    const ATTRIBUTE& attribute = owner.getAttributes()[place.attribute];
    if (place.value == 0) visitor.enter_attribute(owner, attribute);
    if (place.value == attribute.getValues().size()) {
      visitor.leave_attribute(owner, attribute);
      ++place.attribute;
      place.value = 0;
      continue;
    }
    const FRAME& value = attribute.getValues()[place.value++];
    visitor.value(owner, attribute, value);
    if (!value.isSimple()) open.push_back({&value, 0, 0});
  }
}

// A visitor that does nothing, for others to take over what they need.
struct NoVisit {
  void enter_attribute(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/) {}
  void value(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/, const FRAME& /*value*/) {}
  void leave_attribute(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/) {}
};

}    // namespace zarel
