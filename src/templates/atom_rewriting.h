#pragma once
// atom_rewriting.h - one atom of a template body, as an expansion of the template has it.

#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "templates/invocations.h"

namespace zarel {

// One expansion under way: what is expanded, for which invocation, and what its names became.
class Expansion {
 public:
  Expansion(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition,
            std::string_view generated, const BindingList& binding);

  const INVOCATIONATOM& invocation() const { return invocation_; }
  const DEFINITIONATOM& definition() const { return definition_; }
  std::string_view generated() const { return generated_; }
  const BindingList& binding() const { return binding_; }
  const std::vector<TERMT>& group_by() const { return group_by_; }

  // The invocation's actual predicates with fresh variables for ordinary parameters.
  const std::vector<ATOMT>& actuals() const { return actuals_; }

  // A formal predicate's place in the binding list; nothing for another name.
  std::optional<std::size_t> formal(std::string_view name) const;

  // The arguments of an atom over the formal predicate at this place: those that are written, in
  // the actual predicate's pattern.
  std::vector<TERMT> formal_terms(std::size_t place, std::span<const TERMT> terms) const;

  // The label of a local predicate, the same at each of its occurrences.
  int label(std::string_view local);

 private:
  const INVOCATIONATOM& invocation_;
  const DEFINITIONATOM& definition_;
  std::string_view generated_;
  const BindingList& binding_;
  std::vector<TERMT> group_by_;
  std::vector<ATOMT> actuals_;
  std::vector<std::size_t> patterns_;    // by place: whose parameters the formal atoms follow
  std::unordered_map<std::string_view, std::size_t> formals_;
  std::unordered_map<std::string, int> labels_;
};

// The atom under its new name, group-by terms in front where it is not a formal predicate. A
// bridge rule is added to the program for a global one.
ATOMT getAtom(Expansion& expansion, const ATOMT& atom);

// The actual predicates of a nested invocation, renamed as getAtom does it, and what each stands
// for.
struct NestedActuals {
  TCONJUNCTION<ATOMT> atoms;
  std::vector<ActualOrigin> origins;
};
NestedActuals newConjunction(Expansion& expansion, std::span<const ATOMT> actuals);

// The nested invocation of this marker atom, its actual predicates and their parameters rewritten.
INVOCATIONATOM conjTemplInnestati(Expansion& expansion, const ATOMT& marker);

// The name of a template body's predicate as the definition has it: without label and "-".
struct BodyName {
  std::string_view text;
  bool is_strongly_negated;
};
BodyName body_name(const ATOMT& atom);

}    // namespace zarel
