#pragma once
// frames_fixture.h - frames made in a line, with tables as a run starts with them.

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "frames/frame.h"
#include "model/printer.h"
#include "support/fresh_run.h"

namespace zarel {

class FramesTest : public testing::Test {
 protected:
  static NameId space() { return names().intern("f"); }
  static FrameTerm term(std::string_view text) { return frame_term(names().intern(text)); }
  static FRAME frame(std::string_view subject, const std::vector<ATTRIBUTE>& attributes = {}) {
    return {term(subject), attributes, false, space()};
  }
  // A name with "not " in front makes a negated attribute.
  static ATTRIBUTE says(std::string_view name, ARROW arrow = ARROW::kNone,
                        const std::vector<FRAME>& values = {}) {
    const bool is_negated = name.starts_with("not ");
    ATTRIBUTE made = attribute(is_negated, term(name.substr(is_negated ? 4 : 0)), arrow);
    for (const FRAME& value : values) made.addValue(value);
    return made;
  }
  static std::string text(const std::vector<Literal>& literals) {
    Text out;
    append_list(out, literals, "; ");
    return out.str();
  }

  FreshRun run_;
};

}    // namespace zarel
