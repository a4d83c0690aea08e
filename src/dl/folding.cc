#include "dl/folding.h"

#include <algorithm>

#include "dl/names.h"

namespace dl {
namespace {

// The end of the string that begins there, as clingo or as the input writes it.
enum class Escapes : bool { kNone, kBackslash };
std::size_t end_of_string(std::string_view text, std::size_t begin, Escapes escapes) {
  std::size_t end = begin + 1;
  while (end < text.size() && text[end] != '"') {
    end += text[end] == '\\' && escapes == Escapes::kBackslash ? 2 : 1;
  }
  return end + 1;
}

std::size_t end_of_key(std::string_view text, std::size_t begin, Escapes escapes,
                       std::string_view separators) {
  return text[begin] == '"' ? end_of_string(text, begin, escapes)
                            : std::min(text.find_first_of(separators, begin), text.size());
}

// The folded atom behind all other text, which stays where it is: a string in a name has another
// length.
void append_folded(std::string& out, std::string_view atom) {
  std::size_t end = atom.find('(');
  out += atom.substr(0, end);
  for (std::uint32_t key = 0; key < kKeys; ++key) {
    const std::size_t begin = end + 1;
    end = end_of_key(atom, begin, Escapes::kBackslash, ",)");
    out += '\'';
    append_name_part(out, atom.substr(begin, end - begin));
  }
  if (atom[end] == ',') (out += '(') += atom.substr(end + 1);
}

}    // namespace

bool is_generic(std::string_view name) {
  return name.starts_with("a_") && name.size() > 2 &&
         name.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

void Folding::see_fact(const Term& atom) {
  if (atom.simple < kKeys && is_generic(atom.name)) kept_.emplace(atom.name);
}

void Folding::see(const Term& atom) {
  if (atom.simple < kKeys && is_generic(atom.name)) open_.emplace(atom.name);
}

PredicateNames Folding::undecided() const {
  PredicateNames names;
  std::ranges::set_difference(open_, kept_, std::inserter(names, names.end()));
  return names;
}

// See Note [folded atoms].
void Folding::fold(Statement& statement, std::uint32_t atom) const {
  Term& term = statement.terms[atom];
  if (!is_on_ || !is_generic(term.name) || kept_.contains(term.name)) return;
  if (term.simple < kKeys) {
    term.open = statement.is_open = true;
    return;
  }
  term.folded = true;
  term.arity -= kKeys;
  std::string& text = statement.text;
  const std::size_t open = text.find('(', term.text.begin);
  const std::size_t comma = text.find(',', open);
  const std::size_t end = text.find(term.arity == 0 ? ')' : ',', comma + 1);
  if (text[open + 1] == '"' || text[comma + 1] == '"') {
    const std::string written(statement.slice(term.text));
    term.text.begin = static_cast<std::uint32_t>(text.size());
    append_folded(text, written);
    term.text.end = static_cast<std::uint32_t>(text.size());
    return;
  }
  text[open] = '\'';
  text[comma] = '\'';
  if (term.arity == 0) {
    --term.text.end;
  } else {
    text[end] = '(';
  }
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
  const std::size_t second = end_of_key(text, first + 1, Escapes::kNone, "'");
  const std::size_t open = end_of_key(text, second + 1, Escapes::kNone, "(");
  text[first] = '(';
  text[second] = ',';
  if (open == text.size()) {
    text += ')';
  } else {
    text[open] = ',';
  }
}

}    // namespace dl
