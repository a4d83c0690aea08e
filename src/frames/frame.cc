#include "frames/frame.h"

#include <algorithm>

#include "frames/frame_walk.h"
#include "model/names.h"
#include "model/run.h"

namespace zarel {
namespace {

// How many auxiliary atoms there are of each kind.
struct AuxiliaryCounts {
  std::uint32_t frames = 0;
  std::uint32_t attributes = 0;
};

void add(std::vector<TERMT>& out, const FrameTerm& term) {
  const std::span<const TERMT> variables = term.variables.elements();
  out.insert(out.end(), variables.begin(), variables.end());
}

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

}    // namespace

FrameTerm frame_term(NameId text) {
  const std::string_view name = without_minus(names().spelling(text));
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

FRAME::FRAME(const FrameTerm& subject, StoredList<ATTRIBUTE> attributes, NameId framespace)
    : is_negated_(false), framespace_(framespace), subject_(subject), attributes_(attributes) {}

std::span<const ATTRIBUTE> FRAME::getAttributes() const {
  return attributes_.elements();
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

void FRAME::getVariables(std::vector<TERMT>& out) const {
  add(out, subject_);
  CollectVariables variables(out);
  walk_frame(*this, variables);
}

std::uint32_t& FRAME::nextAuxAtom() {
  return current_run().parts.get<AuxiliaryCounts>().frames;
}

std::uint32_t& ATTRIBUTE::nextAuxAtom() {
  return current_run().parts.get<AuxiliaryCounts>().attributes;
}

ATTRIBUTE attribute(bool is_negated, const FrameTerm& name, ARROW arrow) {
  return {is_negated, arrow, name, {}};
}

}    // namespace zarel
