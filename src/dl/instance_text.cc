#include "dl/instance_text.h"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "dl/folding.h"

namespace dl {
namespace {

std::string folded_name(const Instances& instances, const Term& atom, const Relation& relation) {
  std::string name = atom.strongly_negated ? "-" : "";
  const std::uint32_t count = instances.keys(relation.predicate);
  std::array<std::string_view, kMostKeys> keys;
  for (std::uint32_t i = 0; i < count; ++i) keys[i] = instances.text(relation.keys[i]);
  append_folded_name(name, atom.name, std::span(keys).first(count));
  return name;
}

TermKind kind_of(std::string_view text) {
  if (text.front() == '"') return TermKind::kString;
  return text.front() >= '0' && text.front() <= '9' ? TermKind::kInteger : TermKind::kConstant;
}

std::uint32_t size_of(const std::string& text) {
  return static_cast<std::uint32_t>(text.size());
}

}    // namespace

std::string view_body(const Instances& instances, const Statement& statement, const AtomShape& atom,
                      const Relation& relation) {
  const Term& term = statement.terms[atom.term];
  const std::uint32_t keys = instances.keys(relation.predicate);
  std::string body = folded_name(instances, term, relation);
  std::string equalities;
  for (std::uint32_t i = 0; i < term.arguments.size(); ++i) {
    const Term& argument = statement.listed_argument(term, written_place(i, keys));
    if (i >= keys) {
      (body += i == keys ? '(' : ',') += statement.slice(argument.text);
    } else if (argument.kind == TermKind::kVariable) {
      ((equalities += ',') += statement.slice(argument.text)) += '=';
      equalities += instances.text(relation.keys[i]);
    }
  }
  if (term.arguments.size() > keys) body += ')';
  return body + equalities;
}

void replace_by_view(Statement& statement, const AtomShape& atom, const std::string& helper) {
  Term& term = statement.terms[atom.term];
  term.text = {size_of(statement.text), size_of(statement.text) + size_of(helper)};
  statement.text += helper;
  term.arguments = {};
  term.open = term.strongly_negated = false;
}

Statement& InstanceMaker::make(const std::vector<Symbol>& values) {
  instance_ = statement_;
  values_.assign(instance_.variables.size(), kNoSymbol);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const VariableId variable = plan_.slots[i].variable;
    if (variable != kUnnamed) values_[variable] = values[i];
  }
  write_atoms(values);
  const auto all = static_cast<VariableId>(values_.size());
  is_used_.assign(all, use_ == VariableUse::kAsAnswers ? 1 : 0);
  for (const std::uint32_t head : instance_.heads) note_uses(instance_.terms[head].uses);
  renew_uses(instance_.body);
  for (Aggregate& aggregate : instance_.aggregates) {
    renew_uses(aggregate.body);
    note_uses(aggregate.uses);
  }
  for (VariableId variable = 0; variable < all; ++variable) {
    if (is_used_[variable] && values_[variable] != kNoSymbol) {
      add_equality(variable, values_[variable]);
    }
  }
  return instance_;
}

// The atoms of the plan get their relation, and the others outside aggregates the values alone.
void InstanceMaker::write_atoms(const std::vector<Symbol>& values) {
  for (const InstancePlan::Atom& atom : plan_.atoms) {
    Term& term = instance_.terms[atom.shape.term];
    const Relation relation = Instances::relation_of(atom, values);
    term.keys = instances_.keys(relation.predicate);
    term.arity -= term.keys;
    term.open = false;
    write_atom(atom.shape.term, folded_name(instances_, term, relation));
  }
  for (const std::uint32_t head : instance_.heads) write_other_atom(head);
  for (const Literal& literal : instance_.body) {
    if (literal.kind == kAtom) write_other_atom(literal.term);
  }
}

void InstanceMaker::write_other_atom(std::uint32_t term) {
  const Term& atom = instance_.terms[term];
  const bool has_values = std::ranges::any_of(instance_.uses_of(atom), [this](const Use& use) {
    return use.variable != kUnnamed && values_[use.variable] != kNoSymbol;
  });
  if (!has_values || atom.arguments.size() == 0) return;
  const std::string_view text = instance_.slice(atom.text);
  write_atom(term, std::string(text.substr(0, text.find('('))));
}

// Writes the atom anew behind all text. What is nested in its arguments stays as it is.
void InstanceMaker::write_atom(std::uint32_t term, std::string predicate) {
  Term& atom = instance_.terms[term];
  const auto uses_begin = static_cast<std::uint32_t>(instance_.uses.size());
  std::string text = std::move(predicate);
  for (std::uint32_t i = atom.keys; i < atom.arguments.size(); ++i) {
    const Term& argument = instance_.listed_argument(atom, written_place(i, atom.keys));
    text += i == atom.keys ? '(' : ',';
    if (argument.kind == TermKind::kVariable && values_[argument.variable] != kNoSymbol) {
      text += instances_.text(values_[argument.variable]);
      continue;
    }
    text += instance_.slice(argument.text);
    for (std::uint32_t use = argument.uses.begin; use < argument.uses.end; ++use) {
      instance_.uses.push_back(Use(instance_.uses[use]));
    }
  }
  if (atom.arguments.size() > atom.keys) text += ')';
  atom.text = {size_of(instance_.text), size_of(instance_.text) + size_of(text)};
  instance_.text += text;
  atom.uses = {uses_begin, static_cast<std::uint32_t>(instance_.uses.size())};
}

void InstanceMaker::renew_uses(std::vector<Literal>& body) {
  for (Literal& literal : body) {
    if (literal.kind == kAtom) literal.uses = instance_.terms[literal.term].uses;
    note_uses(literal.uses);
  }
}

void InstanceMaker::note_uses(Slice uses) {
  for (std::uint32_t i = uses.begin; i < uses.end; ++i) {
    const VariableId variable = instance_.uses[i].variable;
    if (variable != kUnnamed) is_used_[variable] = 1;
  }
}

void InstanceMaker::add_equality(VariableId variable, Symbol value) {
  const auto use = static_cast<std::uint32_t>(instance_.uses.size());
  instance_.uses.push_back(Use(*std::ranges::find(instance_.uses, variable, &Use::variable)));
  Term left;
  left.kind = TermKind::kVariable;
  left.variable = variable;
  left.text = instance_.variables[variable];
  left.uses = {use, use + 1};
  Term right;
  const std::string& text = instances_.text(value);
  right.kind = kind_of(text);
  right.text = {size_of(instance_.text), size_of(instance_.text) + size_of(text)};
  instance_.text += text;
  Literal literal;
  literal.kind = kEqual;
  literal.arguments.begin = static_cast<std::uint32_t>(instance_.arguments.size());
  literal.uses = left.uses;
  for (const Term& term : {left, right}) {
    instance_.arguments.push_back(static_cast<std::uint32_t>(instance_.terms.size()));
    instance_.terms.push_back(term);
  }
  literal.arguments.end = static_cast<std::uint32_t>(instance_.arguments.size());
  instance_.body.push_back(literal);
  instance_.atoms_only = false;
}

}    // namespace dl
