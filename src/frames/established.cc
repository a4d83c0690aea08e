#include "frames/established.h"

#include <algorithm>

#include "frames/frame_source.h"
#include "frames/frame_walk.h"

namespace zarel {
namespace {

template <class T>
StoredList<T> appended(StoredList<T> list, const T& element) {
  const StoredList<T> longer = program_storage().make_list<T>(list.size() + 1);
  *std::uninitialized_copy(list.elements().begin(), list.elements().end(),
                           longer.elements().begin()) = element;
  return longer;
}

struct CollectStrings : NoVisit {
  std::vector<std::string>& out;
  explicit CollectStrings(std::vector<std::string>& strings) : out(strings) {}

  void enter_attribute(const FRAME& frame, const ATTRIBUTE& attribute) {
    if (attribute.isSimple())
      out.push_back(relation(attribute.is_negated, frame.getSubject(), attribute.getName()));
  }
  void value(const FRAME& frame, const ATTRIBUTE& attribute, const FRAME& value) {
    out.push_back(relation(attribute.is_negated, frame.getSubject(), attribute.getName(),
                           value.getSubject()));
  }
};

// The attribute as the only one of a frame of this subject.
FRAME frame_of(const FrameTerm& subject, const ATTRIBUTE& attribute) {
  return {subject, std::span<const ATTRIBUTE>(&attribute, 1), false, NameId{}};
}

}    // namespace

void FRAME::setSubject(std::string_view text) {
  subject_ = frame_term(names().intern(text));
}

bool FRAME::hasNegation() const {
  const std::span<const ATTRIBUTE> attributes = getAttributes();
  return std::any_of(attributes.begin(), attributes.end(),
                     [](const ATTRIBUTE& own) { return own.is_negated; });
}

void FRAME::addAttribute(const ATTRIBUTE& attribute) {
  attributes_ = appended(attributes_, attribute);
}

void FRAME::toStrings(std::vector<std::string>& out) const {
  CollectStrings strings(out);
  walk_frame(*this, strings);
}

void ATTRIBUTE::addValue(const FRAME& value) {
  values = appended(values, value);
}

void ATTRIBUTE::toStrings(std::vector<std::string>& out, std::string_view subject) const {
  frame_of({names().intern(subject), {}}, *this).toStrings(out);
}

void ATTRIBUTE::getVariables(std::vector<TERMT>& out, const FrameTerm* subject) const {
  const FrameTerm none{};
  frame_of(subject == nullptr ? none : *subject, *this).getVariables(out);
}

std::string relation(bool is_negated, std::string_view subject, std::string_view name,
                     std::string_view value) {
  std::string text = is_negated ? "not " : "";
  return text.append(name).append("(").append(subject).append(",").append(value).append(")");
}

std::string relation(bool is_negated, std::string_view subject, std::string_view name) {
  std::string text = is_negated ? "not " : "";
  return text.append(name).append("(").append(subject).append(")");
}

std::vector<std::string> FRAME_HEAD::toStrings() const {
  std::vector<std::string> strings;
  for (const FRAME& frame : frames_) frame.toStrings(strings);
  return strings;
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
  std::vector<CLAUSET> clauses;
  if (body_) body = body_->standardize(context);
  if (!head_ && body) clauses.emplace_back(Constraint(*body), frame_source());
  if (!head_) return clauses;
  for (const FRAME& frame : head_->getFrames())
    add_frame_rule(frame, body ? &*body : nullptr, context, clauses);
  return clauses;
}

}    // namespace zarel
