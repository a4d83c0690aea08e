#include "frames/frame_rule.h"

#include "frames/frame_source.h"

namespace zarel {

std::vector<Head> FRAME_HEAD::standardize(const FrameContext& context) const {
  std::vector<Head> heads;
  for (const FRAME& frame : frames_) {
    for (const Literal& literal : toLiterals(frame, context))
      heads.emplace_back().add(literal.atom);
  }
  return heads;
}

std::vector<CLAUSET> frame_rule_clauses(const FRAME_HEAD& head, const Body* body,
                                        const FrameContext& context) {
  std::vector<CLAUSET> clauses;
  for (const Head& statement : head.standardize(context)) {
    clauses.emplace_back(rule_of(&statement, body), frame_source());
  }
  return clauses;
}

}    // namespace zarel
