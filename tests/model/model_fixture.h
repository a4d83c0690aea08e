#pragma once
// model_fixture.h - empty tables for every test, and short ways to build the model's values.

#include <gtest/gtest.h>
#include <optional>
#include <sstream>

#include "model/generic_atoms.h"
#include "model/printer.h"
#include "model/program.h"
#include "model/template_records.h"
#include "support/caught_findings.h"
#include "support/fresh_run.h"

namespace zarel {

// Starts from what a run starts with; messages go to `errors_`.
class ModelTest : public testing::Test {
 protected:
  ModelTest() { begin({}); }

  // Another run takes the place of the one before.
  void begin(RunOptions options) {
    options.OptionHigherOrder = false;
    run_.begin(options);
    catch_findings(errors_, errors_);
  }

  std::ostringstream errors_;
  FreshRun run_;
};

using Terms = std::vector<TERMT>;
using Type = PREDICATE_NAMETS::TYPE;

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

template <class T>
std::string text_of(const T& value) {
  Text text;
  append_text(text, value);
  return text.str();
}
template <class List>
std::string list_of(const List& list) {
  Text text;
  append_list(text, list, ", ");
  return text.str();
}

inline constexpr auto num = [](std::int32_t value) { return TERMT::integer(value); };
inline constexpr auto function_term = [](std::string_view placeholder) {
  return TERMT{TermKind::kFunctionTerm, newTERMT(placeholder).value()};
};
template <class... Term>
ATOMT atom(std::string_view name, const Term&... terms) {
  return {name, Terms{terms...}, Type::kUnknown};
}
inline constexpr auto yes = [](const ATOMT& of) { return Literal{of, false}; };
inline constexpr auto no = [](const ATOMT& of) { return Literal{of, true}; };
template <class... Literals>
Body body(const Literals&... literals) {
  Body made;
  (made.add(literals), ...);
  return made;
}

// #count{X:of} with these guards, "<" or "=" on both sides.
inline ATOMT count(std::optional<TERMT> lower, std::optional<TERMT> upper, bool is_equality,
                   const Body& of = body(yes(atom("p")))) {
  AGGREGATEPREDT made{};
  made.function = AggregateFunction::kCount;
  made.terms = program_storage().store(std::span<const TERMT>(Terms{newTERMT("X")}));
  made.body = store(of);
  return newAggregate(standardizeGuard(lower.value_or(TERMT::absent()), false),
                      standardizeGuard(upper.value_or(TERMT::absent()), false), made,
                      lower.has_value(), upper.has_value(), is_equality);
}

template <class... Atom>
INVOCATIONATOM invocation(std::string_view name, const Terms& terms, const Atom&... actuals) {
  INVOCATIONATOM made{std::string(name), terms, {}};
  (made.actuals.add(actuals), ...);
  return made;
}

}    // namespace zarel
