#pragma once
// invocation_builder.h - what the grammar's actions on template invocations call.

#include <optional>

#include "parser/atom_builder.h"
#include "parser/frame_spaces.h"
#include "parser/list_stack.h"
#include "parser/template_builder.h"
#include "parser/term_builder.h"

namespace zarel {

using ActualsMark = ListStack<ATOMT>::Mark;

class InvocationBuilder {
 public:
  InvocationBuilder(TermBuilder& terms, const AtomBuilder& atoms, const FrameSpaces& spaces,
                    const TemplateBuilder& definition, WrittenTree& tree)
      : terms_(terms), atoms_(atoms), spaces_(spaces), definition_(definition), tree_(tree) {}

  // Actual predicates, and lists of them while they are read.
  ATOMT actual(WrittenName name, Negation negation = Negation::kNone);
  ATOMT actual(WrittenName name, TermsMark parameters, Negation negation = Negation::kNone);
  ListStack<ATOMT>& actuals() { return actuals_; }

  // The marker atom of the invocation, which is scheduled and recorded unless it stands in a
  // template body.
  ATOMT marker(NameId name, ActualsMark actuals, TermsMark output_terms);

  // Where the first one since clear() stands; nothing without one.
  const std::optional<SourceRange>& first() const { return first_; }
  void clear();

 private:
  ATOMT told(WrittenName name, std::span<const TERMT> parameters, Negation negation);

  TermBuilder& terms_;
  const AtomBuilder& atoms_;
  const FrameSpaces& spaces_;
  const TemplateBuilder& definition_;
  WrittenTree& tree_;
  ListStack<ATOMT> actuals_;
  std::optional<SourceRange> first_;
};

inline void InvocationBuilder::clear() {
  actuals_.clear();
  first_.reset();
}

}    // namespace zarel
