#include "dl/folding.h"

#include <algorithm>

#include "dl/names.h"

namespace dl {
namespace {

constexpr std::string_view kFrames = "a_5";
constexpr std::uint32_t kFrameArity = 6;
// The bits of Term::simple that their keys have.
constexpr std::uint32_t kGenericKeys = 0b11;
constexpr std::uint32_t kFrameKeys = 0b101011;

bool may_be_frame(const Term& atom) {
  return atom.arity == kFrameArity && atom.name == kFrames;
}

// Whether it is the usual atom, whose keys need no further look.
bool has_plain_keys(const Term& atom) {
  return (atom.simple & kGenericKeys) == kGenericKeys && !may_be_frame(atom);
}

// Whether an atom that is not folded tells an attribute's value.
bool is_frame(const Statement& statement, const Term& atom) {
  if (!may_be_frame(atom)) return false;
  const std::string_view text = statement.slice(atom.text);
  return text.substr(text.find('(') + 1).starts_with("valueOf,");
}

// The end of the string that begins there, as clingo or as the input writes it.
enum class Escapes : bool { kNone, kBackslash };
std::size_t end_of_string(std::string_view text, std::size_t begin, Escapes escapes) {
  std::size_t end = begin + 1;
  while (end < text.size() && text[end] != '"') {
    end += text[end] == '\\' && escapes == Escapes::kBackslash ? 2 : 1;
  }
  return end + 1;
}

// The end of the part of a name that begins there, as the input spells it: at a prime, or where the
// arguments begin.
std::size_t end_of_key(std::string_view text, std::size_t begin) {
  if (text[begin] == '"') return end_of_string(text, begin, Escapes::kNone);
  std::size_t end = begin;
  while (end < text.size() && text[end] != '\'' && text[end] != '(') ++end;
  return end;
}

// The end of the term that begins there, behind which a comma or parenthesis stands.
std::size_t end_of_term(std::string_view text, std::size_t begin, Escapes escapes) {
  std::size_t depth = 0;
  std::size_t end = begin;
  while (depth != 0 || (text[end] != ',' && text[end] != ')')) {
    if (text[end] == '"') {
      end = end_of_string(text, end, escapes);
      continue;
    }
    if (text[end] == '(') ++depth;
    if (text[end] == ')') --depth;
    ++end;
  }
  return end;
}

// Writes the folded atom behind all other text, which stays where it is.
void append_folded(Statement& statement, Term& term) {
  const std::string atom(statement.slice(term.text));
  std::string& out = statement.text;
  term.text.begin = static_cast<std::uint32_t>(out.size());
  std::size_t end = atom.find('(');
  out += std::string_view(atom).substr(0, end);
  const auto next = [&] {
    const std::size_t begin = end + 1;
    end = end_of_term(atom, begin, Escapes::kBackslash);
    return std::string_view(atom).substr(begin, end - begin);
  };
  const auto append_key = [&] {
    out += '\'';
    append_name_part(out, next());
  };
  append_key();
  append_key();
  if (term.keys == kMostKeys) {
    const std::string_view object = next();
    append_key();
    const std::string_view value = next();
    append_key();
    ((((out += '(') += object) += ',') += value) += ')';
  } else if (atom[end] == ',') {
    (out += '(') += std::string_view(atom).substr(end + 1);
  }
  term.text.end = static_cast<std::uint32_t>(out.size());
}

// What begins there is an attribute, an arrow, and the object and value in parentheses.
void unfold_frame(std::string& text, std::size_t begin) {
  const std::size_t prime = end_of_key(text, begin);
  const std::size_t open = end_of_key(text, prime + 1);
  const std::size_t comma = end_of_term(text, open + 1, Escapes::kNone);
  const std::string written = text.substr(begin);
  const auto piece = [&](std::size_t from, std::size_t to) {
    return std::string_view(written).substr(from - begin, to - from);
  };
  text.resize(begin);
  text += piece(open + 1, comma + 1);
  (text += piece(begin, prime)) += piece(comma, begin + written.size() - 1);
  ((text += ',') += piece(prime + 1, open)) += ')';
}

}    // namespace

bool is_generic(std::string_view name) {
  return name.starts_with("a_") && name.size() > 2 &&
         name.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

std::uint32_t Folding::keys_of(const Statement& statement, const Term& atom) const {
  if (atom.keys != 0) return atom.keys;
  if (atom.arity < kKeys || !is_generic(atom.name)) return 0;
  return folds_attributes_ && is_frame(statement, atom) ? kMostKeys : kKeys;
}

bool Folding::has_simple_keys(const Statement& statement, const Term& atom) const {
  if (has_plain_keys(atom)) return true;
  const bool is_whole = folds_attributes_ && is_frame(statement, atom);
  const std::uint32_t keys = is_whole ? kFrameKeys : kGenericKeys;
  return (atom.simple & keys) == keys;
}

void Folding::see_fact(const Statement& statement, const Term& atom) {
  if (has_simple_keys(statement, atom) || !is_generic(atom.name)) return;
  if (may_be_frame(atom)) folds_attributes_ = false;
  if ((atom.simple & kGenericKeys) != kGenericKeys) kept_.emplace(atom.name);
}

void Folding::see(const Statement& statement, const Term& atom) {
  if (has_simple_keys(statement, atom) || !is_generic(atom.name)) return;
  // One that may or may not be a frame.
  if (may_be_frame(atom) && (atom.simple & 1) == 0) folds_attributes_ = false;
  if ((atom.simple & kGenericKeys) == kGenericKeys) {
    has_open_attributes_ = true;
  } else {
    open_.emplace(atom.name);
  }
}

PredicateNames Folding::undecided() const {
  PredicateNames names = open_;
  if (folds_attributes_ && has_open_attributes_) names.emplace(kFrames);
  for (const std::string& kept : kept_) names.erase(kept);
  return names;
}

// See Note [folded atoms].
void Folding::fold(Statement& statement, std::uint32_t atom) const {
  Term& term = statement.terms[atom];
  if (!is_on_ || !is_generic(term.name) || kept_.contains(term.name)) return;
  if (!has_simple_keys(statement, term)) {
    term.open = statement.is_open = true;
    return;
  }
  const bool is_whole = folds_attributes_ && is_frame(statement, term);
  term.keys = is_whole ? kMostKeys : kKeys;
  term.arity -= term.keys;
  std::string& text = statement.text;
  if (term.keys == kMostKeys) return append_folded(statement, term);
  const std::size_t open = text.find('(', term.text.begin);
  const std::size_t comma = text.find(',', open);
  const std::size_t end = text.find(term.arity == 0 ? ')' : ',', comma + 1);
  if (text[open + 1] == '"' || text[comma + 1] == '"') {
    return append_folded(statement, term);
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
  if (atom.keys == 0) return atom.name;
  std::string_view text = statement.slice(atom.text);
  if (atom.strongly_negated) text.remove_prefix(1);
  return text.substr(0, text.find('('));
}

std::string_view unfolded_predicate(std::string_view predicate) {
  return predicate.substr(0, predicate.find('\''));
}

void unfold(std::string& text, std::size_t begin) {
  const std::size_t first = end_of_key(text, begin);
  if (first == text.size() || text[first] == '(') return;
  const std::size_t second = end_of_key(text, first + 1);
  const std::size_t end = end_of_key(text, second + 1);
  text[first] = '(';
  text[second] = ',';
  if (end == text.size()) {
    text += ')';
    return;
  }
  const bool is_frame = text[end] == '\'';
  text[end] = ',';
  if (is_frame) unfold_frame(text, end + 1);
}

}    // namespace dl
