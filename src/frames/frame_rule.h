#pragma once
// frame_rule.h - rules whose head is frames alone.

#include <span>
#include <string>
#include <vector>

#include "frames/frame_encoding.h"
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

// Adds the clauses of a rule whose head is this one frame, one for each statement of it, each with a
// copy of the body (null: facts).
void add_frame_rule(const FRAME& head, const Body* body, const FrameContext& context,
                    std::vector<CLAUSET>& clauses);

// The same of statements alone.
void add_frame_facts(std::span<const FrameStatement> statements, const FrameContext& context,
                     std::vector<CLAUSET>& clauses);

}    // namespace zarel
