#pragma once
// atom_builder.h - what the grammar's actions on atoms and literals call.

#include <initializer_list>
#include <span>

#include "model/generic_atoms.h"
#include "model/literal.h"
#include "parser/template_builder.h"
#include "parser/term_builder.h"

namespace zarel {

class AtomBuilder {
 public:
  // Atoms in an open template are of another kind than those of the program.
  AtomBuilder(TermBuilder& terms, const TemplateBuilder& definition, WrittenTree& tree)
      : terms_(terms), definition_(definition), tree_(tree) {}

  // Of the program: in the generic encoding, which names the frame space. In a template body:
  // plain.
  ATOMT atom(WrittenName name, TermsMark list, NameId frame_space,
             Negation negation = Negation::kNone);
  ATOMT atom(WrittenName name, NameId frame_space, Negation negation = Negation::kNone);
  // A flat one, which is what is read; never in a template body.
  ATOMT flat_atom(const FlatAtom& flat, NameId frame_space);
  // Under the name as written; in a template body under the labelled name.
  ATOMT plain_atom(WrittenName name, std::span<const TERMT> terms, Negation negation) const;
  // Whether a frame space may be named behind an atom here: not in a template body, where it is
  // reported as a syntax error.
  bool allows_frame_space() const;

  Literal builtin(BUILTIN code, std::initializer_list<TERMT> terms);
  // Of the form result = a + b; the terms are those of the builtin.
  Literal arithmetic(BUILTIN code, std::initializer_list<TERMT> terms);
  Literal external(NameId name, TermsMark list);
  Literal literal(const ATOMT& atom) { return {atom, false}; }
  Literal negated(const ATOMT& atom) {
    if (tree_.is_open()) tree_.negate();
    return {atom, true};
  }

 private:
  void tell(WrittenName name, std::size_t arity, NameId frame_space, Negation negation);

  TermBuilder& terms_;
  const TemplateBuilder& definition_;
  WrittenTree& tree_;
};

// Inline: most atoms of a large program come from here. See Note [flat facts].
inline ATOMT AtomBuilder::atom(WrittenName name, TermsMark list, NameId frame_space,
                               Negation negation) {
  const std::span<const TERMT> terms = terms_.take(list);
  if (tree_.is_open()) tell(name, terms.size(), frame_space, negation);
  if (definition_.is_open()) return plain_atom(name, terms, negation);
  return encoded_atom(name.id, frame_space, terms, negation);
}

inline ATOMT AtomBuilder::flat_atom(const FlatAtom& flat, NameId frame_space) {
  const NameId name = names().intern(flat.name());
  return encoded_atom(name, frame_space, terms_.take(terms_.flat_arguments(flat)), Negation::kNone);
}

}    // namespace zarel
