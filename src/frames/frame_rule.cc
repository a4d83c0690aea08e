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

void add_frame_rule(const FRAME& head, const Body* body, const FrameContext& context,
                    std::vector<CLAUSET>& clauses) {
  const ClauseSource source = frame_source();
  for (const Literal& literal : toLiterals(head, context)) {
    clauses.emplace_back(CLAUSET::rule_payload({&literal.atom, 1}, body), source);
  }
}

void add_frame_facts(std::span<const FrameStatement> statements, const FrameContext& context,
                     std::vector<CLAUSET>& clauses) {
  const ClauseSource source = frame_source();
  for (const FrameStatement& statement : statements) {
    clauses.emplace_back(Fact(encoded(statement, context).atom), source);
  }
}

}    // namespace zarel
