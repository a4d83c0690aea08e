#pragma once
// case_search.h - what follows by cases.
//
// Note [cases]
// Where an open split has no marked atom, one of its atoms holds, whichever. So each one is assumed
// in turn, and what follows in all cases follows without them: a lemma. Cases inside cases are tried
// only when cases side by side give nothing more, which keeps proofs shallow, as in Staalmarck's
// procedure. With cases nested deep enough every atom of an answer set follows, for what does not
// would leave a smaller model. That takes exponential time at worst, so the steps are counted.

#include <cstdint>
#include <vector>

#include "dl/explain/backward_search.h"
#include "dl/explain/marking.h"
#include "dl/explain/support_graph.h"

namespace dl {

using ContextNumber = std::uint32_t;

// A point as it is marked while the assumptions of a context hold.
struct ContextMark {
  Point point = 0;
  Reason reason;
  std::uint32_t order = 0;
};

// The assumption of one case, and what follows from it beside what its surroundings have.
struct Context {
  ContextNumber parent = 0;
  std::vector<ContextMark> marks;    // by point
};

// An atom that is marked for this reason follows in each of the contexts, one for each atom of the
// split, which lie side by side.
struct Lemma {
  std::uint32_t split = 0;
  ContextNumber first = 0;
};

class CaseSearch {
 public:
  // All must outlive the search. The marking has all that follows without cases.
  CaseSearch(const SupportGraph& graph, const BackwardSearch& met, Marking& marking);

  // Marks what follows by cases, until the goal is reached, nothing more is found or the steps are
  // used up.
  void run();

  // The context that holds outside all cases has the number 0 and no list of marks.
  const Context& context(ContextNumber number) const { return contexts_[number]; }
  const Lemma& lemma(std::uint32_t number) const { return lemmas_[number]; }

 private:
  bool may_go_on() const;
  void saturate(ContextNumber context, unsigned depth);
  bool try_split(std::uint32_t split, ContextNumber context, unsigned depth);
  bool is_applicable(std::uint32_t split) const;
  void assume(AtomNumber atom, ContextNumber context, unsigned depth);
  std::vector<AtomNumber> common_atoms(ContextNumber first, ContextNumber end) const;

  const SupportGraph& graph_;
  Marking& marking_;
  std::vector<std::uint32_t> splits_;    // that can be of use
  std::vector<Context> contexts_;
  std::vector<Lemma> lemmas_;
};

}    // namespace dl
