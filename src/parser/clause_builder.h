#pragma once
// clause_builder.h - what the grammar's actions on heads and clauses call.

#include <optional>

#include "model/clause.h"
#include "model/report.h"
#include "parser/atom_builder.h"
#include "parser/body_builder.h"
#include "parser/frame_spaces.h"
#include "parser/template_builder.h"
#include "parser/term_builder.h"

namespace zarel {

// Clauses that are whole go where `definition` says.
class ClauseBuilder {
 public:
  ClauseBuilder(TermBuilder& terms, AtomBuilder& atoms, BodyBuilder& bodies, FrameSpaces& spaces,
                TemplateBuilder& definition, WrittenTree& tree)
      : terms_(terms),
        atoms_(atoms),
        bodies_(bodies),
        spaces_(spaces),
        definition_(definition),
        tree_(tree),
        work_(work()) {}

  // The disjuncts of a head, what stands between two of them, and its end.
  void head_atom(const ATOMT& atom) {
    if (tree_.is_open()) tree_.head_element();
    head_.add(atom);
  }
  void head_frame(const FRAME& frame) {
    if (tree_.is_open()) tree_.head_element();
    head_frame_ = frame;
  }
  void next_disjunct();
  void close_head();

  void flat_fact(const FlatAtom& fact);
  void frame_fact(std::span<const FrameStatement> statements);
  // One that is no text: a row of data. Its name stands for the observer at `declared`.
  void row_fact(NameId name, TermsMark list, NameId frame_space, const SourceSpan& declared);
  void fact();              // of the disjuncts read; closes the head
  void rule(Body* body);    // of the closed head
  void range_fact(WrittenName name, const TERMT& first, const TERMT& last);
  void constraint(Body* body);
  void weak_constraint(Body* body, const WeakCost& cost);

  void clear() {    // drops the head that was read
    head_.clear();
    head_frame_.reset();
  }

 private:
  void tell_flat_fact(const FlatAtom& fact, NameId name);
  void tell_whole_fact(const FlatAtom& fact, NameId name);
  void add_rule(Body* body);    // null: no body
  void frame_rule(const Body* body);

  TermBuilder& terms_;
  AtomBuilder& atoms_;
  BodyBuilder& bodies_;
  FrameSpaces& spaces_;
  TemplateBuilder& definition_;
  WrittenTree& tree_;
  Work& work_;                         // the run's
  Head head_;                          // of a rule that is not headed by one frame alone
  std::optional<FRAME> head_frame_;    // of one that is, or so far
};

}    // namespace zarel
