#include "parser/clause_builder.h"

#include <charconv>

#include "base/characters.h"
#include "frames/frame_rule.h"
#include "functions/function_terms.h"
#include "model/names.h"
#include "parser/flat_fact.h"
#include "parser/reading_scope.h"

namespace zarel {

// Before what follows is read: its predicates are recorded behind those of the frame.
void ClauseBuilder::next_disjunct() {
  if (!head_frame_) return;
  const auto literals =
      standardize(*head_frame_, FramePosition::kHead, definition_.frame_context());
  for (const Literal& literal : literals) head_.add(literal.atom);
  head_frame_.reset();
}

// A frame alone stays one until the body is known: each of its statements then heads a clause of
// its own.
void ClauseBuilder::close_head() {
  if (head_.size() != 0) next_disjunct();
}

SourceRange ClauseBuilder::place_in(const TokenText& fact, std::string_view part) const {
  const SourceRange whole = work_.where().range;
  const auto begin = static_cast<std::uint32_t>(part.data() - fact.begin) + whole.first_column;
  const auto length = static_cast<std::uint32_t>(part.size());
  return {whole.first_line, begin, whole.first_line, begin + length - 1};
}

// An integer may be reported: it stands where it is in the fact, not where that is.
TERMT ClauseBuilder::flat_integer(std::string_view digits, const TokenText& fact) {
  std::uint32_t value = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), value);
  const SourceRange own = place_in(fact, digits);
  const ReadingScope at_own(work_, &own);
  return terms_.bounds().integer(value);
}

TERMT ClauseBuilder::flat_term(std::string_view text, const TokenText& fact) {
  if (is_digit(text[0])) return flat_integer(text, fact);
  const NameId name = names().intern(text);
  return is_upper_case(text[0]) ? terms_.variable(name) : terms_.constant(name);
}

// As a tree. See Note [written statements].
void ClauseBuilder::tell_whole_fact(const TokenText& text, NameId name) {
  FlatFact parts({text.begin, text.length});
  const SourceRange name_place = place_in(text, parts.next());
  std::size_t arity = 0;
  for (std::string_view term = parts.next(); !term.empty(); term = parts.next(), ++arity) {
    const SourceRange own = place_in(text, term);
    const ReadingScope at_own(work_, &own);
    if (is_digit(term[0])) {
      std::uint32_t value = 0;
      std::from_chars(term.data(), term.data() + term.size(), value);
      tree_.leaf(WrittenKind::kInteger, {}, value);
    } else {
      const bool is_variable = is_upper_case(term[0]);
      tree_.leaf(is_variable ? WrittenKind::kVariable : WrittenKind::kConstant,
                 names().intern(term));
    }
  }
  WrittenNode& atom = tree_.named(WrittenKind::kAtom, arity, name, &name_place);
  atom.second_name = spaces_.current();
  tree_.head_element();
  tree_.statement(WrittenStatement::Kind::kRule);
}

void ClauseBuilder::flat_fact(const TokenText& text) {
  const bool is_told = tree_.is_open();
  if (is_told) tree_.pause();
  bool has_variable = false;
  std::uint32_t arity = 0;
  FlatFact parts({text.begin, text.length});
  const NameId name = names().intern(parts.next());
  TermsMark list = terms_.empty_list();
  for (std::string_view term = parts.next(); !term.empty(); term = parts.next()) {
    const TERMT made = flat_term(term, text);
    has_variable = has_variable || made.is_variable();
    ++arity;
    list = terms_.next(list, made);
  }
  if (is_told && (has_variable || definition_.is_open())) {
    tell_whole_fact(text, name);
  } else if (is_told) {
    tree_.flat_fact(name, arity, spaces_.current());
  }
  head_.add(atoms_.atom({name, work_.reading}, list, spaces_.current()));
  add_rule(nullptr);
}

void ClauseBuilder::fact() {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kRule);
  close_head();
  add_rule(nullptr);
}

void ClauseBuilder::rule(Body* body) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kRule);
  add_rule(body);
}

void ClauseBuilder::add_rule(Body* body) {
  if (hasFunctionTerm()) {
    if (body == nullptr) body = bodies_.empty();
    rewriteFunctions(&head_, *body);
  }
  if (head_frame_) return frame_rule(body);
  definition_.clauses().emplace_back(Rule(head_.atoms(), body), work_.source());
}

void ClauseBuilder::frame_rule(const Body* body) {
  add_frame_rule(*head_frame_, body, definition_.frame_context(), definition_.clauses());
}

void ClauseBuilder::range_fact(WrittenName name, const TERMT& first, const TERMT& last) {
  if (tree_.is_open()) tree_.range(name.id, name.place, spaces_.currentDefaultNs());
  const WorkScope made_of_range(OriginId::kRange);
  const TERMT variable = newTERMT(getNameTerm({}, 0));
  head_.add(atoms_.atom(name, terms_.first(variable), spaces_.current()));
  Body* const body = bodies_.first_literal(atoms_.builtin(BUILTIN::kInt, {variable}));
  bodies_.next_literal(body, atoms_.builtin(BUILTIN::kGreaterOrEqual, {variable, first}));
  bodies_.next_literal(body, atoms_.builtin(BUILTIN::kLessOrEqual, {variable, last}));
  add_rule(body);
}

void ClauseBuilder::constraint(Body* body) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kConstraint);
  rewriteFunctions(nullptr, *body);
  definition_.clauses().emplace_back(Constraint(*body), work_.source());
}

void ClauseBuilder::weak_constraint(Body* body, const WeakCost& cost) {
  if (tree_.is_open()) {
    tree_.statement(WrittenStatement::Kind::kWeakConstraint,
                    {cost.weight.kind != TermKind::kAbsent, cost.level.kind != TermKind::kAbsent});
  }
  rewriteFunctions(nullptr, *body);
  definition_.clauses().emplace_back(WeakConstraint(*body, cost), work_.source());
}

}    // namespace zarel
