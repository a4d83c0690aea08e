#include "parser/frame_builder.h"

#include <string>

#include "functions/function_terms.h"
#include "model/printer.h"
#include "model/report.h"

namespace zarel {
namespace {

// Only a frame gets here with "-" in front: a value without attributes has none.
bool is_negated_frame(const FRAME& value) {
  return value.subject().is_negated();
}

ATTRIBUTE saying(const ATTRIBUTE& label, ARROW arrow, StoredList<FRAME> values) {
  return {label.is_negated, arrow, label.name, values};
}

FRAME frame_of(const FrameTerm& object, const ATTRIBUTE& attribute) {
  return {object, std::span<const ATTRIBUTE>(&attribute, 1), false, NameId{}};
}

}    // namespace

FrameTerm FrameBuilder::term(const TERMT& term) {
  Text text;
  append_text(text, term);
  const NameId name = names().intern(text.view());
  return term.is_variable() ? frame_term(name, {&term, 1}) : FrameTerm{name, {}};
}

FrameTerm FrameBuilder::function(const TERMT& placeholder) {
  std::vector<TERMT> variables;
  variablesInFunctionTerm(variables, placeholder);
  return frame_term(names().intern(fromFunctionToString(placeholder)), variables);
}

ATTRIBUTE FrameBuilder::with_value(const ATTRIBUTE& label, ARROW arrow, const FRAME& value) {
  if (is_negated_frame(value)) {
    report(Code::kNegatedValue, "You cannot have a negated frame for the value of an attribute");
  }
  return saying(label, arrow, program_storage().store(std::span<const FRAME>(&value, 1)));
}

ATTRIBUTE FrameBuilder::with_values(const ATTRIBUTE& label, ARROW arrow, ValuesMark values) {
  const StoredList<FRAME> list = program_storage().store(values_.take(values));
  for (const FRAME& value : list.elements()) {
    if (is_negated_frame(value))
      report(Code::kNegatedValue, "You cannot a negated frame for the value of an attribute");
  }
  return saying(label, arrow, list);
}

FRAME FrameBuilder::nested(const FrameTerm& object, AttributesMark attributes) {
  return {object, attributes_.take(attributes), false, NameId{}};
}

FRAME FrameBuilder::molecule(const FrameTerm& object, AttributesMark attributes) {
  return checked(nested(object, attributes));
}

FRAME FrameBuilder::membership(const Membership& membership) {
  return frame_of(membership.object, attribute(false, membership.class_term, ARROW::kInstance));
}

FRAME FrameBuilder::membership(const Membership& membership, AttributesMark class_attributes) {
  const auto& [object, class_term] = membership;
  const FRAME class_frame = nested(class_term, class_attributes);
  const StoredList<FRAME> values = program_storage().store(std::span<const FRAME>(&class_frame, 1));
  return checked(frame_of(object, {false, ARROW::kInstance, class_term, values}));
}

FRAME FrameBuilder::subclass(const FrameTerm& object, const FrameTerm& class_term) {
  return frame_of(object, attribute(false, class_term, ARROW::kSubclass));
}

FRAME FrameBuilder::negated(FRAME frame) {
  frame.set_negated(true);
  return frame;
}

FRAME FrameBuilder::in_space(FRAME molecule, NameId frame_space) {
  const std::string_view space = names().spelling(frame_space);
  if (space.starts_with('"')) {
    std::string message = "the frame space of a frame must be a name without quotes, not ";
    report(Code::kQuotedFrameSpace, message.append(space));
  }
  molecule.set_framespace(frame_space);
  return molecule;
}

FRAME FrameBuilder::checked(const FRAME& frame) {
  if (frame.subject().is_negated() && frame.has_true_negation()) {
    report(Code::kNestedNegation, "You cannot have a nested true negation in frame definition");
  }
  return frame;
}

}    // namespace zarel
