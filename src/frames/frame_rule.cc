#include "frames/frame_rule.h"

#include "frames/frame_source.h"

namespace zarel {

std::vector<std::string> FRAME_HEAD::toStrings() const {
  std::vector<std::string> strings;
  for (const FRAME& frame : frames_) frame.toStrings(strings);
  return strings;
}

std::vector<Head> FRAME_HEAD::standardize(const FrameContext& context) const {
  std::vector<Head> heads;
  for (const FRAME& frame : frames_) {
    for (const Literal& literal : toLiterals(frame, context))
      heads.emplace_back().add(literal.atom);
  }
  return heads;
}

std::string FRAME_BODY::toString() const {
  std::vector<std::string> strings;
  for (const FRAME& frame : frames_) frame.toStrings(strings);
  std::string text;
  for (const std::string& string : strings) text.append(text.empty() ? "" : ", ").append(string);
  return text;
}

Body FRAME_BODY::standardize(const FrameContext& context) const {
  Body body;
  for (const FRAME& frame : frames_) {
    for (const Literal& literal : toLiterals(frame, context)) body.add(literal);
  }
  return body;
}

void FRAME_RULE::print(std::ostream& out) const {
  const std::string body = body_ ? ":- " + body_->toString() : "";
  if (isConstraint()) out << body << ".\n";
  if (!head_) return;
  for (const std::string& statement : head_->toStrings()) {
    out << statement << (body_ ? " " : "") << body << ".\n";
  }
}

std::vector<CLAUSET> FRAME_RULE::standardize(const FrameContext& context) const {
  std::optional<Body> body;
  if (head_ && !body_) return frame_rule_clauses(*head_, nullptr, context);
  if (body_) body = body_->standardize(context);
  if (head_) return frame_rule_clauses(*head_, &*body, context);
  std::vector<CLAUSET> clauses;
  if (body) clauses.emplace_back(Constraint(*body), frame_source());
  return clauses;
}

std::vector<CLAUSET> frame_rule_clauses(const FRAME_HEAD& head, const Body* body,
                                        const FrameContext& context) {
  std::vector<CLAUSET> clauses;
  for (const Head& statement : head.standardize(context)) {
    Rule rule;
    rule.init(&statement, body);
    clauses.emplace_back(std::move(rule), frame_source());
  }
  return clauses;
}

}    // namespace zarel
