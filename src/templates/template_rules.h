#pragma once
// template_rules.h - what templates mean: the established rules, and those of "-linktemplates".
//
// Note [linked templates]
// Without the option an expansion reads plain predicates: what the program's own atoms say stands
// in the generic encoding, which no template reads; invocations share an expansion when their
// signatures, sums of hashes, coincide. That is the established behaviour and is kept as it is.
// With the option templates read the program's relations, invocations share an expansion only when
// they mean the same, and no generated name or variable meets another one by chance. Each function
// below answers one question in the way that the option asks for: there is a class for each way,
// and the rest of this folder knows of neither.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/clause.h"
#include "model/generic_atoms.h"
#include "templates/invocations.h"

namespace zarel {

class TemplateRules {
 public:
  TemplateRules() = default;
  TemplateRules(const TemplateRules&) = delete;
  TemplateRules& operator=(const TemplateRules&) = delete;
  virtual ~TemplateRules() = default;

  // Whether frames in a template body become predicates of the template. Linked, they are statements
  // about the program's objects.
  virtual bool are_frames_local() = 0;

  // What names the expansion of an invocation of the program, and of one in a template body: its
  // signature. Linked, a number for template, actual predicates, frame spaces and parameter kinds;
  // what groups, a variable, a constant or a number, is one kind.
  virtual std::uint32_t expansion_of(const INVOCATIONATOM& invocation) = 0;
  virtual std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation,
                                            const BindingList& binding) = 0;

  // What tells the marker atoms of this expansion from others of the same text: nothing. Linked, the
  // expansion.
  virtual std::uint32_t marker_key(std::uint32_t expansion) = 0;

  // Whether a nested invocation that is not expanded yet is scheduled: always. Linked, once.
  virtual bool is_scheduled_again(std::uint32_t expansion) = 0;

  // Whether the definition's body reads the name as a global predicate: when any definition named it.
  // Linked, when this one did.
  virtual bool is_global(const DEFINITIONATOM& definition, std::string_view name) = 0;

  // A labelled name of a template body without its label: getNameWithoutPrefix. Linked, a name that
  // begins with punctuation of its own, as a quoted one, keeps it.
  virtual std::string_view unlabelled(std::string_view name) = 0;

  // Whether an expansion rewrites the atom: all but builtins and external atoms. Linked, neither
  // those that are none of the template's own, as a frame's.
  bool is_rewritten(const ATOMT& atom);

  // A variable for the n-th ordinary parameter of an invocation, and one for the n-th "*" of an
  // actual predicate with these arguments. Linked, variables that no clause of the program has.
  virtual TERMT group_variable(int n, const TERMT& parameter) = 0;
  virtual TERMT place_variable(std::span<const TERMT> arguments, int n) = 0;

  // A predicate for a template or a projection: getNameLabeled. Linked, the name fits no other role.
  virtual std::string generated_name(std::string_view base, int& counter) = 0;

  // The label that a local predicate gets in an expansion, and its name then: getAtomLabeled. Linked,
  // one that is not taken under "-" either.
  int free_label(const std::string& local);
  virtual std::string local_name(std::string_view local, int label) = 0;

  // The body atom of the projection of the invocation's actual predicate at this position. Linked,
  // the program's atom, as it stands there.
  virtual ATOMT projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                                  std::string_view name, std::span<const TERMT> terms) = 0;

  // The global predicate in a bridge rule. `atom` is how the definition's body has it, `name` what it
  // is called. Ends the run when an arity differs. Linked, the program's atom, of any arity.
  virtual Literal global_source(const DEFINITIONATOM& definition, const ATOMT& atom,
                                std::string_view name, Negation negation) = 0;

  // The atom that a bridge rule carries over: as it is. Linked, with a variable for each "_" and for
  // each marker of an actual predicate, which no rule may have in its head.
  virtual ATOMT bridged(const ATOMT& atom) = 0;

  // By formal predicate: which actual predicate's parameters an atom bound to it follows. The first
  // that fits by name and arity; linked, the one at the same position.
  virtual std::vector<std::size_t> pattern_positions(std::span<const ATOMT> actuals,
                                                     const BindingList& binding) = 0;

  // The arguments of a formal atom: getTerms, nothing when a side has none. Linked, always getTerms.
  virtual std::vector<TERMT> merged_terms(std::span<const TERMT> terms,
                                          std::span<const TERMT> pattern) = 0;

  // Whether a formal predicate that is handed on with these parameters stands for what it is bound
  // to: never. Linked, when all of them are "*".
  virtual bool stands_for_bound(std::span<const TERMT> parameters) = 0;

  // Whether "-" in front of a formal predicate asks for the strong negation: it means nothing.
  // Linked, it does. See Note [opposites].
  virtual bool are_formals_negated() = 0;

  // Whether templates that only template bodies invoke are checked, and the places of formal
  // predicates in nested invocations: no. Linked, they are.
  virtual bool are_nested_invocations_checked() = 0;

  // Whether a nested invocation's global actual predicate gets bridge rules: no. Linked, it does, one
  // for each sign.
  virtual bool are_nested_globals_bridged() = 0;

  // The literals that bind the group-by terms in a bridge rule.
  virtual std::vector<ATOMT> bridge_bindings(const BindingList& binding,
                                             std::span<const TERMT> group_by) = 0;

  // Whether a clause with this body gets safety literals, given that there are group-by terms: when
  // it has an ordinary atom. Linked, always.
  virtual bool needs_safety(std::span<const Literal> body) = 0;

  // The atoms that bind the group-by terms: safety forms of the actual predicates. Linked, of the
  // projections.
  virtual std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& invocation,
                                          const BindingList& binding,
                                          std::span<const TERMT> group_by) = 0;

  // What stands in a weak constraint for this safety atom: nothing else. Linked, an atom over the
  // group-by terms alone where it has other terms, with a rule for it: a cost counts instances, and a
  // group is one instance however much is behind it.
  virtual std::optional<ATOMT> group_atom(const ATOMT& safety) = 0;

  // The part of a predicate's name that makes a safety literal superfluous when a body literal has
  // the same: up to the first "_" behind its beginning. Linked, all of it.
  virtual std::string_view safety_name(const ATOMT& atom) = 0;

 protected:
  virtual bool is_of_template(const ATOMT& atom) = 0;    // a predicate's that is no builtin
  virtual bool is_taken(const std::string& name) = 0;    // a predicate's

 private:
  std::unordered_map<std::string, int> labels_;    // by local name: the last one given
};

// The rules that the options of the current run ask for; and each of them.
TemplateRules& template_rules();
TemplateRules& established_rules();
TemplateRules& linked_rules();

}    // namespace zarel
