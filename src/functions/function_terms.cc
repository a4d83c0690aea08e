#include "functions/function_terms.h"

#include <algorithm>
#include <vector>

#include "model/printer.h"

namespace zarel {
namespace {

bool is_placeholder(const TERMT& term) {
  return term.kind == TermKind::kFunctionTerm;
}

// The atom with variables for its placeholders; the builtin atom of each is added to `found`.
ATOMT without_placeholders(const ATOMT& atom, std::vector<ATOMT>& found) {
  const std::span<const TERMT> terms = atom.terms();
  if (std::none_of(terms.begin(), terms.end(), is_placeholder)) return atom;
  const StoredList<TERMT> rewritten = program_storage().store(terms);
  for (TERMT& term : rewritten.elements()) {
    if (!is_placeholder(term)) continue;
    found.push_back(buildFunctionAtom(term));
    term.kind = TermKind::kVariable;
  }
  return atom.with_terms(rewritten, atom.asterisk_count());
}

const FTERM& function_of(const TERMT& placeholder) {
  return *FTermTable().find(placeholder.index());
}

}    // namespace

bool hasFunctionTerm() {
  return FTermTable().count() != 0;
}

TERMT newFTERM(NameId functor, std::span<const TERMT> arguments) {
  std::string name = "F_";
  name.append(names().spelling(functor)).append("_").append(std::to_string(FTermTable().count()));
  TERMT term = newTERMT(name);
  term.kind = TermKind::kFunctionTerm;
  FTermTable().enter(term.index(), {functor, {arguments.begin(), arguments.end()}});
  return term;
}

ATOMT buildFunctionAtom(const TERMT& placeholder) {
  const FTERM& function = function_of(placeholder);
  std::vector<TERMT> terms = {TERMT::variable(placeholder.index()),
                              TERMT::constant(function.functor)};
  terms.insert(terms.end(), function.arguments.begin(), function.arguments.end());
  return {kFunctionBuiltin, terms, PREDICATE_NAMETS::TYPE::kBuiltin};
}

void rewriteFunctionsInHead(Head& head, Body& body) {
  std::vector<ATOMT> found;
  for (ATOMT& atom : head.atoms()) atom = without_placeholders(atom, found);
  for (const ATOMT& atom : found) body.add({atom, false});
}

// The atoms that a pass adds may hold inner placeholders: the next pass looks at them alone, until
// none are left.
void rewriteFunctionsInBody(Body& body) {
  std::vector<ATOMT> found;
  for (std::size_t i = 0; i < body.size(); ++i)
    body[i].atom = without_placeholders(body[i].atom, found);
  while (!found.empty()) {
    std::vector<ATOMT> inner;
    for (const ATOMT& atom : found) body.add({without_placeholders(atom, inner), false});
    found.swap(inner);
  }
}

void rewriteFunctions(Head* head, Body& body) {
  if (head != nullptr) rewriteFunctionsInHead(*head, body);
  rewriteFunctionsInBody(body);
  FTermTable().clear();
}

// A loop with a stack of its own: terms may be nested deeper than the call stack stands.
std::string fromFunctionToString(const TERMT& placeholder) {
  struct Open {
    const FTERM* function;
    std::size_t next;
  };
  Text text(names().spelling(function_of(placeholder).functor));
  text += '(';
  std::vector<Open> open{{&function_of(placeholder), 0}};
  while (!open.empty()) {
    auto& [function, next] = open.back();
    if (next == function->arguments.size()) {
      text += ')';
      open.pop_back();
      continue;
    }
    if (next != 0) text += ',';
    const TERMT& argument = function->arguments[next++];
    if (is_placeholder(argument)) {
      text += names().spelling(function_of(argument).functor);
      text += '(';
      open.push_back({&function_of(argument), 0});
    } else {
      append_text(text, argument);
    }
  }
  return text.str();
}

}    // namespace zarel
