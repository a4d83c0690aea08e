#include "functions/function_terms.h"

#include <algorithm>
#include <array>
#include <vector>

#include "model/printer.h"
#include "model/run.h"

namespace zarel {
namespace {

bool is_placeholder(const TERMT& term) {
  return term.kind == TermKind::kFunctionTerm;
}

// The names of placeholders that were made last: most rules have some in common.
class PlaceholderNames {
 public:
  NameId get(NameId functor, std::uint32_t number) {
    Entry& entry = entries_[(to_index(functor) * 8 + number) % kEntries];
    if (entry.functor != functor || entry.number != number || !entry.is_made)
      entry = {functor, number, true, names().intern(spelling(functor, number))};
    return entry.name;
  }

  NameId builtin() const { return builtin_; }

  // For the placeholders of one rule, used again for the next.
  std::vector<TERMT>& found() {
    found_.clear();
    return found_;
  }

 private:
  struct Entry {
    NameId functor;
    std::uint32_t number;
    bool is_made;
    NameId name;
  };
  static constexpr std::size_t kEntries = 4096;

  static std::string spelling(NameId functor, std::uint32_t number) {
    std::string name = "F_";
    return name.append(names().spelling(functor)).append("_").append(std::to_string(number));
  }

  std::vector<Entry> entries_{kEntries, Entry{}};
  NameId builtin_ = names().intern(kFunctionBuiltin);
  std::vector<TERMT> found_;
};

PlaceholderNames& placeholder_names() {
  return current_run().parts.get<PlaceholderNames>();
}

// Makes the placeholders of an atom variables; what they stand for is added to `found`.
void take_placeholders(std::span<TERMT> terms, std::vector<TERMT>& found) {
  for (TERMT& term : terms) {
    if (!is_placeholder(term)) continue;
    found.push_back(term);
    term.kind = TermKind::kVariable;
  }
}

void take_placeholders(ATOMT& atom, std::vector<TERMT>& found) {
  if (atom.payload() == ATOMT::Payload::kTerms) take_placeholders(atom.own_terms(), found);
}

FTERM function_of(const TERMT& placeholder) {
  return *FTermTable().find(placeholder.index());
}

}    // namespace

bool hasFunctionTerm() {
  return FTermTable().count() != 0;
}

TERMT newFTERM(NameId functor, std::span<const TERMT> arguments) {
  TERMT term = newTERMT(placeholder_names().get(functor, FTermTable().count()));
  term.kind = TermKind::kFunctionTerm;
  FTermTable().enter(term.index(), {functor, arguments});
  return term;
}

ATOMT buildFunctionAtom(const TERMT& placeholder) {
  const FTERM function = function_of(placeholder);
  const std::size_t size = function.arguments.size() + 2;
  const StoredList<TERMT> list = program_storage().make_list<TERMT>(size);
  const std::span<TERMT> terms = list.elements();
  terms[0] = TERMT::variable(placeholder.index());
  terms[1] = TERMT::constant(function.functor);
  std::copy(function.arguments.begin(), function.arguments.end(), terms.begin() + 2);
  return {placeholder_names().builtin(), list, PREDICATE_NAMETS::TYPE::kBuiltin};
}

void rewriteFunctionsInHead(Head& head, Body& body) {
  std::vector<TERMT>& found = placeholder_names().found();
  for (ATOMT& atom : head.atoms()) take_placeholders(atom, found);
  for (const TERMT& placeholder : found) body.add({buildFunctionAtom(placeholder), false});
}

// The atoms that are added may hold inner placeholders, whose atoms stand behind all of the outer
// ones.
void rewriteFunctionsInBody(Body& body) {
  std::vector<TERMT>& found = placeholder_names().found();
  for (std::size_t i = 0; i < body.size(); ++i) take_placeholders(body[i].atom, found);
  for (std::size_t i = 0; i < found.size(); ++i) {
    ATOMT atom = buildFunctionAtom(found[i]);
    take_placeholders(atom, found);
    body.add({atom, false});
  }
}

void rewriteFunctions(Head* head, Body& body) {
  if (!hasFunctionTerm()) return;
  if (head != nullptr) rewriteFunctionsInHead(*head, body);
  rewriteFunctionsInBody(body);
  FTermTable().clear();
}

// A loop with a stack of its own: terms may be nested deeper than the call stack stands.
std::string fromFunctionToString(const TERMT& placeholder) {
  struct Open {
    FTERM function;
    std::size_t next;
  };
  Text text(names().spelling(function_of(placeholder).functor));
  text += '(';
  std::vector<Open> open{{function_of(placeholder), 0}};
  while (!open.empty()) {
    auto& [function, next] = open.back();
    if (next == function.arguments.size()) {
      text += ')';
      open.pop_back();
      continue;
    }
    if (next != 0) text += ',';
    const TERMT& argument = function.arguments[next++];
    if (is_placeholder(argument)) {
      text += names().spelling(function_of(argument).functor);
      text += '(';
      open.push_back({function_of(argument), 0});
    } else {
      append_text(text, argument);
    }
  }
  return text.str();
}

}    // namespace zarel
