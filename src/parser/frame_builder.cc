#include "parser/frame_builder.h"

#include <algorithm>
#include <string>
#include <tuple>

#include "base/characters.h"
#include "functions/function_terms.h"
#include "model/printer.h"
#include "parser/reading_scope.h"
#include "parser/text_range.h"

namespace zarel {
namespace {

// Only a frame gets here with "-" in front: a value without attributes has none.
bool is_negated_frame(const FRAME& value) {
  return value.subject().is_negated();
}

ATTRIBUTE saying(const ATTRIBUTE& label, ARROW arrow, StoredList<FRAME> values) {
  return {label.is_negated, arrow, label.name, values};
}

bool begins_before(const SourceRange& a, const SourceRange& b) {
  return std::tie(a.first_line, a.first_column) < std::tie(b.first_line, b.first_column);
}

}    // namespace

template <class T>
StoredList<T> FrameBuilder::stored(std::span<const T> elements) {
  has_lists_ = true;
  return lists_.store(elements);
}

FrameTerm FrameBuilder::name(NameId name) {
  if (tree_.is_open()) {
    const bool is_variable = is_upper_case(names().spelling(name)[0]);
    tree_.leaf(is_variable ? WrittenKind::kVariable : WrittenKind::kConstant, name);
  }
  return frame_term(name);
}

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

FrameTerm FrameBuilder::negated(const FrameTerm& term) {
  if (tree_.is_open()) tree_.negate_strongly();
  note(negations_);
  return zarel::negated(term);
}

ATTRIBUTE FrameBuilder::negated_label(const FrameTerm& name) {
  note(negated_labels_);
  return attribute(true, name);
}

void FrameBuilder::tell_attribute(const ATTRIBUTE& label, std::size_t values, ARROW arrow) {
  WrittenNode& node = tree_.node(WrittenKind::kAttribute, values + 1,
                                 static_cast<std::uint32_t>(static_cast<int>(arrow) + 1));
  node.is_negated = label.is_negated;
}

ATTRIBUTE FrameBuilder::valueless(const ATTRIBUTE& label) {
  if (tree_.is_open()) tell_attribute(label, 0, ARROW::kNone);
  return label;
}

ATTRIBUTE FrameBuilder::with_value(const ATTRIBUTE& label, ARROW arrow, const FRAME& value) {
  if (tree_.is_open()) tell_attribute(label, 1, arrow);
  const std::span<const FRAME> values(&value, 1);
  report_negated_values(values, "You cannot have a negated frame for the value of an attribute");
  return saying(label, arrow, stored(values));
}

ATTRIBUTE FrameBuilder::with_values(const ATTRIBUTE& label, ARROW arrow, ValuesMark values) {
  const StoredList<FRAME> list = stored(values_.take(values));
  if (tree_.is_open()) tell_attribute(label, list.size(), arrow);
  report_negated_values(list.elements(),
                        "You cannot a negated frame for the value of an attribute");
  return saying(label, arrow, list);
}

// The values of inner attributes were seen to before: those of this one are the last noted.
void FrameBuilder::report_negated_values(std::span<const FRAME> values, std::string_view text) {
  if (negated_values_.empty()) return;
  const auto count = std::count_if(values.begin(), values.end(), is_negated_frame);
  const auto first = negated_values_.end() - count;
  for (auto place = first; place != negated_values_.end(); ++place) {
    const ReadingScope at_value(work(), &*place);
    report(Code::kNegatedValue, std::string(text));
  }
  negated_values_.erase(first, negated_values_.end());
}

FRAME FrameBuilder::frame(const FrameTerm& object, AttributesMark attributes) {
  return {object, stored(attributes_.take(attributes)), NameId{}};
}

FRAME FrameBuilder::frame_of(const FrameTerm& object, const ATTRIBUTE& attribute) {
  return {object, stored(std::span<const ATTRIBUTE>(&attribute, 1)), NameId{}};
}

FRAME FrameBuilder::nested(const FrameTerm& object, AttributesMark attributes) {
  if (tree_.is_open()) tree_.node(WrittenKind::kFrame, 1 + attributes_.size(attributes));
  const FRAME value = frame(object, attributes);
  if (is_negated_frame(value)) note(negated_values_);
  return value;
}

FRAME FrameBuilder::molecule(const FrameTerm& object, AttributesMark attributes) {
  if (tree_.is_open()) tree_.node(WrittenKind::kFrame, 1 + attributes_.size(attributes));
  return checked(frame(object, attributes));
}

// The two names stand at the beginning and at the end of what is read.
Membership FrameBuilder::membership(const NamePair& pair) {
  if (!tree_.is_open()) return {frame_term(pair.first), frame_term(pair.second)};
  const SourceRange whole = work().where().range;
  const SourceRange first =
      range_of_text(whole.first_line, whole.first_column, names().spelling(pair.first));
  const auto size = static_cast<std::uint32_t>(names().spelling(pair.second).size());
  const SourceRange second{whole.last_line, whole.last_column - size + 1, whole.last_line,
                           whole.last_column};
  const auto name_at = [this](NameId id, const SourceRange& place) {
    const ReadingScope at_name(work(), &place);
    return name(id);
  };
  const FrameTerm object = name_at(pair.first, first);
  return {object, name_at(pair.second, second)};
}

FRAME FrameBuilder::membership(const Membership& membership) {
  if (tree_.is_open()) {
    tree_.sort(2);
    tree_.node(WrittenKind::kMembership, 2);
  }
  return frame_of(membership.object, attribute(false, membership.class_term, ARROW::kInstance));
}

FRAME FrameBuilder::membership(const Membership& membership, AttributesMark class_attributes) {
  const auto& [object, class_term] = membership;
  if (tree_.is_open()) {
    const std::size_t parts = 2 + attributes_.size(class_attributes);
    tree_.sort(parts);
    tree_.node(WrittenKind::kMembership, parts);
  }
  const FRAME class_frame = frame(class_term, class_attributes);
  const StoredList<FRAME> values = stored(std::span<const FRAME>(&class_frame, 1));
  return checked(frame_of(object, {false, ARROW::kInstance, class_term, values}));
}

FRAME FrameBuilder::subclass(const FrameTerm& object, const FrameTerm& class_term) {
  if (tree_.is_open()) tree_.node(WrittenKind::kSubclass, 2);
  return frame_of(object, attribute(false, class_term, ARROW::kSubclass));
}

FRAME FrameBuilder::negated(FRAME frame) {
  if (tree_.is_open()) tree_.negate();
  frame.set_negated(true);
  return frame;
}

void FrameBuilder::check_space(WrittenName frame_space) {
  const std::string_view space = names().spelling(frame_space.id);
  if (!space.starts_with('"')) return;
  const ReadingScope at_space(work(), frame_space.place);
  std::string message = "the frame space of a frame must be a name without quotes, not ";
  report(Code::kQuotedFrameSpace, message.append(space));
}

// An integer is written as the solver reads it: without leading zeros.
NameId FrameBuilder::flat_integer(const FlatFramePart& part) {
  const SourceRange whole = work().where().range;
  const std::uint32_t begin = whole.first_column + part.begin;
  const SourceRange own{whole.first_line, begin, whole.first_line, begin + part.length - 1};
  const ReadingScope at_own(work(), &own);
  return term(bounds_.integer(part.value)).text;
}

std::span<const FrameStatement> FrameBuilder::flat_frame(const FlatFrame& frame,
                                                         NameId frame_space) {
  statements_.clear();
  open_.clear();
  const auto add = [this](std::optional<NameId> value) {
    statements_.push_back(open_.back());
    statements_.back().value = value;
  };
  for (const FlatFramePart& part : frame.parts()) {
    switch (part.kind) {
      case FlatFramePart::Kind::kObject: {
        const NameId object = names().intern(frame.text(part));
        if (!open_.empty()) add(object);
        open_.push_back({false, object, {}, {}, ARROW::kNone, frame_space});
        break;
      }
      case FlatFramePart::Kind::kAttribute:
        open_.back().name = names().intern(frame.text(part));
        open_.back().arrow = part.arrow;
        if (part.arrow == ARROW::kNone) add(std::nullopt);
        break;
      case FlatFramePart::Kind::kName:
        add(names().intern(frame.text(part)));
        break;
      case FlatFramePart::Kind::kInteger:
        add(flat_integer(part));
        break;
      case FlatFramePart::Kind::kObjectEnd:
        open_.pop_back();
        break;
    }
  }
  SourceRange place = work().where().range;
  --place.last_column;    // the frame, without its full stop
  check_space({frame_space, &place});
  return statements_;
}

FRAME FrameBuilder::in_space(FRAME molecule, WrittenName frame_space) {
  check_space(frame_space);
  if (tree_.is_open()) tree_.set_space(frame_space.id);
  molecule.set_framespace(frame_space.id);
  return molecule;
}

FRAME FrameBuilder::in_head(const FRAME& frame, const SourceRange& place) {
  if (!negated_labels_.empty() && frame.has_nested_negation()) {
    const auto label =
        std::lower_bound(negated_labels_.begin(), negated_labels_.end(), place, begins_before);
    const ReadingScope at_label(work(), label == negated_labels_.end() ? &place : &*label);
    report(Code::kNegationInHead, "You cannot have negation in head");
  }
  return frame;
}

// The frame's own "-" is where it begins.
FRAME FrameBuilder::checked(const FRAME& frame) {
  if (frame.subject().is_negated() && frame.has_true_negation()) {
    const SourceRange whole = work().where().range;
    const auto inner = std::upper_bound(negations_.begin(), negations_.end(), whole, begins_before);
    const ReadingScope at_inner(work(), inner == negations_.end() ? &whole : &*inner);
    report(Code::kNestedNegation, "You cannot have a nested true negation in frame definition");
  }
  return frame;
}

void FrameBuilder::note(std::vector<SourceRange>& places) {
  has_notes_ = true;
  places.push_back(work().where().range);
}

void FrameBuilder::clear_lists() {
  has_lists_ = false;
  lists_.clear();
}

void FrameBuilder::clear_notes() {
  has_notes_ = false;
  negations_.clear();
  negated_labels_.clear();
  negated_values_.clear();
}

}    // namespace zarel
