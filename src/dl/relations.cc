#include "dl/relations.h"

namespace dl {

Relations::Relations(const Folding& folding) : folding_(folding) {
  symbol("");
  symbol("_");    // neither is the text of a simple term
}

std::size_t Relations::Hash::operator()(const Relation& relation) const {
  std::size_t hash = relation.predicate;
  for (const Symbol key : relation.keys) {
    hash = (hash + key) * std::size_t{0x9e3779b97f4a7c15u};
    hash ^= hash >> 29;
  }
  return hash;
}

Symbol Relations::symbol(std::string_view text) {
  const auto found = symbols_.find(text);
  if (found != symbols_.end()) return found->second;
  const auto added = symbols_.emplace(text, static_cast<Symbol>(texts_.size())).first;
  texts_.push_back(&added->first);
  return added->second;
}

// The frames of Zarel are a predicate of their own where their attributes are folded.
PredicateId Relations::predicate(const Statement& statement, const Term& atom) {
  const std::uint32_t keys = folding_.keys_of(statement, atom);
  key_.assign(1, atom.strongly_negated ? '-' : '+');
  ((key_ += atom.name) += '/') += std::to_string(atom.arguments.size());
  if (keys == kMostKeys) key_ += '/';
  const auto [found, is_new] =
      predicate_numbers_.try_emplace(key_, static_cast<PredicateId>(predicates_.size()));
  if (is_new) {
    predicates_.push_back({names_.emplace_back(atom.name), is_generic(atom.name), keys});
  }
  return found->second;
}

RelationId Relations::number(const Relation& relation) {
  const auto [found, is_new] =
      relation_numbers_.try_emplace(relation, static_cast<RelationId>(relations_.size()));
  if (is_new) relations_.push_back(relation);
  return found->second;
}

std::optional<RelationId> Relations::find(const Relation& relation) const {
  const auto found = relation_numbers_.find(relation);
  if (found == relation_numbers_.end()) return std::nullopt;
  return found->second;
}

Argument Relations::argument(const Statement& statement, const Term& term) {
  if (is_simple(term.kind)) return {ArgumentKind::kSymbol, symbol(statement.slice(term.text))};
  if (term.kind == TermKind::kVariable) return {ArgumentKind::kVariable, term.variable};
  return {term.kind == TermKind::kAnonymous ? ArgumentKind::kAnonymous : ArgumentKind::kUnclear, 0};
}

AtomShape Relations::shape(const Statement& statement, std::uint32_t term, Shapes& out) {
  const Term& atom = statement.terms[term];
  const PredicateId number = predicate(statement, atom);
  const auto begin = static_cast<std::uint32_t>(out.arguments.size());
  for (std::uint32_t i = 0; i < atom.arguments.size(); ++i) {
    const std::uint32_t place = written_place(i, predicates_[number].keys);
    out.arguments.push_back(argument(statement, statement.listed_argument(atom, place)));
  }
  return {number, term, {begin, static_cast<std::uint32_t>(out.arguments.size())}};
}

RuleShape Relations::shape(const Statement& statement, Shapes& out) {
  const auto end = [&out] { return static_cast<std::uint32_t>(out.atoms.size()); };
  RuleShape rule;
  rule.heads.begin = end();
  for (const std::uint32_t head : statement.heads) {
    out.atoms.push_back(shape(statement, head, out));
  }
  rule.heads.end = rule.positives.begin = end();
  add_body(statement, statement.body, true, false, out);
  rule.positives.end = rule.others.begin = end();
  add_body(statement, statement.body, false, true, out);
  rule.literals = statement.body.size();
  for (const Aggregate& aggregate : statement.aggregates) {
    rule.literals += aggregate.body.size();
    add_body(statement, aggregate.body, true, true, out);
  }
  rule.others.end = end();
  return rule;
}

void Relations::add_body(const Statement& statement, const std::vector<Literal>& body,
                         bool positives, bool others, Shapes& out) {
  for (const Literal& literal : body) {
    if (literal.kind != kAtom || !(literal.negated ? others : positives)) continue;
    out.atoms.push_back(shape(statement, literal.term, out));
  }
}

}    // namespace dl
