#pragma once
// model_fixture.h - empty tables for every test, and short ways to build the model's values.

#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "driver/diagnostics.h"
#include "model/clause.h"
#include "model/tables.h"
#include "model/template_records.h"

namespace zarel {

// Starts from what a run starts with; messages go to `errors_`.
class ModelTest : public testing::Test {
 protected:
  ModelTest() {
    reset_tables();
    reset_report_state();
    report_state().errors = &errors_;
  }
  ~ModelTest() override { reset_report_state(); }

  std::ostringstream errors_;
};

template <class Case>
class ModelTable : public ModelTest, public testing::WithParamInterface<Case> {};

inline constexpr auto case_name = [](const auto& test) { return std::string(test.param.name); };

using Terms = std::vector<TERMT>;
using Type = PREDICATE_NAMETS::TYPE;
using Guard = std::optional<std::pair<TERMT, bool>>;

// The status with which the run ended in `action`; nothing when it went on.
template <class Action>
std::optional<int> end_of(Action action) {
  try {
    action();
  } catch (const RunEnd& end) {
    return end.status;
  }
  return std::nullopt;
}

inline TERMT num(std::int32_t value) {
  return TERMT::integer(value);
}

inline TERMT function_term(std::string_view placeholder) {
  return {TermKind::kFunctionTerm, newTERMT(placeholder).value};
}

template <class... Term>
Terms list(const Term&... terms) {
  return {terms...};
}

inline ATOMT typed_atom(std::string_view name, const Terms& terms, Type type) {
  return ATOMT(name, terms, type);
}
template <class... Term>
ATOMT atom(std::string_view name, const Term&... terms) {
  return typed_atom(name, {terms...}, Type::kUnknown);
}

inline Literal yes(const ATOMT& of) {
  return {of, false};
}
inline Literal no(const ATOMT& of) {
  return {of, true};
}

template <class... Literals>
Body body(const Literals&... literals) {
  Body made;
  (made.add(literals), ...);
  return made;
}

template <class... Atom>
Head heads(const Atom&... atoms) {
  Head made;
  (made.add(atoms), ...);
  return made;
}

inline Rule rule_over(const Head& head, const Body& of) {
  Rule made;
  made.init(&head, &of);
  return made;
}
template <class... Literals>
Rule rule(const Head& head, const Literals&... literals) {
  const Body of = body(literals...);
  Rule made;
  made.init(head.size() == 0 ? nullptr : &head, of.is_empty() ? nullptr : &of);
  return made;
}

enum class Equality { kNo, kYes };

inline ATOMT aggregate(AggregateFunction function, const Terms& terms, const Body& of,
                       const Guard& lower, const Guard& upper = std::nullopt,
                       Equality equality = Equality::kNo) {
  AGGREGATEPREDT made{};
  made.function = function;
  made.terms = program_storage().store(std::span<const TERMT>(terms));
  made.body = store(of);
  const auto none = std::make_pair(TERMT::absent(), false);
  return newAggregate(lower.value_or(none), upper.value_or(none), made, lower.has_value(),
                      upper.has_value(), equality == Equality::kYes);
}

inline ATOMT count_of(std::string_view variable, const Body& of, const Guard& lower,
                      const Guard& upper = std::nullopt, Equality equality = Equality::kNo) {
  return aggregate(AggregateFunction::kCount, {newTERMT(variable)}, of, lower, upper, equality);
}

inline Guard inclusive(const TERMT& term) {
  return standardizeGuard(term, true);
}
inline Guard strict(const TERMT& term) {
  return standardizeGuard(term, false);
}

template <class... Atom>
INVOCATIONATOM invocation(std::string_view name, const Terms& terms, const Atom&... actuals) {
  INVOCATIONATOM made{std::string(name), terms, {}};
  (made.actuals.add(actuals), ...);
  return made;
}

}    // namespace zarel
