#pragma once
// marker_replacement.h - the marker atoms of invocations in the program's bodies, replaced by atoms
// of generated predicates.

#include <cstdint>
#include <iosfwd>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/clause.h"
#include "model/template_records.h"

namespace zarel {

// Where each marker atom stands in CLAUSES, in bodies and in the aggregates of bodies. Every
// clause is looked at once, when the first replacement after its arrival asks for it, so that the
// cost of a replacement is what it replaces.
class MarkerIndex {
 public:
  // Overwrites every literal over this marker atom with the replacement, "not" kept.
  void replace(const ATOMT& marker, const ATOMT& replacement);

 private:
  void catch_up();
  void add(std::span<Literal> body);

  std::size_t clauses_seen_ = 0;
  // By a hash of the marker's content. Literals stay where they are when CLAUSES grows.
  std::unordered_map<std::uint64_t, std::vector<Literal*>> literals_;
};

MarkerIndex& marker_index();

// Replaces the marker atoms of the invocation in all bodies of CLAUSES.
void ReplaceAtom(const INVOCATIONATOM& invocation, const ATOMT& replacement);

// Writes the invocation's line to the legend and replaces its marker atoms by atoms of the
// generated predicate over its auxiliary terms.
void StandardizeAtomInvocation(const INVOCATIONATOM& invocation, std::string_view generated,
                               std::ostream& legend);

}    // namespace zarel
