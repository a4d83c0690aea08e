#include "templates/checks.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "model/program.h"
#include "model/report.h"
#include "model/run.h"
#include "templates/atom_rewriting.h"
#include "templates/definitions.h"
#include "templates/invocations.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

bool fault(Diagnostic finding) {
  report(std::move(finding));
  return false;
}

Note note_of(const DEFINITIONATOM& definition) {
  return {place_of(definition.head), "the definition of the template"};
}

// What is wrong with an invocation, as its definition has it.
bool fault(Code code, const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition,
           std::string text) {
  return fault({code, place_of(invocation.written), std::move(text), {note_of(definition)}});
}

std::string quoted(std::string_view name) {
  return std::string("'").append(name).append("'");
}

// Finds the first fault of a definition's rules: formal predicate by formal predicate, for each in
// the order of the rules; a global predicate in a head counts to the first formal one. The rules
// are gone through once for all of them.
class RuleFault {
 public:
  explicit RuleFault(const DEFINITIONATOM& definition) : definition_(definition) {
    for (std::size_t i = 0; i < definition.formals.size(); ++i) add(definition.formals[i], i);
  }

  void look_at(const CLAUSET& clause) {
    location_ = clause.source().location;
    for (const ATOMT& atom : clause.head()) look_at_head(atom);
    look_at_body(clause.body());
  }

  // Nothing when there is none.
  const std::optional<Diagnostic>& finding() const { return finding_; }

 private:
  // The places of formal predicates of one name: of the first, and of the first with another arity.
  using Places = std::vector<std::size_t>;

  void add(const FORMALPRED& formal, std::size_t place) {
    Places& places = places_[formal.name];
    const bool is_new = std::none_of(places.begin(), places.end(), [&](std::size_t other) {
      return definition_.formals[other].arity == formal.arity;
    });
    if (places.size() < 2 && is_new) places.push_back(place);
  }

  std::span<const std::size_t> places_of(std::string_view name) const {
    const auto found = places_.find(name);
    if (found == places_.end()) return {};
    return found->second;
  }

  void look_at_head(const ATOMT& atom) {
    if (!template_rules().is_rewritten(atom)) return;
    const std::string_view name = body_name(atom).text;
    const std::span<const std::size_t> places = places_of(name);
    if (!places.empty()) {
      found(places.front(), Code::kFormalInHead,
            quoted(name) +
                " is a formal predicate and it cannot be in the head of rule in a "
                "template definition.");
    }
    if (template_rules().is_global(definition_, name)) {
      found(0, Code::kGlobalInHead,
            quoted(name) +
                " is a global predicate and it  cannot be in the head of rule in a "
                "template definition.");
    }
  }

  void look_at_body(std::span<const Literal> body) {
    for (const Literal& literal : body) {
      if (literal.atom.is_aggregate()) {
        look_at_body(literal.atom.aggregate().body.elements());
      } else if (literal.atom.payload() == ATOMT::Payload::kInvocation) {
        look_at_nested(literal.atom.invocation());
      } else {
        look_at_use(literal.atom);
      }
    }
  }

  void look_at_nested(const InvocationPayload& invocation) {
    if (!template_rules().are_nested_invocations_checked()) return;
    for (const ATOMT& actual : invocation.actuals.elements()) look_at_use(actual);
  }

  void look_at_use(const ATOMT& atom) {
    if (!template_rules().is_rewritten(atom)) return;
    const std::size_t arity = atom.terms().size();
    for (const std::size_t place : places_of(body_name(atom).text)) {
      const FORMALPRED& formal = definition_.formals[place];
      if (arity == static_cast<std::size_t>(formal.arity)) continue;
      found(place, Code::kFormalArity,
            quoted(formal.name) + " is a formal predicate with arity " +
                std::to_string(formal.arity) + " now is defined with arity " +
                std::to_string(arity) + ".");
    }
  }

  void found(std::size_t place, Code code, std::string text) {
    if (place >= place_) return;
    place_ = place;
    finding_ = {code, place_of(location_), std::move(text), {note_of(definition_)}};
  }

  const DEFINITIONATOM& definition_;
  std::unordered_map<std::string_view, Places> places_;
  std::size_t place_ = std::string::npos;    // of the formal predicate that has the fault
  std::optional<Diagnostic> finding_;
  SourceLocation location_;    // of the clause that is looked at
};

// What is wrong in a definition, with the first invocation that it is wrong for; null for one that
// stands in another template.
bool fault_for(const INVOCATIONATOM* invocation, Diagnostic finding) {
  if (invocation != nullptr) {
    finding.notes.push_back({place_of(invocation->written), "the invocation"});
  }
  return fault(std::move(finding));
}

// Whether the checks look for more behind a fault.
bool goes_on() {
  return current_run().options.skips_faulty_statements;
}

bool check_rules(const DEFINITIONATOM& definition, const INVOCATIONATOM* invocation) {
  RuleFault first(definition);
  for (const CLAUSET& clause : definition.rules) first.look_at(clause);
  return !first.finding() || fault_for(invocation, *first.finding());
}

bool check_output_arity(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  const std::size_t seen = invocation.outputTerms.size();
  if (seen == static_cast<std::size_t>(definition.outputArity)) return true;
  return fault(Code::kOutputArity, invocation, definition,
               definition.name + ", defined with arity of output " +
                   std::to_string(definition.outputArity) + ", now seen with arity " +
                   std::to_string(seen) + ".");
}

bool check_actual_count(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  if (invocation.actuals.size() == definition.formals.size()) return true;
  return fault(Code::kActualCount, invocation, definition,
               quoted(definition.name) + ", defined with " +
                   std::to_string(definition.formals.size()) +
                   " formal predicates , now seen with " +
                   std::to_string(invocation.actuals.size()) + "actual predicates.");
}

bool check_actual_arities(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  const std::size_t count = std::min(invocation.actuals.size(), definition.formals.size());
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t arity = invocation.actuals[i].asterisk_count();
    const FORMALPRED& formal = definition.formals[i];
    if (arity == static_cast<std::uint32_t>(formal.arity)) continue;
    std::string detail = "j:";
    detail.append(std::to_string(arity)).append("\nk:").append(formal.name).append("(");
    detail.append(std::to_string(formal.arity)).append(")\n");
    return fault({Code::kActualArity,
                  place_of(invocation.written),
                  "Invocation " + quoted(invocation.name) + " malformed",
                  {note_of(definition)},
                  detail});
  }
  return true;
}

// The template's own predicate in the clause's head; null when it is not there. "-" makes it
// another predicate.
const ATOMT* result_atom(const DEFINITIONATOM& definition, const CLAUSET& clause) {
  for (const ATOMT& atom : clause.head()) {
    const BodyName name = body_name(atom);
    if (template_rules().is_rewritten(atom) && !name.is_strongly_negated &&
        name.text == definition.name) {
      return &atom;
    }
  }
  return nullptr;
}

bool check_result(const DEFINITIONATOM& definition, const INVOCATIONATOM* invocation) {
  bool has_result = false;
  for (const CLAUSET& clause : definition.rules) {
    const ATOMT* const atom = result_atom(definition, clause);
    if (atom == nullptr) continue;
    has_result = true;
    if (atom->terms().size() == static_cast<std::size_t>(definition.outputArity)) continue;
    return fault_for(
        invocation, {Code::kResultArity,
                     place_of(clause.source().location),
                     "In definition template " + quoted(definition.name) + " atom " +
                         quoted(definition.name) + " don't have the same output arity of template.",
                     {note_of(definition)}});
  }
  if (has_result) return true;
  return fault_for(invocation, {Code::kResultMissing, place_of(definition.head),
                                quoted(definition.name) +
                                    " lacks an head atom having the same name of template."});
}

// The definitions that the program's invocations lead to, each once.
class ReachedDefinitions {
 public:
  // Whether it was not reached before.
  bool add(const DEFINITIONATOM& definition) {
    const bool is_new = known_.insert(&definition).second;
    if (is_new) all_.push_back(&definition);
    return is_new;
  }

  // A template that is not defined, which is said once, at its first invocation. Returns false.
  bool fault_for_undefined(std::string_view name, const SourceSpan& written) {
    if (!undefined_.emplace(name).second) return false;
    return fault({Code::kTemplateUndefined, place_of(written), quoted(name) + " not defined."});
  }

  // Goes on to those that only template bodies invoke, and checks them as the others are.
  bool check_nested() {
    const std::size_t checked = all_.size();
    for (std::size_t i = 0; i < all_.size(); ++i) {
      const DEFINITIONATOM& definition = *all_[i];
      if (i >= checked && !(check_rules(definition, nullptr) && check_result(definition, nullptr)))
        is_right_ = false;
      if (!is_right_ && !goes_on()) return false;
      for (const CLAUSET& clause : definition.rules) {
        add_invoked(clause.body());
      }
    }
    return is_right_;
  }

 private:
  void add_invoked(std::span<const Literal> body) {
    for (const Literal& literal : body) {
      if (literal.atom.is_aggregate()) add_invoked(literal.atom.aggregate().body.elements());
      if (literal.atom.payload() == ATOMT::Payload::kInvocation) add_invoked(literal.atom);
    }
  }

  // Its shape is checked when it is expanded; where the checks go on, already here.
  void add_invoked(const ATOMT& marker) {
    const std::string_view name = names().spelling(marker.invocation().name);
    const DEFINITIONATOM* const definition = defhashmap().find(name);
    if (definition != nullptr) add(*definition);
    if (!goes_on()) return;
    const bool is_right = definition == nullptr
                              ? fault_for_undefined(name, marker.invocation().written)
                              : has_shape_of(invocation_of(marker), *definition);
    is_right_ = is_right_ && is_right;
  }

  bool is_right_ = true;
  std::unordered_set<const DEFINITIONATOM*> known_;
  std::vector<const DEFINITIONATOM*> all_;
  std::unordered_set<std::string> undefined_;    // names
};

// A definition's own rules give the same outcome at each of its invocations: they are checked at
// the first one.
bool check_invocation(const INVOCATIONATOM& invocation, ReachedDefinitions& reached) {
  const DEFINITIONATOM* const definition = defhashmap().find(invocation.name);
  if (definition == nullptr)
    return reached.fault_for_undefined(invocation.name, invocation.written);
  const bool is_first = reached.add(*definition);
  if (!check_output_arity(invocation, *definition)) return false;
  if (is_first && !check_rules(*definition, &invocation)) return false;
  if (!check_actual_count(invocation, *definition)) return false;
  if (!check_actual_arities(invocation, *definition)) return false;
  return !is_first || check_result(*definition, &invocation);
}

}    // namespace

bool has_shape_of(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  return check_output_arity(invocation, definition) && check_actual_count(invocation, definition) &&
         check_actual_arities(invocation, definition);
}

bool control_of_template() {
  ReachedDefinitions reached;
  bool is_right = true;
  for (const INVOCATIONATOM& invocation : invhashmap().all()) {
    is_right = check_invocation(invocation, reached) && is_right;
    if (!is_right && !goes_on()) return false;
  }
  if (!template_rules().are_nested_invocations_checked()) return is_right;
  return reached.check_nested() && is_right;
}

}    // namespace zarel
