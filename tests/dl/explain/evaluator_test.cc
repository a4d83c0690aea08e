#include <algorithm>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/explained_answer.h"
#include "dl/explain/random_bodies.h"
#include "dl/explain/random_seeds.h"

namespace {

using dl::Binding;
using dl_test::is_program;
using dl_test::RandomBodies;

// Rules whose heads have all variables of their bodies.
std::string random_program(unsigned seed) {
  RandomBodies random(seed);
  std::string program = "#maxint = 5.\n" + random.facts();
  std::set<std::string> variables;
  int rules = 0;
  for (int tries = 0; tries < 400 && rules < 40; ++tries) {
    variables.clear();
    const std::string body = random.body(variables);
    std::string rule = "instance" + std::to_string(rules);
    const char* separator = "(";
    for (const std::string& variable : variables) {
      (rule += separator) += variable;
      separator = ",";
    }
    ((rule += variables.empty() ? "" : ")") += " :- ") += body + ".\n";
    if (!is_program("#maxint = 5. " + rule)) continue;
    program += rule;
    ++rules;
  }
  return program;
}

// What clingo found: the instances of each head.
std::multiset<std::string> found_by_clingo(dl::ExplainedAnswer& answer) {
  std::multiset<std::string> atoms;
  for (dl::AtomNumber atom = 0; atom < answer.index().size(); ++atom) {
    std::string text;
    answer.index().append(text, atom);
    if (text.starts_with("instance")) atoms.insert(text);
  }
  return atoms;
}

std::multiset<std::string> found_by_evaluator(dl::ExplainedAnswer& answer) {
  dl::BodyEvaluator evaluator(answer.terms(), answer.index(), answer.store());
  std::multiset<std::string> atoms;
  for (const dl::StoredStatement& rule : answer.store().statements()) {
    evaluator.each(rule, {}, {}, [&](const Binding& binding) {
      std::vector<dl::GroundTerm> arguments;
      const dl::AtomPattern& head = rule.heads.front();
      for (const dl::PatternNumber argument : head.arguments) {
        arguments.push_back(evaluator.value(rule, argument, binding));
        if (arguments.back() == dl::kNoTerm) ADD_FAILURE() << rule.written;
      }
      std::string text;
      answer.index().append(text, head.predicate, arguments);
      if (text.starts_with("instance")) atoms.insert(text);
      for (const dl::StoredLiteral& literal : rule.body) {
        EXPECT_EQ(evaluator.holds(rule, literal, binding), true) << rule.written << ' ' << text;
      }
      return true;
    });
  }
  return atoms;
}

TEST(BodyEvaluator, FindsTheInstancesThatClingoFinds) {
  std::size_t instances = 0;
  const dl::Options options;
  dl_test::each_seed(60, [&](unsigned seed) {
    const std::string program = random_program(seed);
    const dl::Source source{"p", program};
    dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
    ASSERT_EQ(answer.find({}).outcome, dl::SearchOutcome::kFound) << program;
    const std::multiset<std::string> expected = found_by_clingo(answer);
    EXPECT_EQ(found_by_evaluator(answer), expected) << program;
    instances += expected.size();
  });
  EXPECT_GT(instances, 4000u);
}

}    // namespace
