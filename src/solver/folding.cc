#include "solver/folding.h"

#include <algorithm>

#include "solver/names.h"

namespace dl {
namespace {

constexpr std::string_view kGeneric = "a_";

std::size_t end_of_digits(std::string_view text, std::size_t position) {
  while (position < text.size() && text[position] >= '0' && text[position] <= '9') ++position;
  return position;
}

bool is_generic(std::string_view name) {
  return name.starts_with(kGeneric) && name.size() > kGeneric.size() &&
         end_of_digits(name, kGeneric.size()) == name.size();
}

// The end of the constant that begins at `position`; `position` itself if none does.
std::size_t end_of_constant(std::string_view text, std::size_t position) {
  if (position == text.size() || text[position] < 'a' || text[position] > 'z') return position;
  while (position < text.size() && is_word(text[position])) ++position;
  return position;
}

// Whether "(c,d," or "(c,d)" stands there, with constants c and d.
bool begins_with_constants(std::string_view text, std::size_t position) {
  for (const std::string_view mark : {"(", ","}) {
    if (!text.substr(position).starts_with(mark)) return false;
    const std::size_t begin = std::min(text.find_first_not_of(' ', position + 1), text.size());
    position = end_of_constant(text, begin);
    if (position == begin) return false;
  }
  return position < text.size() && (text[position] == ',' || text[position] == ')');
}

}    // namespace

// A look at the text is enough: it finds every use of a name, and what only looks like one, in a
// comment or with a blank before its comma, keeps a predicate from being folded at worst. What
// follows a digit is no name of its own: no statement has a name right behind a number.
Folding::Folding(std::string_view program) : is_on_(true) {
  for (std::size_t begin = program.find(kGeneric); begin != std::string_view::npos;
       begin = program.find(kGeneric, begin + 1)) {
    if (begin > 0 && is_word(program[begin - 1])) continue;
    std::size_t end = begin;
    while (end < program.size() && is_word(program[end])) ++end;
    const std::string_view name = program.substr(begin, end - begin);
    if (is_generic(name) && !begins_with_constants(program, end)) kept_.insert(name);
  }
}

bool Folding::folds(std::string_view name) const {
  return is_on_ && is_generic(name) && !kept_.contains(name);
}

// See Note [folded atoms].
void Folding::fold(Statement& statement, std::uint32_t atom) const {
  Term& term = statement.terms[atom];
  if (term.kind != TermKind::kCompound || !folds(term.name)) return;
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
