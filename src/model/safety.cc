#include "model/safety.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "model/established.h"
#include "model/names.h"
#include "model/report.h"

namespace zarel {
namespace {

bool is_comparison(const ATOMT& atom) {
  const Builtin* const builtin = builtin_of(atom.predicate());
  return builtin != nullptr && builtin->is_comparison;
}

bool is_equality(const ATOMT& atom) {
  const Builtin* const builtin = builtin_of(atom.predicate());
  return builtin != nullptr && builtin->is_equality;
}

bool is_binding(const Literal& literal) {
  if (literal.is_negated) return false;
  return literal.atom.is_aggregate() ? literal.atom.aggregate().is_equality
                                     : !is_comparison(literal.atom);
}

bool is_value(const TERMT& term) {
  return term.kind == TermKind::kConstant || term.kind == TermKind::kInteger;
}

// Calls `use` with every term that the literal binds. An "==" does it whether or not "not" stands
// before it.
template <class Use>
void for_each_bound_term(const Literal& literal, Use use) {
  if (is_binding(literal)) {
    if (literal.atom.is_aggregate()) {
      use(literal.atom.aggregate().lower.term);
    } else {
      for (const TERMT& term : literal.atom.terms()) use(term);
    }
  } else if (is_equality(literal.atom) && literal.atom.terms().size() == 2) {
    const std::span<const TERMT> terms = literal.atom.terms();
    if (is_value(terms[1])) use(terms[0]);
    if (is_value(terms[0])) use(terms[1]);
  }
}

// The variables that the literals of a body bind, collected once so that a check is linear in the
// body.
class BoundVariables {
 public:
  explicit BoundVariables(std::span<const Literal> body) {
    for (const Literal& literal : body) {
      for_each_bound_term(literal, [this](const TERMT& term) {
        if (term.is_variable()) bound_.insert(term.index());
      });
    }
  }

  // True for everything that is no variable.
  bool covers(const TERMT& term) const {
    return !term.is_variable() || bound_.count(term.index()) != 0;
  }

  // The first variable that is not bound; null without one.
  const TERMT* uncovered(std::span<const TERMT> terms) const {
    for (const TERMT& term : terms) {
      if (!covers(term)) return &term;
    }
    return nullptr;
  }

 private:
  std::unordered_set<std::uint32_t> bound_;
};

const TERMT* unsafe_in_aggregate(const AGGREGATEPREDT& aggregate, const BoundVariables& outside) {
  if (!outside.covers(aggregate.lower.term)) return &aggregate.lower.term;
  if (!outside.covers(aggregate.upper.term)) return &aggregate.upper.term;
  const std::span<const Literal> body = aggregate.body.elements();
  const BoundVariables inside(body);
  for (const Literal& literal : body) {
    if (is_binding(literal)) continue;
    for (const TERMT& term : literal.atom.terms()) {
      if (!outside.covers(term) && !inside.covers(term)) return &term;
    }
  }
  return nullptr;
}

const TERMT* unsafe_in_body(std::span<const Literal> body, const BoundVariables& bound) {
  for (const Literal& literal : body) {
    if (is_binding(literal)) continue;
    const TERMT* const unsafe = literal.atom.is_aggregate()
                                    ? unsafe_in_aggregate(literal.atom.aggregate(), bound)
                                    : bound.uncovered(literal.atom.terms());
    if (unsafe != nullptr) return unsafe;
  }
  return nullptr;
}

}    // namespace

// Established; it stands here for what it shares with the check.
bool Saves(const Body& body, const TERMT& variable) {
  for (std::size_t i = 0; i < body.size(); ++i) {
    bool is_bound = false;
    for_each_bound_term(body[i],
                        [&](const TERMT& term) { is_bound = is_bound || term == variable; });
    if (is_bound) return true;
  }
  return false;
}

std::optional<TERMT> unsafe_variable(std::span<const ATOMT> head, std::span<const Literal> body) {
  const BoundVariables bound(body);
  for (const ATOMT& atom : head) {
    if (const TERMT* const unsafe = bound.uncovered(atom.terms())) return *unsafe;
  }
  if (const TERMT* const unsafe = unsafe_in_body(body, bound)) return *unsafe;
  return std::nullopt;
}

void control_of_arity(const ATOMT& atom) {
  const std::string_view name = getNameWithoutPrefix(atom.name());
  const auto known = ATOMT::Predicates().find(name);
  const std::size_t arity = atom.terms().size();
  if (!known || ATOMT::Predicates().arity(*known) == arity) return;
  std::string text(name);
  text.append(" is a global predicate first used with arity ");
  text.append(std::to_string(ATOMT::Predicates().arity(*known)));
  text.append(", now seen with arity ").append(std::to_string(arity)).append(".");
  report_and_end(Code::kGlobalArity, text);
}

bool existVarGroup(const ATOMT& atom) {
  const std::span<const TERMT> terms = atom.terms();
  return std::any_of(terms.begin(), terms.end(), [](const TERMT& term) {
    return !term.is_marker() && term.kind != TermKind::kAnonymous;
  });
}

}    // namespace zarel
