#include "dl/explain/proof_search.h"

#include <functional>
#include <optional>

#include "dl/explain/backward_search.h"
#include "dl/explain/case_search.h"
#include "dl/explain/marking.h"
#include "dl/explain/proof_builder.h"
#include "dl/explain/support_graph.h"

namespace dl {
namespace {

// With more instances the first proof that is found is as good as the least.
constexpr std::size_t kMostForLeast = 1'000'000;

// A question on its way to an answer: what could support the atoms, then what does.
class Question {
 public:
  Question(SupportGraph& graph, BackwardSearch& back) : graph_(graph), back_(back) {}

  void search() {
    if (can_be_met_early()) {
      mark(NeedKind::kTold);
      return;
    }
    back_.take_in_splits();
    while (back_.expand_layer()) {
    }
    mark(NeedKind::kTold);
    if (!marking_->has_reached_goal() && back_.has_two_needs()) mark(NeedKind::kLeast);
  }
  const Marking& marking() const { return *marking_; }
  const CaseSearch& cases() const { return *cases_; }

 private:
  // Adds layers until what is asked for is marked. Returns false when it is not.
  bool can_be_met_early() {
    marking_.emplace(graph_, MarkingOrder::kFound, NeedKind::kTold);
    marking_->run_to_goal();
    while (!marking_->has_reached_goal()) {
      if (!back_.expand_layer()) return false;
      marking_->run_to_goal();
    }
    return true;
  }

  // Marks what all that was found gives, by cases only what does not follow without.
  void mark(NeedKind needs) {
    const bool is_done = needs == NeedKind::kTold && marking_->has_reached_goal();
    const bool is_large = graph_.instances().size() > kMostForLeast;
    if (!is_done || !is_large) {
      marking_.emplace(graph_, is_large ? MarkingOrder::kFound : MarkingOrder::kCost, needs);
    }
    marking_->run_to_goal();
    cases_.emplace(graph_, back_, *marking_);
    cases_->run();
  }

  SupportGraph& graph_;
  BackwardSearch& back_;
  std::optional<Marking> marking_;
  std::optional<CaseSearch> cases_;
};

}    // namespace

Proof ProofSearch::prove(const std::vector<AtomNumber>& atoms, ProofSize size) {
  SupportGraph graph(store_, index_.size());
  BackwardSearch back(evaluator_, terms_, index_, store_, heads_, graph);
  back.ask(atoms);
  Question question(graph, back);
  question.search();
  ProofBuilder builder(evaluator_, terms_, index_, store_, graph, question.marking(),
                       question.cases());
  return builder.build(atoms, size);
}

Proof ProofSearch::prove_body(StatementNumber statement, const Binding& binding) {
  SupportGraph graph(store_, index_.size());
  BackwardSearch back(evaluator_, terms_, index_, store_, heads_, graph);
  back.ask(statement, binding);
  Question question(graph, back);
  question.search();
  ProofBuilder builder(evaluator_, terms_, index_, store_, graph, question.marking(),
                       question.cases());
  return builder.build(statement, binding);
}

}    // namespace dl
