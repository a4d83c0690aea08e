#pragma once
// frame_rule.h - rules whose head and body are frames alone.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "frames/frame_translation.h"

namespace zarel {

class FRAME_HEAD {
 public:
  explicit FRAME_HEAD(std::vector<FRAME> frames) : frames_(std::move(frames)) {}
  const std::vector<FRAME>& getFrames() const { return frames_; }
  std::vector<std::string> toStrings() const;
  // One head for each statement of the frames, in order.
  std::vector<Head> standardize(const FrameContext& context) const;

 private:
  std::vector<FRAME> frames_;
};

class FRAME_BODY {
 public:
  explicit FRAME_BODY(std::vector<FRAME> frames) : frames_(std::move(frames)) {}
  const std::vector<FRAME>& getFrames() const { return frames_; }
  std::string toString() const;
  // The statements of all frames; the frames' own "not" is not looked at.
  Body standardize(const FrameContext& context) const;

 private:
  std::vector<FRAME> frames_;
};

class FRAME_RULE {
 public:
  explicit FRAME_RULE(FRAME_HEAD head) : head_(std::move(head)) {}
  explicit FRAME_RULE(FRAME_BODY body) : body_(std::move(body)) {}
  FRAME_RULE(FRAME_HEAD head, FRAME_BODY body) : head_(std::move(head)), body_(std::move(body)) {}

  bool isStandardRule() const { return head_ && body_; }
  bool isFact() const { return head_ && !body_; }
  bool isConstraint() const { return !head_ && body_; }
  const std::optional<FRAME_HEAD>& getHead() const { return head_; }
  const std::optional<FRAME_BODY>& getBody() const { return body_; }

  // One line for each statement of the head.
  void print(std::ostream& out) const;

  // One clause for each statement of the head, each with a copy of the body; one constraint without
  // a head.
  std::vector<CLAUSET> standardize(const FrameContext& context) const;

 private:
  std::optional<FRAME_HEAD> head_;
  std::optional<FRAME_BODY> body_;
};

// The clauses of a rule whose head is this one frame, each with a copy of the body (null: facts).
std::vector<CLAUSET> frame_rule_clauses(const FRAME_HEAD& head, const Body* body,
                                        const FrameContext& context);

}    // namespace zarel
