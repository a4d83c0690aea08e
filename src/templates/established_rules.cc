// established_rules.cc - what templates mean without "-linktemplates". See Note [linked templates].

#include <algorithm>
#include <map>
#include <numeric>

#include "model/names.h"
#include "model/program.h"
#include "model/run.h"
#include "model/safety.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

using NameAndArity = std::pair<std::string, std::size_t>;

// What the projection of an actual predicate has, but for its label.
NameAndArity name_and_kept_arity(const ATOMT& actual) {
  const std::span<const TERMT> terms = actual.terms();
  const auto kept = std::count_if(terms.begin(), terms.end(),
                                  [](const TERMT& term) { return term.kind != TermKind::kDollar; });
  return {std::string(getNameWithoutPrefix(actual.name())), static_cast<std::size_t>(kept)};
}

class EstablishedRules : public TemplateRules {
 public:
  bool are_frames_local() override { return true; }

  std::uint32_t expansion_of(const INVOCATIONATOM& invocation) override {
    return signature(invocation);
  }

  std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation,
                                    const BindingList& binding) override {
    return internal_signature(invocation, binding);
  }

  std::uint32_t marker_key(std::uint32_t /*expansion*/) override { return 0; }

  bool is_scheduled_again(std::uint32_t /*expansion*/) override { return true; }

  bool is_global(const DEFINITIONATOM& /*definition*/, std::string_view name) override {
    const std::optional<NameId> id = names().find(name);
    return id && GLOBALS().contains(*id);
  }

  std::string_view unlabelled(std::string_view name) override { return getNameWithoutPrefix(name); }

  TERMT group_variable(int n, const TERMT& parameter) override {
    return newTERMT(getNewName(n, parameter));
  }

  TERMT place_variable(std::span<const TERMT> arguments, int n) override {
    return newTERMT(getNameTerm(arguments, n));
  }

  std::string generated_name(std::string_view base, int& counter) override {
    return getNameLabeled(base, counter);
  }

  std::string local_name(std::string_view local, int label) override {
    return getNameLabeledConst(local, label);
  }

  ATOMT projection_source(const INVOCATIONATOM& /*invocation*/, std::size_t /*position*/,
                          std::string_view name, std::span<const TERMT> terms) override {
    if (!OptionHigherOrder()) return {name, terms, Type::kUnknown};
    std::vector<TERMT> list(terms.begin(), terms.end());
    list.push_back(TERMT::constant(names().intern(name)));
    return {"a_" + std::to_string(terms.size()), list, Type::kUnknown};
  }

  Literal global_source(const DEFINITIONATOM& /*definition*/, const ATOMT& atom,
                        std::string_view name, Negation negation) override {
    control_of_arity(atom);
    return {ATOMT(name, atom.terms(), Type::kUnknown), negation == Negation::kStrong};
  }

  ATOMT bridged(const ATOMT& atom) override { return atom; }

  std::vector<std::size_t> pattern_positions(std::span<const ATOMT> actuals,
                                             const BindingList& binding) override {
    std::vector<std::size_t> positions(binding.size());
    std::iota(positions.begin(), positions.end(), 0);
    std::map<NameAndArity, std::size_t> first_with;
    for (std::size_t i = 0; i < actuals.size(); ++i) {
      first_with.try_emplace(name_and_kept_arity(actuals[i]), i);
    }
    for (std::size_t& position : positions) {
      const ATOMT& bound = binding[position].second;
      const auto found = first_with.find({getNameWithoutLabel(bound.name()), bound.terms().size()});
      if (found != first_with.end()) position = found->second;
    }
    return positions;
  }

  std::vector<TERMT> merged_terms(std::span<const TERMT> terms,
                                  std::span<const TERMT> pattern) override {
    if (terms.empty() || pattern.empty()) return {};
    return getTerms(terms, pattern);
  }

  bool stands_for_bound(std::span<const TERMT> /*parameters*/) override { return false; }

  bool are_formals_negated() override { return false; }

  bool are_nested_invocations_checked() override { return false; }

  bool are_nested_globals_bridged() override { return false; }

  std::vector<ATOMT> bridge_bindings(const BindingList& binding,
                                     std::span<const TERMT> group_by) override {
    std::vector<ATOMT> atoms;
    if (group_by.empty()) return atoms;
    for (const auto& [formal, projection] : binding) {
      atoms.push_back(soloGroup_by(group_by, projection, OtherTerms::kAnonymous));
    }
    return atoms;
  }

  bool needs_safety(std::span<const Literal> body) override {
    return std::any_of(body.begin(), body.end(), [](const Literal& literal) {
      return literal.atom.payload() == ATOMT::Payload::kTerms;
    });
  }

  std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& invocation, const BindingList& binding,
                                  std::span<const TERMT> /*group_by*/) override {
    return returnAtomsSafe(binding, invocation);
  }

  std::optional<ATOMT> group_atom(const ATOMT& /*safety*/) override { return std::nullopt; }

  std::string_view safety_name(const ATOMT& atom) override {
    return cut_at_underscore(atom.name(), LeadingUnderscores::kKeep);
  }

 protected:
  bool is_of_template(const ATOMT& /*atom*/) override { return true; }

  bool is_taken(const std::string& name) override { return ATOMT::Predicates().contains(name); }
};

}    // namespace

TemplateRules& established_rules() {
  return current_run().parts.get<EstablishedRules>();
}

}    // namespace zarel
