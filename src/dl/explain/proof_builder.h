#pragma once
// proof_builder.h - writes down as a proof what the marks tell.

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "dl/explain/aggregate_need.h"
#include "dl/explain/atom_finder.h"
#include "dl/explain/case_search.h"
#include "dl/explain/marking.h"
#include "dl/explain/proof_search.h"
#include "dl/explain/support_graph.h"

namespace dl {

class ProofBuilder {
 public:
  // All must outlive the builder.
  ProofBuilder(BodyEvaluator& evaluator, const GroundTerms& terms, const AnswerIndex& index,
               const StatementStore& store, const SupportGraph& graph, const Marking& marking,
               const CaseSearch& cases);

  Proof build(std::span<const AtomNumber> atoms, ProofSize size);
  Proof build(StatementNumber statement, const Binding& binding);

 private:
  // The order of what needs no mark, and of what has none.
  static constexpr std::uint32_t kAtOnce = 0;
  static constexpr std::uint32_t kNever = 0xffffffffu;

  // Where and when something is proved: what it rests on was marked before.
  struct Moment {
    ContextNumber context = 0;
    std::uint32_t order = 0;
  };
  // Why an atom is marked, and when. There is no reason when that is not before some moment.
  struct Found {
    Reason reason;
    Moment at;
  };
  // A node that is to be filled.
  struct Waiting {
    NodeNumber node;
    Found found;
    std::uint32_t depth;
  };
  // A tuple of an aggregate as soon as it can be proved.
  struct FirstProof {
    std::uint32_t order = kNever;
    std::uint32_t way = kNoWay;    // in which it is
  };

  // An aggregate with its elements, and the tuples in the order in which they are there. Instances
  // one after the other often have the same one.
  struct Looked {
    std::vector<GroundTerm> values;    // of its variables and guards
    ContextNumber context = kNoContext;
    AggregateElements elements;
    std::vector<FirstProof> proofs;    // by tuple
    std::array<Need, 2> needs;         // by NeedKind
    std::array<std::vector<std::uint32_t>, 2> tuples;
  };
  static constexpr ContextNumber kNoContext = 0xffffffffu;

  bool is_fact(AtomNumber atom) const { return store_.fact(atom).file != zarel::kNoFile; }
  Found find(AtomNumber atom, const Moment& moment) const;
  std::uint32_t order_of(AtomNumber atom, const Moment& moment) const;
  NodeNumber node_of(AtomNumber atom, const Moment& moment);
  NodeNumber& known_node(AtomNumber atom, const Found& found);
  void finish();
  void fill(const Waiting& waiting);
  ProofKind kind_of(Reason reason) const;
  void fill_by_instance(NodeNumber node, const Instance& instance, const Moment& moment);
  void fill_by_cases(NodeNumber node, const Lemma& lemma, const Moment& moment);
  std::uint32_t head_of(AtomNumber atom, const StoredStatement& statement, const Binding& binding);
  std::vector<ProofItem> items_of(const StoredStatement& statement, const Binding& binding,
                                  const Moment& moment);
  AtomNumber first_atom(const StoredStatement& statement, const AtomPattern& atom,
                        const Binding& binding, const Moment& moment);
  void add_elements(ProofItem& item, const StoredStatement& statement, const Binding& binding,
                    const Moment& moment);
  const Looked& look(const StoredStatement& statement, const StoredLiteral& literal,
                     const Binding& binding, ContextNumber context);
  FirstProof first_proof(const StoredStatement& statement, const StoredAggregate& aggregate,
                         const AggregateElements& elements, std::size_t tuple,
                         ContextNumber context);
  // The atoms that an element rests on, as they are proved first.
  const std::vector<AtomNumber>& atoms_of(const StoredStatement& statement,
                                          const StoredAggregate& aggregate, const Binding& binding,
                                          ContextNumber context);
  static std::optional<std::vector<std::uint32_t>> choice(const Looked& looked, NeedKind kind,
                                                          std::uint32_t before);

  BodyEvaluator& evaluator_;
  const GroundTerms& terms_;
  const StatementStore& store_;
  const SupportGraph& graph_;
  const Marking& marking_;
  const CaseSearch& cases_;
  AtomFinder atoms_;
  std::vector<AtomNumber> atoms_of_element_;
  std::unordered_map<const StoredLiteral*, Looked> looked_;    // the last one of each literal
  Proof proof_;
  std::vector<NodeNumber> nodes_;    // by atom: its node outside all cases
  std::unordered_map<std::uint64_t, NodeNumber> nodes_in_cases_;    // by context and atom
  std::deque<Waiting> waiting_;
  std::uint32_t depth_ = 0;    // of what the nodes made now are for
  ProofSize most_;
};

}    // namespace dl
