#include "dl/explain/proof_builder.h"

#include <algorithm>
#include <utility>

namespace dl {

ProofBuilder::ProofBuilder(BodyEvaluator& evaluator, const GroundTerms& terms,
                           const AnswerIndex& index, const StatementStore& store,
                           const SupportGraph& graph, const Marking& marking,
                           const CaseSearch& cases)
    : evaluator_(evaluator),
      terms_(terms),
      store_(store),
      graph_(graph),
      marking_(marking),
      cases_(cases),
      atoms_(evaluator, index),
      nodes_(index.size(), kNoNode) {}

Proof ProofBuilder::build(std::span<const AtomNumber> atoms, ProofSize size) {
  most_ = size;
  for (const AtomNumber atom : atoms) proof_.roots.push_back(node_of(atom, {0, kNever}));
  finish();
  return std::move(proof_);
}

Proof ProofBuilder::build(StatementNumber statement, const Binding& binding) {
  proof_.roots.push_back(0);
  proof_.nodes.emplace_back();
  std::vector<ProofItem> items = items_of(store_.statement(statement), binding, {0, kNever});
  ProofNode& node = proof_.nodes.front();
  node.kind = ProofKind::kRule;
  node.statement = statement;
  node.binding = binding;
  node.items = std::move(items);
  finish();
  return std::move(proof_);
}

// The atom's mark in the innermost context that has one.
ProofBuilder::Found ProofBuilder::find(AtomNumber atom, const Moment& moment) const {
  Found found;
  ContextNumber context = moment.context;
  for (; context != 0; context = cases_.context(context).parent) {
    const std::vector<ContextMark>& marks = cases_.context(context).marks;
    const auto mark = std::ranges::lower_bound(marks, atom, {}, &ContextMark::point);
    if (mark == marks.end() || mark->point != atom) continue;
    found = {mark->reason, {context, mark->order}};
    break;
  }
  if (context == 0) found = {marking_.reason(atom), {0, marking_.order(atom)}};
  return found.at.order < moment.order ? found : Found{};
}

std::uint32_t ProofBuilder::order_of(AtomNumber atom, const Moment& moment) const {
  if (is_fact(atom)) return kAtOnce;
  const Found found = find(atom, moment);
  return found.reason.kind() == Reason::kNone ? kNever : found.at.order;
}

NodeNumber ProofBuilder::node_of(AtomNumber atom, const Moment& moment) {
  const bool is_given = is_fact(atom);
  const Found found = is_given ? Found{} : find(atom, moment);
  NodeNumber& known = known_node(atom, found);
  if (known != kNoNode) return known;
  known = static_cast<NodeNumber>(proof_.nodes.size());
  const bool is_proved = found.reason.kind() != Reason::kNone;
  proof_.nodes.emplace_back();
  proof_.nodes.back().atom = atom;
  if (is_given) proof_.nodes.back().kind = ProofKind::kFact;
  if (is_proved) waiting_.push_back({known, found, depth_});
  return known;
}

NodeNumber& ProofBuilder::known_node(AtomNumber atom, const Found& found) {
  if (found.at.context == 0) return nodes_[atom];
  const std::uint64_t key = std::uint64_t{found.at.context} << 32 | atom;
  return nodes_in_cases_.emplace(key, kNoNode).first->second;
}

// Proofs can be as long as the program, so their nodes wait in a list: those nearest to a root first.
void ProofBuilder::finish() {
  InterruptionCheck interruption;
  while (!waiting_.empty()) {
    interruption.step();
    const Waiting next = waiting_.front();
    waiting_.pop_front();
    proof_.nodes[next.node].kind = kind_of(next.found.reason);
    depth_ = next.depth + 1;
    if (most_.depth == 0 || next.depth < most_.depth) fill(next);
  }
}

ProofKind ProofBuilder::kind_of(Reason reason) const {
  if (reason.kind() == Reason::kAssumed) return ProofKind::kAssumed;
  if (reason.kind() == Reason::kLemma) return ProofKind::kCases;
  const StoredStatement& rule = store_.statement(graph_.instances()[reason.number()].statement);
  return rule.heads.size() > 1 ? ProofKind::kChoice : ProofKind::kRule;
}

void ProofBuilder::fill(const Waiting& waiting) {
  const auto& [reason, moment] = waiting.found;
  if (reason.kind() == Reason::kLemma) {
    fill_by_cases(waiting.node, cases_.lemma(reason.number()), moment);
  } else if (reason.kind() == Reason::kInstance) {
    fill_by_instance(waiting.node, graph_.instances()[reason.number()], moment);
  }
}

void ProofBuilder::fill_by_instance(NodeNumber node, const Instance& instance,
                                    const Moment& moment) {
  const StoredStatement& statement = store_.statement(instance.statement);
  const std::span<const GroundTerm> values = graph_.binding(instance.statement, instance.binding);
  Binding binding(values.begin(), values.end());
  std::vector<ProofItem> items = items_of(statement, binding, moment);
  ProofNode& made = proof_.nodes[node];
  made.statement = instance.statement;
  made.head = instance.head;
  made.binding = std::move(binding);
  made.items = std::move(items);
}

void ProofBuilder::fill_by_cases(NodeNumber node, const Lemma& lemma, const Moment& moment) {
  const Split& split = graph_.splits()[lemma.split];
  const std::span<const GroundTerm> values = graph_.binding(split.statement, split.binding);
  Binding binding(values.begin(), values.end());
  const StoredStatement& statement = store_.statement(split.statement);
  std::vector<ProofItem> items = items_of(statement, binding, moment);
  const AtomNumber atom = proof_.nodes[node].atom;
  std::vector<ProofNode::Case> cases;
  ContextNumber context = lemma.first;
  for (const AtomNumber assumed : graph_.atoms_of(split)) {
    cases.push_back({assumed, node_of(atom, {context++, kNever})});
  }
  ProofNode& made = proof_.nodes[node];
  made.statement = split.statement;
  made.head = head_of(atom, statement, binding);
  made.binding = std::move(binding);
  made.items = std::move(items);
  made.cases = std::move(cases);
}

// Which of the heads the atom is; the first where it is none.
std::uint32_t ProofBuilder::head_of(AtomNumber atom, const StoredStatement& statement,
                                    const Binding& binding) {
  for (std::uint32_t head = 0; head < statement.heads.size(); ++head) {
    if (atoms_.one(statement, statement.heads[head], binding) == atom) return head;
  }
  return 0;
}

std::vector<ProofItem> ProofBuilder::items_of(const StoredStatement& statement,
                                              const Binding& binding, const Moment& moment) {
  std::vector<ProofItem> items(statement.body.size());
  for (std::uint32_t i = 0; i < items.size(); ++i) {
    items[i].literal = i;
    const StoredLiteral& literal = statement.body[i];
    if (literal.kind == kAggregate) {
      add_elements(items[i], statement, binding, moment);
    } else if (literal.kind == kAtom && !literal.negated) {
      const AtomNumber atom = first_atom(statement, literal.atom, binding, moment);
      items[i].node = node_of(atom, moment);
    }
  }
  return items;
}

// The atom with these values; of those that "_" leaves open the one that is proved first.
AtomNumber ProofBuilder::first_atom(const StoredStatement& statement, const AtomPattern& atom,
                                    const Binding& binding, const Moment& moment) {
  const AtomNumber one = atoms_.one(statement, atom, binding);
  if (one != kNoAtom) return one;
  const std::vector<AtomNumber> found = atoms_.all(statement, atom, binding);
  return *std::ranges::min_element(found, {},
                                   [&](AtomNumber each) { return order_of(each, moment); });
}

void ProofBuilder::add_elements(ProofItem& item, const StoredStatement& statement,
                                const Binding& binding, const Moment& moment) {
  const StoredLiteral& literal = statement.body[item.literal];
  const Looked& looked = look(statement, literal, binding, moment.context);
  item.value = looked.elements.value;
  item.unneeded = static_cast<std::uint32_t>(looked.elements.size());
  if (literal.negated) return;
  auto chosen = choice(looked, NeedKind::kTold, moment.order);
  if (!chosen) chosen = choice(looked, NeedKind::kLeast, moment.order);
  // Without a proof of the aggregate what is missing is to be seen.
  if (!chosen) chosen = looked.tuples[static_cast<std::size_t>(NeedKind::kLeast)];
  std::ranges::sort(*chosen);
  item.unneeded -= static_cast<std::uint32_t>(chosen->size());
  const std::size_t told = std::min(chosen->size(), most_.elements);
  item.others = static_cast<std::uint32_t>(chosen->size() - told);
  const StoredAggregate& aggregate = statement.aggregates[literal.aggregate];
  for (const std::uint32_t i : std::span(*chosen).first(told)) {
    const std::span<const GroundTerm> tuple = looked.elements.tuple(i);
    ProofItem::Element& element = item.elements.emplace_back();
    element.tuple.assign(tuple.begin(), tuple.end());
    const Binding way = looked.elements.binding(looked.proofs[i].way);
    for (const AtomNumber atom : atoms_of(statement, aggregate, way, moment.context)) {
      element.nodes.push_back(node_of(atom, moment));
    }
  }
}

const ProofBuilder::Looked& ProofBuilder::look(const StoredStatement& statement,
                                               const StoredLiteral& literal, const Binding& binding,
                                               ContextNumber context) {
  const StoredAggregate& aggregate = statement.aggregates[literal.aggregate];
  const GuardValues guards = guard_values(evaluator_, statement, aggregate, binding);
  std::vector<GroundTerm> values{guards.left, guards.right};
  for (const VariableId variable : literal.variables) values.push_back(binding[variable]);
  Looked& looked = looked_[&literal];
  if (looked.context == context && looked.values == values) return looked;
  looked = {};
  looked.values = std::move(values);
  looked.context = context;
  const Ways ways = literal.negated ? Ways::kForgotten : Ways::kKept;
  looked.elements = evaluator_.elements(statement, aggregate, binding, ways);
  if (literal.negated) return looked;
  for (std::size_t tuple = 0; tuple < looked.elements.size(); ++tuple) {
    looked.proofs.push_back(first_proof(statement, aggregate, looked.elements, tuple, context));
  }
  for (const NeedKind kind : {NeedKind::kTold, NeedKind::kLeast}) {
    const auto i = static_cast<std::size_t>(kind);
    looked.needs[i] = need_of(kind, aggregate, guards, looked.elements, terms_);
    looked.tuples[i] = heaviest_first(looked.needs[i]);
    std::ranges::stable_sort(looked.tuples[i], {},
                             [&](std::uint32_t tuple) { return looked.proofs[tuple].order; });
  }
  return looked;
}

ProofBuilder::FirstProof ProofBuilder::first_proof(const StoredStatement& statement,
                                                   const StoredAggregate& aggregate,
                                                   const AggregateElements& elements,
                                                   std::size_t tuple, ContextNumber context) {
  FirstProof first;
  const std::uint32_t first_way = elements.first_way(tuple);
  for (std::uint32_t way = first_way; way != kNoWay; way = elements.next_way(way)) {
    FirstProof proof{kAtOnce, way};
    for (const AtomNumber atom : atoms_of(statement, aggregate, elements.binding(way), context)) {
      proof.order = std::max(proof.order, order_of(atom, {context, kNever}));
    }
    if (way == first_way || proof.order < first.order) first = proof;
  }
  return first;
}

const std::vector<AtomNumber>& ProofBuilder::atoms_of(const StoredStatement& statement,
                                                      const StoredAggregate& aggregate,
                                                      const Binding& binding,
                                                      ContextNumber context) {
  atoms_of_element_.clear();
  for (const StoredLiteral& literal : aggregate.body) {
    if (literal.negated || literal.kind != kAtom) continue;
    atoms_of_element_.push_back(first_atom(statement, literal.atom, binding, {context, kNever}));
  }
  return atoms_of_element_;
}

// The tuples that were there first, as many as are needed; nothing where those that were there
// before are not enough. Of them none is left without which the others were enough.
std::optional<std::vector<std::uint32_t>> ProofBuilder::choice(const Looked& looked, NeedKind kind,
                                                               std::uint32_t before) {
  const Need& need = looked.needs[static_cast<std::size_t>(kind)];
  std::vector<std::uint32_t> chosen;
  std::uint64_t weight = 0;
  for (const std::uint32_t i : looked.tuples[static_cast<std::size_t>(kind)]) {
    if (weight >= need.weight || looked.proofs[i].order >= before) break;
    if (need.weights[i] == 0) continue;
    chosen.push_back(i);
    weight += need.weights[i];
  }
  if (weight < need.weight) return std::nullopt;
  std::ranges::reverse(chosen);
  std::erase_if(chosen, [&](std::uint32_t i) {
    if (weight - need.weights[i] < need.weight) return false;
    weight -= need.weights[i];
    return true;
  });
  return chosen;
}

}    // namespace dl
