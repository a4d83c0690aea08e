#include "workbench/answers/term_text.h"

#include "model/generic_encoding.h"

namespace workbench {
namespace {

void append_leaf(std::string& out, const zarel::AnswerTerm& term) {
  const std::string_view prefix = term.prefix();
  if (prefix.empty()) {
    out += term.text();
  } else {
    ((out += prefix) += ':') += term.name();
  }
}

}    // namespace

// Only text with a "#" can hold an address.
void append_terms(std::string& out, const zarel::AnswerTerms& terms) {
  if (terms.namespaces() == nullptr || terms.text().find('#') == std::string_view::npos) {
    out += terms.text();
    return;
  }
  using Step = zarel::TermWalk::Step;
  zarel::TermWalk walk(terms);
  bool is_first = true;
  for (Step step = walk.next(); step != Step::kEnd; step = walk.next()) {
    if (step == Step::kEndFunction) {
      out += ')';
      is_first = false;
      continue;
    }
    if (!is_first) out += ',';
    append_leaf(out, walk.term());
    is_first = step == Step::kBeginFunction;
    if (is_first) out += '(';
  }
}

void append_term(std::string& out, const zarel::AnswerTerm& term) {
  append_terms(out, zarel::AnswerTerms(term.text(), term.namespaces()));
}

void append_space(std::string& out, std::string_view space) {
  if (space != zarel::kDefaultSpace) (out += '@') += space;
}

void append_atom(std::string& out, const zarel::AnswerAtom& atom) {
  if (atom.is_negated) out += '-';
  append_term(out, atom.relation);
  if (!atom.arguments.is_empty()) {
    out += '(';
    append_terms(out, atom.arguments);
    out += ')';
  }
  append_space(out, atom.space);
}

void append_class(std::string& out, const zarel::ClassStatement& statement, ItemKind kind) {
  if (statement.is_negated) out += '-';
  append_term(out, statement.object);
  out += kind == ItemKind::kSubclass ? "::" : ":";
  append_term(out, statement.class_name);
  append_space(out, statement.space);
}

void append_attribute(std::string& out, const zarel::AnswerAttribute& attribute) {
  if (attribute.is_negated) out += '-';
  append_term(out, attribute.name);
  out += attribute.arrow;
  if (attribute.values.size() != 1) out += attribute.values.empty() ? "" : "{";
  const char* separator = "";
  for (const zarel::AnswerTerm& value : attribute.values) {
    out += separator;
    append_term(out, value);
    separator = ",";
  }
  if (attribute.values.size() > 1) out += '}';
}

void append_object(std::string& out, const zarel::AnswerObject& object) {
  append_term(out, object.name);
  char separator = '[';
  for (const zarel::AnswerAttribute& attribute : object.attributes) {
    out += separator;
    append_attribute(out, attribute);
    separator = ',';
  }
  out += ']';
  append_space(out, object.space);
}

void append_statement(std::string& out, const ObjectStatement& statement) {
  append_term(out, statement.object);
  out += statement.is_negated ? "[-" : "[";
  append_term(out, statement.attribute);
  if (!statement.arrow.empty()) {
    out += statement.arrow;
    append_term(out, statement.value);
  }
  out += ']';
  append_space(out, statement.space);
}

void append_costs(std::string& out, const AnswerSet& set) {
  bool is_first = true;
  for (const Cost& cost : set.costs) {
    out += is_first ? "Cost ([Weight:Level]): <[" : "\"[";
    ((out += cost.weight) += ':') += cost.level;
    out += is_first ? "]>\n" : "]\"\n";
    is_first = false;
  }
}

std::string without_blanks(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  std::string kept;
  kept.reserve(text.size());
  bool in_string = false;
  for (const char c : text) {
    if (c == '"') in_string = !in_string;
    if (in_string || kBlanks.find(c) == std::string_view::npos) kept += c;
  }
  return kept;
}

}    // namespace workbench
