#include "parser/clause_builder.h"

#include <algorithm>

#include "frames/frame_rule.h"
#include "functions/function_terms.h"
#include "model/names.h"
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

// As a tree. See Note [written statements].
void ClauseBuilder::tell_whole_fact(const FlatAtom& fact, NameId name) {
  const auto name_length = static_cast<std::uint32_t>(fact.name().size());
  const SourceRange name_place = place_in_flat_atom(work_, {{}, 0, name_length, 0});
  for (const FlatPart& part : fact.parts()) {
    const SourceRange own = place_in_flat_atom(work_, part);
    const ReadingScope at_own(work_, &own);
    if (part.kind == FlatPart::Kind::kInteger) {
      tree_.leaf(WrittenKind::kInteger, {}, part.value);
    } else {
      const bool is_variable = part.kind == FlatPart::Kind::kVariable;
      tree_.leaf(is_variable ? WrittenKind::kVariable : WrittenKind::kConstant,
                 names().intern(fact.text(part)));
    }
  }
  WrittenNode& atom = tree_.named(WrittenKind::kAtom, fact.parts().size(), name, &name_place);
  atom.second_name = spaces_.current();
  tree_.head_element();
  tree_.statement(WrittenStatement::Kind::kRule);
}

// A simple one: the scanner takes no other for an observer.
void ClauseBuilder::tell_flat_fact(const FlatAtom& fact, NameId name) {
  const auto is_variable = [](const FlatPart& part) {
    return part.kind == FlatPart::Kind::kVariable;
  };
  tree_.pause();
  if (definition_.is_open() || std::ranges::any_of(fact.parts(), is_variable)) {
    tell_whole_fact(fact, name);
  } else {
    const auto arity = static_cast<std::uint32_t>(fact.parts().size());
    tree_.flat_fact(name, arity, spaces_.current());
  }
}

void ClauseBuilder::flat_fact(const FlatAtom& fact) {
  const NameId name = names().intern(fact.name());
  const TermsMark list = terms_.flat_arguments(fact);
  if (tree_.is_open()) tell_flat_fact(fact, name);
  SourceRange place = *work_.reading;
  if (!fact.is_simple()) --place.last_column;    // the atom, without its full stop
  {
    const ReadingScope at_atom(work_, &place);
    head_.add(atoms_.atom({name, &place}, list, spaces_.current()));
  }
  add_rule(nullptr);
}

void ClauseBuilder::row_fact(NameId name, TermsMark list, NameId frame_space,
                             const SourceSpan& declared) {
  if (tree_.is_open()) {
    const auto arity = static_cast<std::uint32_t>(terms_.size(list));
    tree_.pause();
    tree_.flat_fact(name, arity, frame_space, &declared);
  }
  head_.add(atoms_.atom({name, nullptr}, list, frame_space));
  add_rule(nullptr);
}

void ClauseBuilder::frame_fact(std::span<const FrameStatement> statements) {
  add_frame_facts(statements, definition_.frame_context(), definition_.clauses());
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
  definition_.clauses().emplace_back(CLAUSET::rule_payload(head_.atoms(), body), work_.source());
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
