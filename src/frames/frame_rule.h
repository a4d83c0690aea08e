#pragma once
// frame_rule.h - rules whose head is frames alone.

#include <string>
#include <vector>

#include "frames/frame_translation.h"

namespace zarel {

class FRAME_HEAD {
 public:
  explicit FRAME_HEAD(std::vector<FRAME> frames) : frames_(std::move(frames)) {}
  // One head for each statement of the frames, in order.
  std::vector<Head> standardize(const FrameContext& context) const;

  // Established, and not called by the program: see established.h.
  const std::vector<FRAME>& getFrames() const { return frames_; }
  std::vector<std::string> toStrings() const;

 private:
  std::vector<FRAME> frames_;
};

// The clauses of a rule whose head is this one frame, each with a copy of the body (null: facts).
std::vector<CLAUSET> frame_rule_clauses(const FRAME_HEAD& head, const Body* body,
                                        const FrameContext& context);

}    // namespace zarel
