#pragma once
// established.h - frame rules as values and the text forms of frames, kept for those who know the
// system by these names. The program does not call them, nor the members of FRAME, ATTRIBUTE and
// FRAME_HEAD that stand apart in their classes: text forms, which give each statement as
// name(subject,value), in order, those of nested frames behind the one that nests them; and changes
// in place, by which a list of many takes long to build.

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "frames/frame_rule.h"

namespace zarel {

// The text of a statement: "not " when negated, name(subject,value) or name(subject).
std::string relation(bool is_negated, std::string_view subject, std::string_view name,
                     std::string_view value);
std::string relation(bool is_negated, std::string_view subject, std::string_view name);

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

}    // namespace zarel
