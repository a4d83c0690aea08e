#include "dl/explain/paid_costs.h"

#include <algorithm>
#include <string>
#include <utility>

#include "dl/explain/statement_reader.h"
#include "dl/folding.h"
#include "dl/parse.h"

namespace dl {
namespace {

// The value of a weight or level: 1 where none is written, nothing where it is no integer.
std::optional<std::int64_t> measured(BodyEvaluator& evaluator, const StoredStatement& statement,
                                     const std::optional<PatternNumber>& measure,
                                     const Binding& binding) {
  if (!measure) return 1;
  const GroundTerm value = evaluator.value(statement, *measure, binding);
  if (value == kNoTerm || !GroundTerms::is_integer(value)) return std::nullopt;
  return GroundTerms::value(value);
}

// Takes the one weak constraint of a text, and names all of its variables.
class ConditionReader : public StatementReader {
 public:
  // The body with a name for each "_" that is a variable.
  std::string condition;
  std::vector<std::string> variables;    // by VariableId

  MaybeMistake weak_constraint(const Statement& statement, const Piece&, const Piece&) override {
    const std::string prefix = unused_variable(statement.condition);
    std::vector<Use> unnamed;
    for (VariableId variable = 0; variable < statement.variables.size(); ++variable) {
      variables.emplace_back(statement.spelling(variable));
      if (!statement.is_unnamed(variable)) continue;
      variables.back() = prefix + std::to_string(variable);
      const auto use = std::ranges::find(statement.uses, variable, &Use::variable);
      if (use != statement.uses.end()) unnamed.push_back(*use);
    }
    std::ranges::sort(unnamed, {}, &Use::offset);
    const char* begin = statement.condition.data();
    for (const Use& use : unnamed) {
      const char* const written = statement.source + use.offset;
      condition.append(begin, written) += variables[use.variable];
      begin = written + 1;
    }
    condition.append(begin, statement.condition.data() + statement.condition.size());
    return {};
  }

 private:
  static std::string unused_variable(std::string_view text) {
    std::string name("V");
    while (text.find(name) != std::string_view::npos) name += 'v';
    return name;
  }
};

// The constraint that forbids the instance alone.
std::string forbidding(const StoredStatement& statement, const GroundTerms& terms,
                       const Binding& binding) {
  std::string text(statement.written);
  text.append(kEndMarks, '\0');
  ConditionReader reader;
  const Folding nothing_folded;
  StatementBuilder builder(reader, nothing_folded);
  parse_text(text, builder);
  std::string constraint = ":-" + reader.condition;
  for (VariableId variable = 0; variable < statement.variables.size(); ++variable) {
    if (statement.is_outer[variable] == 0 || binding[variable] == kNoTerm) continue;
    ((constraint += ", ") += reader.variables[variable]) += " == ";
    terms.append(constraint, binding[variable]);
  }
  return constraint += ".\n";
}

}    // namespace

std::vector<PaidInstance> paid_instances(BodyEvaluator& evaluator, const StatementStore& store) {
  std::vector<PaidInstance> paid;
  for (StatementNumber number = 0; number < store.statements().size(); ++number) {
    const StoredStatement& statement = store.statement(number);
    if (statement.kind != StatementKind::kWeakConstraint) continue;
    evaluator.each(statement, {}, {}, [&](const Binding& binding) {
      const auto weight = measured(evaluator, statement, statement.weight, binding);
      const auto level = measured(evaluator, statement, statement.level, binding);
      if (weight && level && *weight != 0) paid.push_back({number, binding, *weight, *level});
      return true;
    });
  }
  std::ranges::stable_sort(paid, [](const PaidInstance& left, const PaidInstance& right) {
    return std::pair(left.level, left.weight) > std::pair(right.level, right.weight);
  });
  return paid;
}

Avoidance avoid(const StatementStore& store, GroundTerms& terms, const PaidInstance& instance,
                const Options& options) {
  Program program;
  const Sources& sources = store.sources();
  for (std::uint32_t file = 0; file < sources.size(); ++file) {
    const std::string& text = sources.text(file);
    survey_text(program, sources.name(file), text.substr(0, text.size() - kEndMarks));
  }
  survey_text(program, "explanation",
              forbidding(store.statement(instance.statement), terms, instance.binding));
  Options chosen = own_options(options);
  chosen.one_best = true;
  FoundAnswers found = search_all(std::move(program), chosen);
  if (found.texts.empty()) return {found.outcome, {}, {}};
  return {found.outcome, std::move(found.costs), std::move(found.texts.front())};
}

}    // namespace dl
