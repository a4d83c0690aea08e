#include "frames/frame.h"

#include <algorithm>

#include "frames/frame_walk.h"
#include "model/run.h"

namespace zarel {
namespace {

// How many auxiliary atoms there are of each kind.
struct AuxiliaryCounts {
  std::uint32_t frames = 0;
  std::uint32_t attributes = 0;
};

template <class T>
StoredList<T> appended(StoredList<T> list, const T& element) {
  const StoredList<T> longer = program_storage().make_list<T>(list.size() + 1);
  *std::uninitialized_copy(list.elements().begin(), list.elements().end(),
                           longer.elements().begin()) = element;
  return longer;
}

void add(std::vector<TERMT>& out, const FrameTerm& term) {
  const std::span<const TERMT> variables = term.variables.elements();
  out.insert(out.end(), variables.begin(), variables.end());
}

// Does nothing; visitors take what they need over it.
struct NoVisit {
  void enter_attribute(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/) {}
  void value(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/, const FRAME& /*value*/) {}
  void leave_attribute(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/) {}
};

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

struct CollectVariables : NoVisit {
  std::vector<TERMT>& out;
  explicit CollectVariables(std::vector<TERMT>& variables) : out(variables) {}

  void enter_attribute(const FRAME& /*frame*/, const ATTRIBUTE& attribute) {
    add(out, attribute.name);
  }
  void value(const FRAME& /*frame*/, const ATTRIBUTE& /*attribute*/, const FRAME& value) {
    add(out, value.subject());
  }
};

struct FindNegation : NoVisit {
  bool has_default = false;
  bool has_true = false;

  void enter_attribute(const FRAME& /*frame*/, const ATTRIBUTE& attribute) {
    has_default = has_default || attribute.is_negated;
    has_true = has_true || attribute.name.is_negated();
  }
};

FindNegation negation_in(const FRAME& frame) {
  FindNegation found;
  walk_frame(frame, found);
  return found;
}

// The attribute as the only one of a frame of this subject.
FRAME frame_of(const FrameTerm& subject, const ATTRIBUTE& attribute) {
  return {subject, std::span<const ATTRIBUTE>(&attribute, 1), false, NameId{}};
}

}    // namespace

FrameTerm frame_term(NameId text) {
  std::string_view name = names().spelling(text);
  if (name.starts_with('-')) name.remove_prefix(1);
  if (name.empty() || name[0] < 'A' || name[0] > 'Z') return {text, {}};
  const TERMT variable = newTERMT(name);
  return frame_term(text, {&variable, 1});
}

FrameTerm frame_term(NameId text, std::span<const TERMT> variables) {
  return {text, program_storage().store(variables)};
}

FrameTerm negated(const FrameTerm& term) {
  std::string text = "-";
  return {names().intern(text.append(term.spelling())), term.variables};
}

FRAME::FRAME(const FrameTerm& subject, bool is_negated, NameId framespace)
    : FRAME(subject, std::span<const ATTRIBUTE>{}, is_negated, framespace) {}

FRAME::FRAME(const FrameTerm& subject, std::span<const ATTRIBUTE> attributes, bool is_negated,
             NameId framespace)
    : is_negated_(is_negated),
      framespace_(framespace),
      subject_(subject),
      attributes_(program_storage().store(attributes)) {}

void FRAME::setSubject(std::string_view text) {
  subject_ = frame_term(names().intern(text));
}

std::span<const ATTRIBUTE> FRAME::getAttributes() const {
  return attributes_.elements();
}

bool FRAME::hasNegation() const {
  const std::span<const ATTRIBUTE> attributes = getAttributes();
  return std::any_of(attributes.begin(), attributes.end(),
                     [](const ATTRIBUTE& own) { return own.is_negated; });
}

bool FRAME::has_nested_negation() const {
  return negation_in(*this).has_default;
}

bool FRAME::has_true_negation() const {
  return negation_in(*this).has_true;
}

bool FRAME::isAtomic() const {
  if (getAttributes().size() != 1) return false;
  const std::span<const FRAME> values = getAttributes()[0].getValues();
  return values.empty() || (values.size() == 1 && values[0].isSimple());
}

void FRAME::addAttribute(const ATTRIBUTE& attribute) {
  attributes_ = appended(attributes_, attribute);
}

void FRAME::toStrings(std::vector<std::string>& out) const {
  CollectStrings strings(out);
  walk_frame(*this, strings);
}

void FRAME::getVariables(std::vector<TERMT>& out) const {
  add(out, subject_);
  CollectVariables variables(out);
  walk_frame(*this, variables);
}

std::uint32_t& FRAME::nextAuxAtom() {
  return current_run().parts.get<AuxiliaryCounts>().frames;
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

std::uint32_t& ATTRIBUTE::nextAuxAtom() {
  return current_run().parts.get<AuxiliaryCounts>().attributes;
}

ATTRIBUTE attribute(bool is_negated, const FrameTerm& name, ARROW arrow) {
  return {is_negated, arrow, name, {}};
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

}    // namespace zarel
