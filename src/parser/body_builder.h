#pragma once
// body_builder.h - what the grammar's actions on bodies call.

#include <cstddef>
#include <deque>

#include "frames/frame.h"
#include "model/clause.h"
#include "parser/template_builder.h"
#include "parser/written_tree.h"

namespace zarel {

// Bodies are valid until clear().
class BodyBuilder {
 public:
  // What frames become depends on whether a template is open.
  BodyBuilder(const TemplateBuilder& definition, WrittenTree& tree)
      : definition_(definition), tree_(tree) {}

  Body* empty();
  Body* first_literal(const Literal& literal) { return next_literal(first(), literal); }
  Body* next_literal(Body* body, const Literal& literal);
  Body* first_frame(const FRAME& frame) { return next_frame(first(), frame); }
  Body* next_frame(Body* body, const FRAME& frame);

  void clear() { in_use_ = 0; }

 private:
  Body* first();    // the empty body of a conjunction that is read

  const TemplateBuilder& definition_;
  WrittenTree& tree_;
  std::deque<Body> bodies_;    // reused from statement to statement
  std::size_t in_use_ = 0;
};

}    // namespace zarel
