#include "dl/relations.h"

namespace dl {

Relations::Relations() {
  symbol("");
  symbol("_");    // neither is the text of a simple term
}

std::size_t Relations::Hash::operator()(const Relation& relation) const {
  const std::uint64_t keys = (std::uint64_t{relation.keys[0]} << 32) + relation.keys[1];
  return static_cast<std::size_t>((keys * 0x9e3779b97f4a7c15u) ^ (keys >> 29)) +
         relation.predicate * std::size_t{0x85ebca6b};
}

Symbol Relations::symbol(std::string_view text) {
  const auto found = symbols_.find(text);
  if (found != symbols_.end()) return found->second;
  const auto added = symbols_.emplace(text, static_cast<Symbol>(texts_.size())).first;
  texts_.push_back(&added->first);
  return added->second;
}

PredicateId Relations::predicate(const Term& atom) {
  const std::uint32_t arity = atom.arguments.size();    // folded or not
  key_.assign(1, atom.strongly_negated ? '-' : '+');
  ((key_ += atom.name) += '/') += std::to_string(arity);
  const auto [found, is_new] =
      predicate_numbers_.try_emplace(key_, static_cast<PredicateId>(predicates_.size()));
  if (is_new) {
    const bool generic = is_generic(atom.name);
    predicates_.push_back({names_.emplace_back(atom.name), generic, generic && arity >= kKeys});
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
  const auto begin = static_cast<std::uint32_t>(out.arguments.size());
  for (std::uint32_t i = atom.arguments.begin; i < atom.arguments.end; ++i) {
    out.arguments.push_back(argument(statement, statement.terms[statement.arguments[i]]));
  }
  return {predicate(atom), term, {begin, static_cast<std::uint32_t>(out.arguments.size())}};
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
  for (const Aggregate& aggregate : statement.aggregates) {
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
