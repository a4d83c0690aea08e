#include "model/printer.h"

namespace zarel {
namespace {

void append_comparison(Text& out, const AGGREGATEPREDT& aggregate, const AggregateGuard& guard) {
  out += aggregate.is_equality ? " = " : guard.is_inclusive ? " <= " : " < ";
}

// Guards that are neither variable nor integer write nothing; their comparison still stands.
void append_guard_term(Text& out, const TERMT& term) {
  if (term.is_variable() || term.kind == TermKind::kInteger) append_text(out, term);
}

void append_text(Text& out, const AGGREGATEPREDT& aggregate) {
  if (aggregate.has_lower) {
    append_guard_term(out, aggregate.lower.term);
    append_comparison(out, aggregate, aggregate.lower);
  }
  out += aggregate_name(aggregate.function);
  out += '{';
  append_list(out, aggregate.terms.elements(), ",");
  out += ':';
  append_list(out, aggregate.body.elements(), ", ");
  out += '}';
  if (aggregate.has_upper) {
    append_comparison(out, aggregate, aggregate.upper);
    append_guard_term(out, aggregate.upper.term);
  }
}

void append_text(Text& out, const InvocationPayload& invocation) {
  out += names().spelling(invocation.name);
  out += '[';
  append_list(out, invocation.actuals.elements(), ", ");
  out += "] (";
  append_list(out, invocation.terms.elements(), ",");
  out += ')';
}

void append_text(Text& out, const EXTERNAL_ATOM& external) {
  out += '&';
  out += names().spelling(external.name);
  out += '[';
  append_list(out, external.bracketed.elements(), ",");
  out += "](";
  append_list(out, external.terms.elements(), ",");
  out += ')';
}

void append_text(Text& out, const Rule& rule) {
  append_list(out, rule.head(), " v ");
  if (!rule.body().empty()) {
    out += " :- ";
    append_list(out, rule.body(), ", ");
  }
  out += '.';
}

void append_text(Text& out, const Fact& fact) {
  append_text(out, fact.head().front());
  out += '.';
}

void append_text(Text& out, const Constraint& constraint) {
  out += ":- ";
  append_list(out, constraint.body(), ", ");
  out += '.';
}

void append_weight(Text& out, const TERMT& weight) {
  if (weight.kind == TermKind::kAbsent) return;
  if (weight.is_variable()) {
    append_text(out, weight);
  } else {
    out.add_number(weight.index() / kWeightScale);
  }
}

void append_text(Text& out, const WeakConstraint& weak) {
  out += ":~ ";
  append_list(out, weak.body(), ", ");
  out += ". ";
  if (weak.weight().kind == TermKind::kAbsent && weak.level().kind == TermKind::kAbsent) return;
  out += '[';
  append_weight(out, weak.weight());
  out += ':';
  append_text(out, weak.level());
  out += ']';
}

struct ClauseText {
  Text& out;

  void operator()(const TERMT& maxint) const {
    out += "#maxint = ";
    append_text(out, maxint);
    out += '.';
  }
  template <class Clause>
  void operator()(const Clause& clause) const {
    append_text(out, clause);
  }
};

}    // namespace

void append_text(Text& out, const TERMT& term) {
  switch (term.kind) {
    case TermKind::kVariable:
    case TermKind::kFunctionTerm:
      names().append_to(out, name_of_variable(term.index()));
      break;
    case TermKind::kConstant:
      TERMT::Constants().append_to(out, NameId{term.index()});
      break;
    case TermKind::kInteger:
      out.add_number(term.value());
      break;
    case TermKind::kAbsent:
      break;
    case TermKind::kAsterisk:
      out += '*';
      break;
    case TermKind::kAnonymous:
      out += '_';
      break;
    case TermKind::kDollar:
      out += '$';
      break;
  }
}

void append_text(Text& out, const ATOMT& atom) {
  switch (atom.payload()) {
    case ATOMT::Payload::kAggregate:
      return append_text(out, atom.aggregate());
    case ATOMT::Payload::kInvocation:
      return append_text(out, atom.invocation());
    case ATOMT::Payload::kExternal:
      return append_text(out, atom.external_atom());
    case ATOMT::Payload::kTerms:
      break;
  }
  names().append_to(out, ATOMT::Predicates().name_id(atom.predicate()));
  const std::span<const TERMT> terms = atom.terms();
  if (terms.empty()) return;
  out += '(';
  append_list(out, terms, ",");
  out += ')';
}

void append_text(Text& out, const Literal& literal) {
  if (literal.is_negated) out += "not ";
  append_text(out, literal.atom);
}

void append_text(Text& out, const CLAUSET& clause) {
  std::visit(ClauseText{out}, clause.payload());
}

void append_text(Text& out, const FORMALPRED& formal) {
  out += formal.name;
  out += '(';
  out.add_number(formal.arity);
  out += ')';
}

std::ostream& operator<<(std::ostream& out, const ATOMT& atom) {
  Text text;
  append_text(text, atom);
  return out << text.view();
}

std::ostream& operator<<(std::ostream& out, const CLAUSET& clause) {
  Text text;
  append_text(text, clause);
  return out << text.view();
}

}    // namespace zarel
