#include "dl/folding.h"

#include <algorithm>

#include "base/characters.h"
#include "dl/names.h"

namespace dl {
namespace {

constexpr std::string_view kGeneric = "a_";    // and a number
constexpr std::string_view kFrames = "a_5";
constexpr std::size_t kFewestParts = 3;
constexpr std::size_t kMostParts = 5;
constexpr std::size_t kLongestSpelling = 4;    // of a character in a name
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
  return std::min(end + 1, text.size());
}

// The end of the part of a name that begins there, as the input spells it: at a prime, or where the
// arguments begin.
std::size_t end_of_key(std::string_view text, std::size_t begin) {
  if (text.substr(begin).starts_with('"')) return end_of_string(text, begin, Escapes::kNone);
  std::size_t end = begin;
  while (end < text.size() && text[end] != '\'' && text[end] != '(') ++end;
  return end;
}

// The end of the term that begins there, behind which a comma or parenthesis stands.
std::size_t end_of_term(std::string_view text, std::size_t begin, Escapes escapes) {
  std::size_t depth = 0;
  std::size_t end = begin;
  while (end < text.size() && (depth != 0 || (text[end] != ',' && text[end] != ')'))) {
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
  std::string& out = statement.text;
  out.reserve(out.size() + kLongestSpelling * term.text.size() + kFrames.size());
  std::string_view atom = statement.slice(term.text);    // stays, there is room
  term.text.begin = static_cast<std::uint32_t>(out.size());
  if (atom.front() == '-') out += '-';
  std::size_t end = atom.find('(');
  const auto next = [&] {
    const std::size_t begin = end + 1;
    end = end_of_term(atom, begin, Escapes::kBackslash);
    return atom.substr(begin, end - begin);
  };
  std::array<std::string_view, kMostKeys> keys{next(), next()};
  if (term.keys == kMostKeys) {
    const std::string_view object = next();
    keys[2] = next();
    const std::string_view value = next();
    keys[3] = next();
    append_folded_name(out, term.name, keys);
    ((((out += '(') += object) += ',') += value) += ')';
  } else {
    append_folded_name(out, term.name, std::span(keys).first(kKeys));
    if (atom[end] == ',') (out += '(') += atom.substr(end + 1);
  }
  term.text.end = static_cast<std::uint32_t>(out.size());
}

// A folded atom as the input spells it: its name taken apart, and what stands in parentheses behind
// that.
struct FoldedAtom {
  std::array<std::string_view, kMostParts> parts;    // of the name
  std::size_t count = 0;
  std::string_view arguments;    // with their parentheses, if there are any
};

FoldedAtom taken_apart(std::string_view atom) {
  FoldedAtom folded;
  std::size_t begin = 0;
  while (folded.count < folded.parts.size()) {
    const std::size_t end = end_of_key(atom, begin);
    folded.parts[folded.count++] = atom.substr(begin, end - begin);
    begin = end;
    if (begin == atom.size() || atom[begin] == '(') break;
    ++begin;
  }
  folded.arguments = atom.substr(begin);
  return folded;
}

// The usual name spaces change places with shorter ones. See Note [folded atoms].
std::string_view exchanged(std::string_view space) {
  constexpr std::array<std::array<std::string_view, 2>, 2> kPairs{
      {{"default", "d"}, {"defaultFlogic", "dF"}}};
  for (const auto& [usual, other] : kPairs) {
    if (space == usual) return other;
    if (space == other) return usual;
  }
  return space;
}

void append_generic(std::string& out, std::string_view relation, std::string_view space,
                    std::string_view arguments) {
  (((out += '(') += relation) += ',') += space;
  if (arguments.empty()) {
    out += ')';
  } else {
    (out += ',') += arguments.substr(1);
  }
}

void append_frame(std::string& out, std::string_view space, std::string_view attribute,
                  std::string_view arrow, std::string_view arguments) {
  const std::size_t comma = end_of_term(arguments, 1, Escapes::kNone);
  if (comma >= arguments.size()) return;    // clingo prints no such thing
  (((out += "a_5(valueOf,") += space) += ',') += arguments.substr(1, comma);
  out += attribute;
  out += arguments.substr(comma, arguments.size() - 1 - comma);
  ((out += ',') += arrow) += ')';
}

}    // namespace

bool is_generic(std::string_view name) {
  return name.starts_with(kGeneric) && name.size() > kGeneric.size() &&
         std::ranges::all_of(name.substr(kGeneric.size()), zarel::is_digit);
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
  append_folded(statement, term);
}

std::string_view predicate_of(const Statement& statement, const Term& atom) {
  if (atom.keys == 0) return atom.name;
  std::string_view text = statement.slice(atom.text);
  if (atom.strongly_negated) text.remove_prefix(1);
  return text.substr(0, text.find('('));
}

void append_folded_name(std::string& out, std::string_view predicate,
                        std::span<const std::string_view> keys) {
  out += predicate;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    append_name_part(out += '\'', i == 1 ? exchanged(keys[i]) : keys[i]);
  }
}

std::string_view unfolded_predicate(std::string_view predicate) {
  return taken_apart(predicate).parts[0];
}

void append_unfolded(std::string& out, std::string_view atom) {
  const bool is_negated = atom.starts_with('-');
  const FoldedAtom folded = taken_apart(atom.substr(is_negated ? 1 : 0));
  if (folded.count < kFewestParts) {
    out += atom;
    return;
  }
  if (is_negated) out += '-';
  const auto& parts = folded.parts;
  const std::string_view space = exchanged(parts[2]);
  if (folded.count == kMostParts) {
    return append_frame(out, space, parts[3], parts[4], folded.arguments);
  }
  out += parts[0];
  append_generic(out, parts[1], space, folded.arguments);
}

}    // namespace dl
