#pragma once
// proof_search.h - why atoms are in an answer set.
//
// Note [proofs]
// An answer set is a least model of what its rules say once "not" and aggregates are read in it, so
// each of its atoms has a proof that is no circle. A rule that fires supports a head atom only if its
// other head atoms are false. Forward marking over those instances in the order of their cost, as in
// Knuth's generalisation of Dijkstra's algorithm, gives proofs of least cost, which for this reason
// have no circle. Where a disjunctive head needs two true atoms that is not complete: then the atom
// follows by cases, each of which assumes one atom of such a head.

#include <cstdint>
#include <limits>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/head_index.h"

namespace dl {

enum class ProofKind : std::uint8_t {
  kFact,           // given
  kRule,           // by an instance of a rule
  kChoice,         // by one of a disjunctive rule whose other head atoms are false
  kCases,          // whatever of a disjunctive head holds
  kAssumed,        // in a case
  kNotExplained    // no proof was found
};

using NodeNumber = std::uint32_t;
constexpr NodeNumber kNoNode = 0xffffffffu;

// What a literal of a body rests on.
struct ProofItem {
  std::uint32_t literal = 0;     // in the statement's body
  NodeNumber node = kNoNode;     // of a positive atom
  GroundTerm value = kNoTerm;    // of an aggregate, where it has one
  // Of an aggregate: for each element that counts its tuple, and the proofs of its positive atoms.
  struct Element {
    std::vector<GroundTerm> tuple;
    std::vector<NodeNumber> nodes;
  };
  std::vector<Element> elements;
  std::uint32_t others = 0;      // elements that count, too, beyond those that were asked for
  std::uint32_t unneeded = 0;    // elements that hold, too, but that the guard does not need
};

struct ProofNode {
  ProofKind kind = ProofKind::kNotExplained;
  AtomNumber atom = kNoAtom;
  StatementNumber statement = 0;    // of a rule, a choice and cases
  std::uint32_t head = 0;           // which of its heads the atom is
  Binding binding;
  std::vector<ProofItem> items;    // one for each literal of the body, in its order
  // Of cases: the atom of the head that is assumed, and the proof under that assumption.
  struct Case {
    AtomNumber assumed;
    NodeNumber node;
  };
  std::vector<Case> cases;
};

// Nodes are shared: a proof is a graph without circles.
struct Proof {
  std::vector<ProofNode> nodes;
  std::vector<NodeNumber> roots;    // one for each atom asked for, in their order
};

// What of a proof is told.
struct ProofSize {
  std::uint32_t depth =
      0;    // of nodes so many steps or more below all roots the kind and the atom
            // alone are told; 0: of none
  std::size_t elements = std::numeric_limits<std::size_t>::max();    // of one aggregate at most
};

class ProofSearch {
 public:
  // All must outlive the search.
  ProofSearch(GroundTerms& terms, AnswerIndex& index, const StatementStore& store)
      : terms_(terms),
        index_(index),
        store_(store),
        evaluator_(terms, index, store),
        heads_(store) {}

  // Proves the atoms of the answer set.
  Proof prove(const std::vector<AtomNumber>& atoms, ProofSize size = {});
  // Proves what an instance of a body rests on: the first node of the proof has its items.
  Proof prove_body(StatementNumber statement, const Binding& binding);

 private:
  GroundTerms& terms_;
  AnswerIndex& index_;
  const StatementStore& store_;
  BodyEvaluator evaluator_;
  HeadIndex heads_;
};

}    // namespace dl
