#include "templates/expansion.h"

#include <map>
#include <optional>
#include <ostream>
#include <unordered_map>
#include <utility>
#include <vector>

#include "model/run.h"
#include "model/safety.h"
#include "templates/atom_rewriting.h"
#include "templates/checks.h"
#include "templates/definitions.h"
#include "templates/generated_program.h"
#include "templates/marker_replacement.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"
#include "templates/template_rules.h"

namespace zarel {
namespace {

struct FormalPredicates {
  TCONJUNCTION<ATOMT> value;
};

constexpr std::uint32_t kDeepestLevel = 1000;

// An expansion that groups by one more term on every level makes all its names and atoms longer,
// too: a thousand levels of it would fill the disk. Levels and terms are bounded together.
constexpr std::size_t kMostTermsOfLevels = 60'000;

bool is_too_deep(const INVOCATIONATOM& invocation) {
  std::size_t terms = 0;
  for (const ATOMT& actual : invocation.actuals.positive()) terms += actual.terms().size();
  return invocation.level > kDeepestLevel || invocation.level * terms > kMostTermsOfLevels;
}

AGGREGATEPREDT with_body(const AGGREGATEPREDT& aggregate, const Body& body) {
  AGGREGATEPREDT changed = aggregate;
  changed.body = store(body);
  return changed;
}

// The clauses of one definition, one after the other.
class ClauseRewriter {
 public:
  ClauseRewriter(Expansion& expansion, const DoneList& done, std::ostream& legend)
      : expansion_(expansion), done_(done), legend_(legend), made_by_(work().origin) {}

  void rewrite(const CLAUSET& clause) {
    const WorkScope at({clause.source().location, origin_of(clause)});
    std::visit([this](const auto& payload) { add_generated(rewritten(payload)); },
               clause.payload());
    for (const auto& [invocation, generated] : closed_) {
      StandardizeAtomInvocation(invocation, generated, legend_);
    }
    closed_.clear();
  }

 private:
  OriginId origin_of(const CLAUSET& clause) {
    const OriginId written = clause.source().origin;
    if (written == OriginId::kWritten) return made_by_;
    const auto [known, is_new] = made_otherwise_.try_emplace(written, OriginId::kWritten);
    if (is_new) {
      OriginTable& origins = current_run().origins;
      Origin origin = origins[made_by_];
      origin.kind = origins[written].kind;
      known->second = origins.add(origin);
    }
    return known->second;
  }

  TERMT rewritten(const TERMT& maxint) { return maxint; }

  Rule rewritten(const Rule& rule) { return rewritten_rule(rule.head(), rule.body()); }
  Rule rewritten(const Fact& fact) { return rewritten_rule(fact.head(), {}); }

  Rule rewritten_rule(std::span<const ATOMT> written_head, std::span<const Literal> written_body) {
    Head head;
    for (const ATOMT& atom : written_head) head.add(getAtom(expansion_, atom));
    const Body body = safe_body(written_body);
    return rule_of(&head, &body);
  }

  Constraint rewritten(const Constraint& constraint) {
    return Constraint(safe_body(constraint.body()));
  }

  WeakConstraint rewritten(const WeakConstraint& weak) {
    Body body = rewritten_body(weak.body());
    const TCONJUNCTION<Literal> safety = needed_safety(weak.body(), body);
    for (const Literal& literal : safety.positive()) body.add({cost_safety(literal.atom), false});
    return {body, {weak.weight(), weak.level()}};
  }

  ATOMT cost_safety(const ATOMT& safety) {
    const auto known = groups_.find(safety.predicate());
    if (known != groups_.end()) return known->second;
    const std::optional<ATOMT> group = template_rules().group_atom(safety);
    if (!group) return safety;
    return groups_.emplace(safety.predicate(), *group).first->second;
  }

  Body safe_body(std::span<const Literal> written) {
    Body body = rewritten_body(written);
    const TCONJUNCTION<Literal> safety = needed_safety(written, body);
    for (const Literal& literal : safety.positive()) body.add(literal);
    return body;
  }

  TCONJUNCTION<Literal> needed_safety(std::span<const Literal> written, const Body& body) {
    if (expansion_.group_by().empty() || !template_rules().needs_safety(written)) return {};
    if (safety_.empty()) {
      safety_ = template_rules().safety_atoms(expansion_.invocation(), expansion_.binding(),
                                              expansion_.group_by());
    }
    return modifyRule(safety_, body);
  }

  Body rewritten_body(std::span<const Literal> written) {
    Body body;
    for (const Literal& literal : written) {
      body.add({rewritten_atom(literal.atom), literal.is_negated});
    }
    return body;
  }

  ATOMT rewritten_atom(const ATOMT& atom) {
    if (atom.is_aggregate()) return rewritten_aggregate(atom.aggregate());
    if (atom.payload() == ATOMT::Payload::kInvocation) return nested_marker(atom);
    return getAtom(expansion_, atom);
  }

  ATOMT rewritten_aggregate(const AGGREGATEPREDT& written) {
    const Body body = rewritten_body(written.body.elements());
    return newAggregate(standardizeGuard(written.lower.term, written.lower.is_inclusive),
                        standardizeGuard(written.upper.term, written.upper.is_inclusive),
                        with_body(written, body), written.has_lower, written.has_upper,
                        written.is_equality);
  }

  ATOMT nested_marker(const ATOMT& written) {
    templateInn().clear();    // the list is this clause's from here on, and nothing reads it
    INVOCATIONATOM invocation = conjTemplInnestati(expansion_, written);
    invocation.origin = made_by_;
    const DEFINITIONATOM* const definition = defhashmap().find(invocation.name);
    if (definition != nullptr && !has_shape_of(invocation, *definition)) end_run(1);
    const std::uint32_t key =
        template_rules().nested_expansion_of(invocation, expansion_.binding());
    invocation.expansion_key = template_rules().marker_key(key);
    const ATOMT marker(invocation);
    invocation.marker = marker;
    if (const std::string* const generated = done_.find(key)) {
      closed_.emplace_back(std::move(invocation), *generated);
    } else {
      schedule_nested(key, std::move(invocation));
    }
    return marker;
  }

  void schedule_nested(std::uint32_t key, INVOCATIONATOM invocation) {
    if (is_too_deep(invocation)) {
      report_and_end({Code::kEndlessExpansion, place_of(invocation.written),
                      "Template expansion does not terminate."});
    }
    if (template_rules().is_scheduled_again(key)) schedule().push_back(key);
    invhashmap().add(key, std::move(invocation));
  }

  Expansion& expansion_;
  const DoneList& done_;
  std::ostream& legend_;
  OriginId made_by_;                                   // this expansion
  std::map<OriginId, OriginId> made_otherwise_;        // its clauses out of frames, say
  std::vector<ATOMT> safety_;                          // made when the first clause needs them
  std::unordered_map<std::uint32_t, ATOMT> groups_;    // made so far, by the safety atom's
  // Its invocations whose expansion is done, each with the generated predicate.
  std::vector<std::pair<INVOCATIONATOM, std::string>> closed_;
};

}    // namespace

TCONJUNCTION<ATOMT>& predformal() {
  return current_run().parts.get<FormalPredicates>().value;
}

void StandardizeRulesT(const INVOCATIONATOM& invocation, const DEFINITIONATOM& definition,
                       std::string_view generated, const BindingList& binding, const DoneList& done,
                       std::ostream& legend) {
  Expansion expansion(invocation, definition, generated, binding);
  for (const ATOMT& actual : expansion.actuals()) {
    if (existVarGroup(actual)) predformal().add(actual);
  }
  ClauseRewriter rewriter(expansion, done, legend);
  for (const CLAUSET& clause : definition.rules) rewriter.rewrite(clause);
}

}    // namespace zarel
