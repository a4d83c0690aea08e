#pragma once
// generated_predicates.h - what the predicates stand for that template expansions made, for whoever
// tells the user of them in his own words.

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "templates/invocations.h"

namespace zarel {

// One expansion, as the invocation has it that it was made for.
struct MadeExpansion {
  struct Actual {
    std::string predicate;    // as the invocation names it; in a template's body a generated one
    bool is_strongly_negated = false;
    std::string frame_space;                // empty: none
    std::vector<std::string> parameters;    // "*", "$", or what groups, as it is written
  };
  std::string template_name;
  std::vector<Actual> actuals;
  // What groups, in the order of the result's first arguments: the variable's name in the clauses of
  // the expansion, and the parameter.
  std::vector<std::pair<std::string, std::string>> groups;
};

struct GeneratedPredicate {
  enum class Role : std::uint8_t {
    kResult,     // of the template; the groups are its first arguments, the output terms follow
    kLocal,      // defined in the template's body, with the groups in front
    kStandsIn    // for what is first in the body of its rule: an actual or a global predicate
  };
  Role role = Role::kLocal;
  std::uint32_t expansion = 0;    // of a result and a local predicate: an index
  std::string name;               // of a local predicate, as the template's body has it
};

// Predicates by the names that the solver reads, without "-".
class GeneratedPredicates {
 public:
  // From now on what is made belongs to this expansion.
  void begin_expansion(const INVOCATIONATOM& invocation, std::string_view result);
  // A later word replaces an earlier one.
  void add_local(std::string_view predicate, std::string_view name);
  void add_stand_in(std::string_view predicate);

  const GeneratedPredicate* find(std::string_view predicate) const;    // null: none
  const std::vector<MadeExpansion>& expansions() const { return expansions_; }
  // The result of that expansion, as the solver names it.
  const std::string& result_of(std::uint32_t expansion) const { return results_[expansion]; }

 private:
  std::vector<MadeExpansion> expansions_;
  std::vector<std::string> results_;
  std::unordered_map<std::string, GeneratedPredicate> predicates_;
};

GeneratedPredicates& generated_predicates();    // of the current run

}    // namespace zarel
