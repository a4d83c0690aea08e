#pragma once
// linking.h - the option "-linktemplates", and everything that it changes in templates.
//
// Note [linked templates]
// Without the option an expansion reads plain predicates: what the program's own atoms say stands
// in the generic encoding, which no template reads; invocations share an expansion when their
// signatures, sums of hashes, coincide. That is the established behaviour and is kept as it is.
// With the option templates read the program's relations, invocations share an expansion only when
// they mean the same, and no generated name or variable meets another one by chance. Each function
// below answers one question in the way that the option asks for; the rest of this folder does not
// know of it.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/clause.h"
#include "model/generic_atoms.h"
#include "templates/invocations.h"

namespace zarel {

bool links_templates();

// Whether frames in a template body become predicates of the template. Linked, they are statements
// about the program's objects.
bool are_frames_local();

// What names the expansion of an invocation of the program, and of one in a template body: its
// signature. Linked, a number for template, actual predicates, frame spaces and parameter kinds;
// what groups, a variable, a constant or a number, is one kind.
std::uint32_t expansion_of(const INVOCATIONATOM& invocation);
std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation, const BindingList& binding);

// What tells the marker atoms of this expansion from others of the same text: nothing. Linked, the
// expansion.
std::uint32_t marker_key(std::uint32_t expansion);

// Whether a nested invocation that is not expanded yet is scheduled: always. Linked, once.
bool is_scheduled_again(std::uint32_t expansion);

// Whether the definition's body reads the name as a global predicate: when any definition named it.
// Linked, when this one did.
bool is_global(const DEFINITIONATOM& definition, std::string_view name);

// A labelled name of a template body without its label: getNameWithoutPrefix. Linked, a name that
// begins with punctuation of its own, as a quoted one, keeps it.
std::string_view unlabelled(std::string_view name);

// Whether an expansion rewrites the atom: all but builtins and external atoms. Linked, neither
// those that are none of the template's own, as a frame's.
bool is_rewritten(const ATOMT& atom);

// A variable for the n-th ordinary parameter of an invocation, and one for the n-th "*" of an
// actual predicate with these arguments. Linked, variables that no clause of the program has.
TERMT group_variable(int n, const TERMT& parameter);
TERMT place_variable(std::span<const TERMT> arguments, int n);

// A predicate for a template or a projection: getNameLabeled. Linked, the name fits no other role.
std::string generated_name(std::string_view base, int& counter);

// The label that a local predicate gets in an expansion, and its name then: getAtomLabeled. Linked,
// one that is not taken under "-" either.
int free_label(const std::string& local);
std::string local_name(std::string_view local, int label);

// The body atom of the projection of the invocation's actual predicate at this position. Linked,
// the program's atom, as it stands there.
ATOMT projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                        std::string_view name, std::span<const TERMT> terms);

// The global predicate in a bridge rule. `atom` is how the definition's body has it, `name` what it
// is called. Ends the run when an arity differs. Linked, the program's atom, of any arity.
Literal global_source(const DEFINITIONATOM& definition, const ATOMT& atom, std::string_view name,
                      Negation negation);

// The atom that a bridge rule carries over: as it is. Linked, with a variable for each "_" and for
// each marker of an actual predicate, which no rule may have in its head.
ATOMT bridged(const ATOMT& atom);

// By formal predicate: which actual predicate's parameters an atom bound to it follows. The first
// that fits by name and arity; linked, the one at the same position.
std::vector<std::size_t> pattern_positions(std::span<const ATOMT> actuals,
                                           const BindingList& binding);

// The arguments of a formal atom: getTerms, nothing when a side has none. Linked, always getTerms.
std::vector<TERMT> merged_terms(std::span<const TERMT> terms, std::span<const TERMT> pattern);

// Whether a formal predicate that is handed on with these parameters stands for what it is bound
// to: never. Linked, when all of them are "*".
bool stands_for_bound(std::span<const TERMT> parameters);

// Whether "-" in front of a formal predicate asks for the strong negation: it means nothing.
// Linked, it does. See Note [opposites].
bool are_formals_negated();

// Whether templates that only template bodies invoke are checked, and the places of formal
// predicates in nested invocations: no. Linked, they are.
bool are_nested_invocations_checked();

// Whether a nested invocation's global actual predicate gets bridge rules: no. Linked, it does, one
// for each sign.
bool are_nested_globals_bridged();

// The literals that bind the group-by terms in a bridge rule.
std::vector<ATOMT> bridge_bindings(const BindingList& binding, std::span<const TERMT> group_by);

// Whether a clause with this body gets safety literals, given that there are group-by terms: when
// it has an ordinary atom. Linked, always.
bool needs_safety(std::span<const Literal> body);

// The atoms that bind the group-by terms: safety forms of the actual predicates. Linked, of the
// projections.
std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& invocation, const BindingList& binding,
                                std::span<const TERMT> group_by);

// What stands in a weak constraint for this safety atom: nothing else. Linked, an atom over the
// group-by terms alone where it has other terms, with a rule for it: a cost counts instances, and a
// group is one instance however much is behind it.
std::optional<ATOMT> group_atom(const ATOMT& safety);

// The part of a predicate's name that makes a safety literal superfluous when a body literal has
// the same: up to the first "_" behind its beginning. Linked, all of it.
std::string_view safety_name(const ATOMT& atom);

}    // namespace zarel
