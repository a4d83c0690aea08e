#include "dl/explain/proof_check.h"

#include <algorithm>
#include <optional>
#include <set>

namespace dl_test {
namespace {

using dl::AtomNumber;
using dl::NodeNumber;
using dl::ProofKind;
using dl::ProofNode;
using Atoms = std::set<AtomNumber>;

class ProofCheck {
 public:
  ProofCheck(const dl::Proof& proof, dl::ExplainedAnswer& answer)
      : proof_(proof),
        answer_(answer),
        evaluator_(answer.terms(), answer.index(), answer.store()),
        assumed_(proof.nodes.size()) {}

  std::string fault(const std::vector<AtomNumber>& atoms) {
    if (proof_.roots.size() != atoms.size()) return "other roots";
    for (std::size_t i = 0; i < atoms.size() && fault_.empty(); ++i) {
      const NodeNumber root = proof_.roots[i];
      if (proof_.nodes[root].atom != atoms[i]) return "another root";
      if (!visit(root).empty()) say(root, "rests on an assumption");
    }
    return fault_;
  }

 private:
  void say(NodeNumber number, const std::string& what) {
    if (!fault_.empty()) return;
    if (proof_.nodes[number].atom != dl::kNoAtom) {
      answer_.index().append(fault_, proof_.nodes[number].atom);
    }
    (fault_ += ": ") += what;
  }

  // The atoms that the node's proof assumes. A node that is met inside itself is a circle.
  Atoms visit(NodeNumber number) {
    if (assumed_[number]) return *assumed_[number];
    if (!inside_.insert(number).second) {
      say(number, "is a circle");
      return {};
    }
    const ProofNode& node = proof_.nodes[number];
    Atoms assumed;
    if (node.kind == ProofKind::kAssumed) assumed.insert(node.atom);
    const bool is_given = answer_.store().fact(node.atom).file != zarel::kNoFile;
    if (is_given != (node.kind == ProofKind::kFact)) say(number, "is a fact, or is not");
    const bool has_statement = node.kind == ProofKind::kRule || node.kind == ProofKind::kChoice ||
                               node.kind == ProofKind::kCases;
    if (has_statement) visit_instance(number, assumed);
    inside_.erase(number);
    assumed_[number] = assumed;
    return assumed;
  }

  void visit_instance(NodeNumber number, Atoms& assumed) {
    const ProofNode& node = proof_.nodes[number];
    const dl::StoredStatement& rule = answer_.store().statement(node.statement);
    if (node.items.size() != rule.body.size()) return say(number, "has other items");
    for (std::size_t i = 0; i < rule.body.size(); ++i) {
      const dl::ProofItem& item = node.items[i];
      const dl::StoredLiteral& literal = rule.body[i];
      if (item.literal != i) return say(number, "has items in another order");
      if (evaluator_.holds(rule, literal, node.binding) != true) {
        return say(number, "has a body that fails");
      }
      const bool has_node = literal.kind == dl::kAtom && !literal.negated;
      if (has_node != (item.node != dl::kNoNode)) return say(number, "has a node too many");
      if (has_node) visit_atom(number, rule, literal.atom, node.binding, item.node, assumed);
      if (literal.kind == dl::kAggregate) visit_aggregate(number, item, assumed);
    }
    if (node.atom == dl::kNoAtom) return;    // a body that was asked for
    const Atoms heads = true_heads(rule, node.binding);
    if (node.kind == ProofKind::kCases) return visit_cases(number, heads, assumed);
    if (heads != Atoms{node.atom}) say(number, "has other true heads");
    if ((node.kind == ProofKind::kChoice) != (rule.heads.size() > 1)) say(number, "is of no kind");
  }

  void visit_atom(NodeNumber number, const dl::StoredStatement& rule, const dl::AtomPattern& atom,
                  const dl::Binding& binding, NodeNumber used, Atoms& assumed) {
    const std::vector<AtomNumber> all = evaluator_.atoms_of(rule, atom, binding, 1000);
    if (std::ranges::find(all, proof_.nodes[used].atom) == all.end()) {
      return say(number, "rests on another atom");
    }
    assumed.merge(visit(used));
  }

  Atoms true_heads(const dl::StoredStatement& rule, const dl::Binding& binding) {
    Atoms atoms;
    for (const dl::AtomPattern& head : rule.heads) {
      for (const AtomNumber atom : evaluator_.atoms_of(rule, head, binding, 2)) atoms.insert(atom);
    }
    return atoms;
  }

  // Each true atom of the head is a case, and is assumed in no other one.
  void visit_cases(NodeNumber number, const Atoms& heads, Atoms& assumed) {
    Atoms covered;
    for (const ProofNode::Case& each : proof_.nodes[number].cases) {
      covered.insert(each.assumed);
      if (proof_.nodes[each.node].atom != proof_.nodes[number].atom) {
        return say(number, "has a case of another atom");
      }
      Atoms inside = visit(each.node);
      inside.erase(each.assumed);
      assumed.merge(inside);
    }
    if (covered != heads || heads.size() < 2) say(number, "has other cases");
  }

  void visit_aggregate(NodeNumber number, const dl::ProofItem& item, Atoms& assumed) {
    const ProofNode& node = proof_.nodes[number];
    const dl::StoredStatement& rule = answer_.store().statement(node.statement);
    const dl::StoredLiteral& literal = rule.body[item.literal];
    const dl::StoredAggregate& aggregate = rule.aggregates[literal.aggregate];
    const dl::AggregateElements all =
        evaluator_.elements(rule, aggregate, node.binding, dl::Ways::kKept);
    if (item.value != all.value) return say(number, "has another value");
    if (item.elements.size() + item.unneeded != all.size()) {
      return say(number, "has other elements");
    }
    if (literal.negated) {
      if (!item.elements.empty()) say(number, "needs elements behind 'not'");
      return;
    }
    std::vector<dl::GroundTerm> values;
    std::set<std::vector<dl::GroundTerm>> tuples;
    for (const dl::ProofItem::Element& element : item.elements) {
      if (!tuples.insert(element.tuple).second) return say(number, "has an element twice");
      values.push_back(element.tuple.empty() ? dl::kNoTerm : element.tuple.front());
      std::size_t tuple = 0;
      while (tuple < all.size() && !std::ranges::equal(all.tuple(tuple), element.tuple)) ++tuple;
      if (tuple == all.size()) return say(number, "has an element that does not hold");
      std::uint32_t way = all.first_way(tuple);
      while (way != dl::kNoWay && !has_atoms(rule, aggregate, all.binding(way), element)) {
        way = all.next_way(way);
      }
      if (way == dl::kNoWay) return say(number, "has an element of other atoms");
      for (const NodeNumber used : element.nodes) assumed.merge(visit(used));
    }
    const bool has_all = item.unneeded == 0;
    if (!has_all && !suffice(values, rule, aggregate, node.binding)) {
      say(number, "has too few elements");
    }
  }

  bool has_atoms(const dl::StoredStatement& rule, const dl::StoredAggregate& aggregate,
                 const dl::Binding& binding, const dl::ProofItem::Element& element) {
    std::size_t next = 0;
    for (const dl::StoredLiteral& literal : aggregate.body) {
      if (evaluator_.holds(rule, literal, binding) != true) return false;
      if (literal.negated || literal.kind != dl::kAtom) continue;
      if (next == element.nodes.size()) return false;
      const AtomNumber atom = proof_.nodes[element.nodes[next++]].atom;
      const std::vector<AtomNumber> all = evaluator_.atoms_of(rule, literal.atom, binding, 1000);
      if (std::ranges::find(all, atom) == all.end()) return false;
    }
    return next == element.nodes.size();
  }

  // Whether the guards hold for these values and whatever elements of the answer set there are
  // besides. For all of them they do: a count, a sum and a maximum can only rise up to that, and a
  // minimum fall.
  bool suffice(const std::vector<dl::GroundTerm>& values, const dl::StoredStatement& rule,
               const dl::StoredAggregate& aggregate, const dl::Binding& binding) {
    const dl::GroundTerms& terms = answer_.terms();
    const auto less = [&terms](auto left, auto right) {
      return std::is_lt(terms.compare(left, right));
    };
    std::uint64_t total = aggregate.function == dl::kCount ? values.size() : 0;
    if (aggregate.function == dl::kAverage) return false;
    if (aggregate.function == dl::kSumUp) {
      for (const dl::GroundTerm value : values) {
        if (dl::GroundTerms::is_integer(value)) total += dl::GroundTerms::value(value);
      }
    }
    const bool is_minimum = aggregate.function == dl::kMin;
    dl::GroundTerm reached = dl::GroundTerms::integer(static_cast<std::uint32_t>(total));
    if (is_minimum || aggregate.function == dl::kMax) {
      if (values.empty()) return false;
      reached = is_minimum ? *std::ranges::min_element(values, less)
                           : *std::ranges::max_element(values, less);
    }
    for (const bool is_left : {true, false}) {
      const dl::StoredGuard& guard = is_left ? aggregate.left : aggregate.right;
      if (!guard.given) continue;
      std::strong_ordering order =
          terms.compare(reached, evaluator_.value(rule, guard.term, binding));
      if (is_left) {    // as the guard is read: term op aggregate
        order = terms.compare(evaluator_.value(rule, guard.term, binding), reached);
      }
      const bool rises = (guard.op == dl::kLess || guard.op == dl::kLessEqual) == is_left;
      if (guard.op == dl::kEqual ? std::is_neq(order)
                                 : rises != is_minimum && !is_true(guard.op, order)) {
        return false;
      }
    }
    return true;
  }

  static bool is_true(dl::Builtin op, std::strong_ordering order) {
    if (op == dl::kLess) return std::is_lt(order);
    if (op == dl::kLessEqual) return std::is_lteq(order);
    return op == dl::kGreater ? std::is_gt(order) : std::is_gteq(order);
  }

  const dl::Proof& proof_;
  dl::ExplainedAnswer& answer_;
  dl::BodyEvaluator evaluator_;
  std::vector<std::optional<Atoms>> assumed_;    // by node that was visited
  std::set<NodeNumber> inside_;
  std::string fault_;
};

}    // namespace

std::string fault_of(const dl::Proof& proof, const std::vector<dl::AtomNumber>& atoms,
                     dl::ExplainedAnswer& answer, std::map<dl::ProofKind, std::size_t>& kinds) {
  for (const dl::ProofNode& node : proof.nodes) ++kinds[node.kind];
  return ProofCheck(proof, answer).fault(atoms);
}

}    // namespace dl_test
