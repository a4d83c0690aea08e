#include "parser/body_builder.h"

#include "frames/frame_translation.h"

namespace zarel {

Body* BodyBuilder::empty() {
  if (in_use_ == bodies_.size()) bodies_.emplace_back();
  Body& body = bodies_[in_use_++];
  body.clear();
  return &body;
}

Body* BodyBuilder::first() {
  if (tree_.is_open()) tree_.begin_body();
  return empty();
}

Body* BodyBuilder::next_literal(Body* body, const Literal& literal) {
  if (tree_.is_open()) tree_.body_element();
  body->add(literal);
  return body;
}

Body* BodyBuilder::next_frame(Body* body, const FRAME& frame) {
  if (tree_.is_open()) tree_.body_element();
  const FrameContext context = definition_.frame_context();
  for (const Literal& literal : standardize(frame, FramePosition::kBody, context))
    body->add(literal);
  return body;
}

}    // namespace zarel
