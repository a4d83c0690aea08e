#include "dl/folding.h"

namespace dl {
namespace {

bool is_generic(std::string_view name) {
  return name.starts_with("a_") && name.size() > 2 &&
         name.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

}    // namespace

void Folding::see(const Term& atom) {
  if (atom.constants < 2 && is_generic(atom.name)) kept_.emplace(atom.name);
}

// See Note [folded atoms].
void Folding::fold(Statement& statement, std::uint32_t atom) const {
  Term& term = statement.terms[atom];
  if (!is_on_ || term.constants < 2 || !is_generic(term.name) || kept_.contains(term.name)) return;
  std::string& text = statement.text;
  const std::size_t open = text.find('(', term.text.begin);
  const std::size_t comma = text.find(',', open);
  text[open] = '\'';
  text[comma] = '\'';
  if (term.arity > 2) {
    text[text.find(',', comma)] = '(';
  } else {
    --term.text.end;
  }
  term.arity -= 2;
  term.folded = true;
}

std::string_view predicate_of(const Statement& statement, const Term& atom) {
  if (!atom.folded) return atom.name;
  std::string_view text = statement.slice(atom.text);
  if (atom.strongly_negated) text.remove_prefix(1);
  return text.substr(0, text.find('('));
}

std::string_view unfolded_predicate(std::string_view predicate) {
  return predicate.substr(0, predicate.find('\''));
}

void unfold(std::string& text, std::size_t begin) {
  const std::size_t first = text.find_first_of("('", begin);
  if (first == std::string::npos || text[first] == '(') return;
  const std::size_t second = text.find('\'', first + 1);
  const std::size_t open = text.find('(', second);
  text[first] = '(';
  text[second] = ',';
  if (open == std::string::npos) {
    text += ')';
  } else {
    text[open] = ',';
  }
}

}    // namespace dl
