#include "parser/body_builder.h"

#include "frames/frame_translation.h"

namespace zarel {

Body* BodyBuilder::empty() {
  if (in_use_ == bodies_.size()) bodies_.emplace_back();
  Body& body = bodies_[in_use_++];
  body.clear();
  return &body;
}

Body* BodyBuilder::next_literal(Body* body, const Literal& literal) {
  body->add(literal);
  return body;
}

Body* BodyBuilder::next_frame(Body* body, const FRAME& frame) {
  const FrameContext context = definition_.frame_context();
  for (const Literal& literal : standardize(frame, FramePosition::kBody, context))
    body->add(literal);
  return body;
}

}    // namespace zarel
