#include "dl/explain/plain_teller.h"

#include <algorithm>
#include <map>
#include <set>
#include <unordered_map>

namespace dl {
namespace {

constexpr std::uint32_t kNotTold = 0xffffffffu;
constexpr std::size_t kMostReasons = 3;    // for which one negated atom fails

ToldKind told_kind(ProofKind kind) {
  switch (kind) {
    case ProofKind::kFact:
      return ToldKind::kFact;
    case ProofKind::kRule:
      return ToldKind::kRule;
    case ProofKind::kChoice:
      return ToldKind::kChoice;
    case ProofKind::kCases:
      return ToldKind::kCases;
    case ProofKind::kAssumed:
      return ToldKind::kAssumed;
    default:
      return ToldKind::kNotExplained;
  }
}

bool is_by_statement(ProofKind kind) {
  return kind == ProofKind::kRule || kind == ProofKind::kChoice || kind == ProofKind::kCases;
}

ToldItem::Kind item_kind(const StoredLiteral& literal) {
  if (literal.kind == kAggregate) return ToldItem::Kind::kAggregate;
  if (literal.kind != kAtom) return ToldItem::Kind::kComparison;
  return literal.negated ? ToldItem::Kind::kNegation : ToldItem::Kind::kAtom;
}

ToldFailure::Literal::State told_state(LiteralState state) {
  using State = ToldFailure::Literal::State;
  return state == LiteralState::kHolds   ? State::kHolds
         : state == LiteralState::kFails ? State::kFails
                                         : State::kOpen;
}

}    // namespace

// Tells the nodes of one proof in the order of their least distance from a root.
class PlainTeller::ProofTeller {
 public:
  ProofTeller(PlainTeller& teller, const Proof& proof, std::uint32_t depth)
      : teller_(teller),
        proof_(proof),
        depth_(depth),
        told_numbers_(proof.nodes.size(), kNotTold) {}

  ToldProof tell() {
    for (const NodeNumber root : proof_.roots) told_.roots.push_back(number(root, 0));
    InterruptionCheck interruption;
    for (std::size_t next = 0; next < waiting_.size(); ++next) {
      interruption.step();
      tell_node(waiting_[next]);
    }
    return std::move(told_);
  }

 private:
  struct Waiting {
    NodeNumber node;
    std::uint32_t depth;
  };

  std::uint32_t number(NodeNumber node, std::uint32_t depth) {
    if (told_numbers_[node] == kNotTold) {
      told_numbers_[node] = static_cast<std::uint32_t>(waiting_.size());
      waiting_.push_back({node, depth});
    }
    return told_numbers_[node];
  }

  std::uint32_t statement(StatementNumber number) {
    const auto next = static_cast<std::uint32_t>(told_.statements.size());
    const auto [entry, is_new] = statements_.try_emplace(number, next);
    if (is_new) told_.statements.push_back(teller_.statement(number));
    return entry->second;
  }

  void tell_node(const Waiting& waiting) {
    const ProofNode& node = proof_.nodes[waiting.node];
    ToldNode told;
    told.kind = told_kind(node.kind);
    if (node.atom != kNoAtom) told.atom = told.key = teller_.atom(node.atom);
    if (node.kind == ProofKind::kFact) {
      told.statement = static_cast<std::uint32_t>(told_.statements.size());
      told_.statements.push_back(teller_.fact(node.atom));
    }
    if (is_by_statement(node.kind)) {
      told.is_cut = depth_ != 0 && waiting.depth >= depth_;
      if (!told.is_cut) tell_reason(node, waiting.depth + 1, told);
    }
    told_.nodes.push_back(std::move(told));
  }

  void tell_reason(const ProofNode& node, std::uint32_t depth, ToldNode& told) {
    const LiteralWords words = teller_.words(node.statement, node.binding);
    told.statement = statement(node.statement);
    told.with = words.values();
    for (const ProofItem& each : node.items) {
      const StoredStatement& from = teller_.store_.statement(node.statement);
      told.items.push_back(item(each, from.body[each.literal], words, depth));
    }
    for (const ProofNode::Case& each : node.cases) {
      told.cases.push_back({teller_.atom(each.assumed), number(each.node, depth)});
    }
    if (node.kind == ProofKind::kChoice) tell_others(node, words, told);
  }

  // The head may have an atom twice.
  void tell_others(const ProofNode& node, const LiteralWords& words, ToldNode& told) {
    for (const AtomPattern& head : teller_.store_.statement(node.statement).heads) {
      std::string other = words.atom(head);
      if (other != told.atom && std::ranges::find(told.instead_of, other) == told.instead_of.end())
        told.instead_of.push_back(std::move(other));
    }
  }

  ToldItem item(const ProofItem& item, const StoredLiteral& literal, const LiteralWords& words,
                std::uint32_t depth) {
    ToldItem told;
    told.kind = item_kind(literal);
    told.text = words.literal(literal);
    if (item.node != kNoNode) told.node = number(item.node, depth);
    if (item.value != kNoTerm) teller_.speller_.append_term(told.value, item.value);
    for (const ProofItem::Element& element : item.elements) {
      told.elements.push_back({tuple_words(teller_.speller_, element.tuple), {}});
      for (const NodeNumber node : element.nodes) {
        told.elements.back().nodes.push_back(number(node, depth));
      }
    }
    told.others = item.others;
    told.unneeded = item.unneeded;
    return told;
  }

  PlainTeller& teller_;
  const Proof& proof_;
  const std::uint32_t depth_;
  std::vector<std::uint32_t> told_numbers_;    // by node
  std::vector<Waiting> waiting_;               // by number
  std::unordered_map<StatementNumber, std::uint32_t> statements_;
  ToldProof told_;
};

ToldProof PlainTeller::proof(const Proof& proof, std::uint32_t depth) {
  return ProofTeller(*this, proof, depth).tell();
}

std::string PlainTeller::atom(AtomNumber atom) const {
  std::string words;
  index_.append(words, atom);
  return words;
}

std::string PlainTeller::predicate_name(PredicateNumber number) const {
  const Predicate& predicate = index_.predicate(number);
  std::string name(predicate.strongly_negated ? "-" : "");
  (name += terms_.spelling(predicate.name)) += '/';
  return name += std::to_string(predicate.arity);
}

ToldStatement PlainTeller::statement(StatementNumber number) const {
  const StoredStatement& from = store_.statement(number);
  ToldStatement told;
  told.place.file = store_.sources().name(from.file);
  told.place.line = from.range.first_line;
  told.place.column = from.range.first_column;
  told.place.end_line = from.range.last_line;
  told.place.end_column = from.range.last_column;
  told.text = on_one_line(from.written);
  return told;
}

ToldStatement PlainTeller::fact(AtomNumber atom) const {
  const FactPlace& place = store_.fact(atom);
  ToldStatement told;
  if (place.file == zarel::kNoFile) return told;
  told.place.file = store_.sources().name(place.file);
  told.place.line = place.line;
  told.place.column = place.column;
  return told;
}

ToldMissing PlainTeller::missing(PredicateNumber predicate, std::span<const GroundTerm> arguments,
                                 const MissingAtom& missing) {
  ToldMissing told;
  index_.append(told.atom, predicate, arguments);
  told.key = told.atom;
  for (const FailedRule& rule : missing.rules) told.rules.push_back(failure(rule));
  tell_other_rules(missing, told);
  told.has_other_facts = missing.has_other_facts;
  for (const PredicateNumber each : missing.similar) told.similar.push_back(predicate_name(each));
  if (missing.contrary != kNoAtom) told.contrary = atom(missing.contrary);
  return told;
}

// A rule with several heads may give it by one of them, and give others by two.
void PlainTeller::tell_other_rules(const MissingAtom& missing, ToldMissing& told) const {
  std::set<StatementNumber> seen;
  for (const FailedRule& rule : missing.rules) seen.insert(rule.statement);
  for (const HeadUse& use : missing.other_rules) {
    if (seen.insert(use.statement).second) told.other_rules.push_back(statement(use.statement));
  }
}

ToldFailure PlainTeller::failure(const FailedRule& rule) {
  const LiteralWords words = this->words(rule.statement, rule.binding);
  const StoredStatement& from = store_.statement(rule.statement);
  ToldFailure told;
  told.statement = statement(rule.statement);
  told.with = words.values();
  for (std::size_t i = 0; i < from.body.size(); ++i) {
    ToldFailure::Literal literal;
    literal.state = told_state(rule.literals[i]);
    literal.text = words.literal(from.body[i]);
    if (rule.values[i] != kNoTerm) speller_.append_term(literal.value, rule.values[i]);
    told.literals.push_back(std::move(literal));
  }
  tell_reasons(rule, told);
  for (const AtomNumber head : rule.other_heads) told.other_heads.push_back(atom(head));
  told.bindings = rule.bindings;
  told.was_cut = rule.was_cut;
  return told;
}

// What holds although it is negated.
void PlainTeller::tell_reasons(const FailedRule& rule, ToldFailure& told) {
  const StoredStatement& from = store_.statement(rule.statement);
  for (std::size_t i = 0; i < from.body.size(); ++i) {
    const StoredLiteral& literal = from.body[i];
    if (rule.literals[i] != LiteralState::kFails || literal.kind != kAtom || !literal.negated)
      continue;
    const std::vector<AtomNumber> atoms =
        evaluator_.atoms_of(from, literal.atom, rule.binding, kMostReasons + 1);
    const Proof proof = ProofSearch(terms_, index_, store_).prove(atoms);
    for (const NodeNumber root : proof.roots) {
      std::vector<std::string>& because = told.literals[i].because;
      because.push_back(because.size() == kMostReasons ? "and others" : reason(proof.nodes[root]));
    }
  }
}

// "p(a)    [fact, f:3]", "p(a)    [by f:5]".
std::string PlainTeller::reason(const ProofNode& node) const {
  std::string words = atom(node.atom);
  const bool is_fact = node.kind == ProofKind::kFact;
  if (!is_fact && !is_by_statement(node.kind)) return words;
  const ToldPlace place = is_fact ? fact(node.atom).place : statement(node.statement).place;
  words += is_fact ? "    [fact" : "    [by";
  if (!place.file.empty()) {
    ((words += is_fact ? ", " : " ") += place.file) += ':';
    words += std::to_string(place.line);
  }
  return words += ']';
}

ToldInstance PlainTeller::instance(const ConstraintInstance& instance) {
  ToldInstance told;
  if (instance.statement) {
    told.statement = statement(*instance.statement);
    told.with = words(*instance.statement, instance.binding).values();
    return told;
  }
  index_.append(told.clash, instance.predicate, instance.arguments);
  told.clash += " and ";
  index_.append(told.clash, index_.contrary(instance.predicate), instance.arguments);
  return told;
}

std::vector<ToldInstance> PlainTeller::instances(const std::vector<ConstraintInstance>& instances) {
  std::vector<ToldInstance> all;
  std::map<std::pair<StatementNumber, ToldValues>, std::size_t> seen;
  for (const ConstraintInstance& each : instances) {
    ToldInstance told = instance(each);
    if (each.statement) {
      const auto [entry, is_new] = seen.try_emplace({*each.statement, told.with}, all.size());
      if (!is_new) {
        ++all[entry->second].times;
        continue;
      }
    }
    all.push_back(std::move(told));
  }
  return all;
}

ToldLines PlainTeller::constraints(const ConstraintSet& constraints, bool is_proven) const {
  ToldLines lines = rules(constraints.statements, is_proven);
  for (const PredicateNumber each : constraints.clashes) {
    lines.clashes.push_back(predicate_name(each));
  }
  return lines;
}

ToldLines PlainTeller::rules(const std::vector<StatementNumber>& rules, bool is_proven) const {
  ToldLines lines;
  lines.is_proven = is_proven;
  for (const StatementNumber each : rules) lines.statements.push_back(statement(each));
  return lines;
}

// Without the values of what nobody named.
PaidInstance PlainTeller::named_part(const PaidInstance& paid) const {
  PaidInstance part = paid;
  const std::vector<std::string>& names = store_.statement(paid.statement).variables;
  for (VariableId variable = 0; variable < names.size(); ++variable) {
    if (names[variable] == "_") part.binding[variable] = kNoTerm;
  }
  return part;
}

std::vector<PaidTogether> PlainTeller::payments(const std::vector<PaidInstance>& paid) {
  std::vector<PaidTogether> all;
  using Key = std::pair<std::pair<std::int64_t, std::int64_t>, ToldValues>;
  std::map<std::pair<StatementNumber, Key>, std::size_t> seen;
  for (const PaidInstance& each : paid) {
    ToldValues with = words(each.statement, each.binding).values();
    const Key key{{each.level, each.weight}, with};
    const auto [entry, is_new] = seen.try_emplace({each.statement, key}, all.size());
    if (is_new) {
      ToldPayment told{each.level, 0, {}};
      told.instance.statement = statement(each.statement);
      told.instance.with = std::move(with);
      told.instance.times = 0;
      all.push_back({std::move(told), named_part(each)});
    }
    ToldPayment& told = all[entry->second].told;
    told.weight += each.weight;
    ++told.instance.times;
  }
  return all;
}

ToldCosts told(const Costs& costs) {
  ToldCosts told;
  for (const auto& [level, cost] : costs) told.push_back({level, cost});
  return told;
}

}    // namespace dl
