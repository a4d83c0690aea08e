#include "templates/checks.h"

#include <algorithm>
#include <ostream>
#include <string>
#include <unordered_set>

#include "driver/diagnostics.h"
#include "model/program.h"
#include "templates/atom_rewriting.h"
#include "templates/definitions.h"
#include "templates/invocations.h"
#include "templates/linking.h"

namespace zarel {
namespace {

bool fault(const std::string& message) {
  standard_error() << message << '\n';
  return false;
}

std::string quoted(std::string_view name) {
  return std::string("'").append(name).append("'");
}

struct HeadOf {
  std::span<const ATOMT> operator()(const Rule& rule) const { return rule.head(); }
  template <class Clause>
  std::span<const ATOMT> operator()(const Clause& /*headless*/) const {
    return {};
  }
};

struct BodyOf {
  std::span<const Literal> operator()(const TERMT& /*maxint*/) const { return {}; }
  template <class Clause>
  std::span<const Literal> operator()(const Clause& clause) const {
    return clause.body();
  }
};

std::span<const ATOMT> head_of(const CLAUSET& clause) {
  return std::visit(HeadOf{}, clause.payload());
}

bool check_head(const DEFINITIONATOM& definition, const FORMALPRED& formal, const ATOMT& atom) {
  if (!is_rewritten(atom)) return true;
  const std::string_view name = body_name(atom).text;
  if (name == formal.name) {
    return fault(quoted(name) +
                 " is a formal predicate and it cannot be in the head of rule in a template "
                 "definition.");
  }
  if (is_global(definition, name)) {
    return fault(quoted(name) +
                 " is a global predicate and it  cannot be in the head of rule in a template "
                 "definition.");
  }
  return true;
}

bool check_arity(const FORMALPRED& formal, const ATOMT& atom) {
  const std::size_t arity = atom.terms().size();
  if (!is_rewritten(atom)) return true;
  if (body_name(atom).text != formal.name || arity == static_cast<std::size_t>(formal.arity)) {
    return true;
  }
  return fault(quoted(formal.name) + " is a formal predicate with arity " +
               std::to_string(formal.arity) + " now is defined with arity " +
               std::to_string(arity) + ".");
}

bool check_arities(const FORMALPRED& formal, std::span<const Literal> body) {
  return std::all_of(body.begin(), body.end(), [&](const Literal& literal) {
    return literal.atom.is_aggregate()
               ? check_arities(formal, literal.atom.aggregate().body.elements())
               : check_arity(formal, literal.atom);
  });
}

bool check_rules(const DEFINITIONATOM& definition) {
  for (const FORMALPRED& formal : definition.formals.positive()) {
    for (const CLAUSET& clause : definition.rules) {
      for (const ATOMT& atom : head_of(clause)) {
        if (!check_head(definition, formal, atom)) return false;
      }
      if (!check_arities(formal, std::visit(BodyOf{}, clause.payload()))) return false;
    }
  }
  return true;
}

bool check_output_arity(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  const std::size_t seen = invocation.outputTerms.size();
  if (seen == static_cast<std::size_t>(definition.outputArity)) return true;
  return fault(definition.name + ", defined with arity of output " +
               std::to_string(definition.outputArity) + ", now seen with arity " +
               std::to_string(seen) + ".");
}

bool check_actual_count(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  if (invocation.actuals.size() == definition.formals.size()) return true;
  return fault(quoted(definition.name) + ", defined with " +
               std::to_string(definition.formals.size()) + " formal predicates , now seen with " +
               std::to_string(invocation.actuals.size()) + "actual predicates.");
}

bool check_actual_arities(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  const std::size_t count = std::min(invocation.actuals.size(), definition.formals.size());
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t arity = invocation.actuals[i].asterisk_count();
    const FORMALPRED& formal = definition.formals[i];
    if (arity == static_cast<std::uint32_t>(formal.arity)) continue;
    standard_output() << "j:" << arity << "\nk:" << formal.name << '(' << formal.arity << ")\n";
    return fault("Invocation " + quoted(invocation.name) + " malformed");
  }
  return true;
}

// The template's own predicate in the clause's head; null when it is not there. "-" makes it
// another predicate.
const ATOMT* result_atom(const DEFINITIONATOM& definition, const CLAUSET& clause) {
  for (const ATOMT& atom : head_of(clause)) {
    const BodyName name = body_name(atom);
    if (is_rewritten(atom) && !name.is_strongly_negated && name.text == definition.name) {
      return &atom;
    }
  }
  return nullptr;
}

bool check_result(const DEFINITIONATOM& definition) {
  bool has_result = false;
  for (const CLAUSET& clause : definition.rules) {
    const ATOMT* const atom = result_atom(definition, clause);
    if (atom == nullptr) continue;
    has_result = true;
    if (atom->terms().size() == static_cast<std::size_t>(definition.outputArity)) continue;
    return fault("In definition template " + quoted(definition.name) + " atom " +
                 quoted(definition.name) + " don't have the same output arity of template.");
  }
  if (has_result) return true;
  return fault(quoted(definition.name) + " lacks an head atom having the same name of template.");
}

}    // namespace

bool has_shape_of(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition) {
  return check_output_arity(invocation, definition) && check_actual_count(invocation, definition) &&
         check_actual_arities(invocation, definition);
}

// A definition's own rules give the same outcome at each of its invocations: they are checked at
// the first one.
bool control_of_template() {
  std::unordered_set<const DEFINITIONATOM*> checked;
  for (const INVOCATIONATOM& invocation : invhashmap().all()) {
    const DEFINITIONATOM* const definition = defhashmap().find(invocation.name);
    if (definition == nullptr) return fault(quoted(invocation.name) + " not defined.");
    const bool is_first = checked.insert(definition).second;
    if (!check_output_arity(invocation, *definition)) return false;
    if (is_first && !check_rules(*definition)) return false;
    if (!check_actual_count(invocation, *definition)) return false;
    if (!check_actual_arities(invocation, *definition)) return false;
    if (is_first && !check_result(*definition)) return false;
  }
  return true;
}

}    // namespace zarel
