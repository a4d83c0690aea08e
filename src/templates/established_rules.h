#pragma once
// established_rules.h - what templates mean without "-linktemplates". See Note [linked templates].

#include "templates/template_rules.h"

namespace zarel {

class EstablishedRules : public TemplateRules {
 public:
  bool are_frames_local() override;
  std::uint32_t expansion_of(const INVOCATIONATOM& invocation) override;
  std::uint32_t nested_expansion_of(const INVOCATIONATOM& invocation,
                                    const BindingList& binding) override;
  std::uint32_t marker_key(std::uint32_t expansion) override;
  bool is_scheduled_again(std::uint32_t expansion) override;
  bool is_global(const DEFINITIONATOM& definition, std::string_view name) override;
  std::string_view unlabelled(std::string_view name) override;
  TERMT group_variable(int n, const TERMT& parameter) override;
  TERMT place_variable(std::span<const TERMT> arguments, int n) override;
  std::string generated_name(std::string_view base, int& counter) override;
  std::string local_name(std::string_view local, int label) override;
  ATOMT projection_source(const INVOCATIONATOM& invocation, std::size_t position,
                          std::string_view name, std::span<const TERMT> terms) override;
  Literal global_source(const DEFINITIONATOM& definition, const ATOMT& atom, std::string_view name,
                        Negation negation) override;
  ATOMT bridged(const ATOMT& atom) override;
  std::vector<std::size_t> pattern_positions(std::span<const ATOMT> actuals,
                                             const BindingList& binding) override;
  std::vector<TERMT> merged_terms(std::span<const TERMT> terms,
                                  std::span<const TERMT> pattern) override;
  bool stands_for_bound(std::span<const TERMT> parameters) override;
  bool are_formals_negated() override;
  bool are_nested_invocations_checked() override;
  bool are_nested_globals_bridged() override;
  std::vector<ATOMT> bridge_bindings(const BindingList& binding,
                                     std::span<const TERMT> group_by) override;
  bool needs_safety(std::span<const Literal> body) override;
  std::vector<ATOMT> safety_atoms(const INVOCATIONATOM& invocation, const BindingList& binding,
                                  std::span<const TERMT> group_by) override;
  std::optional<ATOMT> group_atom(const ATOMT& safety) override;
  std::string_view safety_name(const ATOMT& atom) override;

 protected:
  bool is_of_template(const ATOMT& atom) override;
  bool is_taken(const std::string& name) override;
};

}    // namespace zarel
