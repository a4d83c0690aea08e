#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/explained_answer.h"
#include "dl/explain/random_bodies.h"
#include "dl/explain/random_seeds.h"
#include "dl/interruption.h"

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
      for (std::size_t i = 0; i < rule.body.size(); ++i) {
        const dl::StoredLiteral& literal = rule.body[i];
        EXPECT_EQ(evaluator.holds(rule, literal, binding), true) << rule.written << ' ' << text;
        const dl::AtomNumber found = evaluator.found_atoms()[i];
        if (found == dl::kNoAtom) continue;
        EXPECT_EQ(evaluator.atoms_of(rule, literal.atom, binding, 2), std::vector{found})
            << rule.written << ' ' << text;
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

// The literal in the middle is looked up with X = 1, and with X = 2 a test behind the last one.
TEST(BodyEvaluator, TellsTheAtomsOfEachBinding) {
  const dl::Options options;
  const dl::Source source{"p",
                          "a(1). a(2). b(1,1). b(2,1). b(2,2). b(2,3). b(2,4). c(1). c(2). c(5).\n"
                          "h(X,Y) :- a(X), b(X,Y), c(Y).\n"};
  dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
  answer.find({});
  dl::BodyEvaluator evaluator(answer.terms(), answer.index(), answer.store());
  std::set<std::string> told;
  evaluator.each(answer.store().statement(0), {}, {}, [&](const Binding&) {
    std::string atoms;
    for (const dl::AtomNumber atom : evaluator.found_atoms()) {
      atoms += ' ';
      if (atom != dl::kNoAtom) answer.index().append(atoms, atom);
    }
    return told.insert(atoms).second;
  });
  EXPECT_EQ(told, (std::set<std::string>{" a(1) b(1,1) ", " a(2)  c(1)", " a(2)  c(2)"}));
}

// In another process: an interruption is there until the end of one.
void look_interrupted() {
  const dl::Options options;
  std::string program;
  for (int i = 0; i < 100; ++i) program += "a(" + std::to_string(i) + "). ";
  program += "h(X) :- a(X), a(Y), a(Z).\n";
  const dl::Source source{"p", program};
  dl::ExplainedAnswer answer(dl::survey_texts({&source, 1}), options);
  answer.find({});
  dl::BodyEvaluator before(answer.terms(), answer.index(), answer.store());
  dl::watch_interruptions({});
  dl::hold_interruptions();
  std::raise(SIGTERM);
  dl::BodyEvaluator after(answer.terms(), answer.index(), answer.store());
  const auto count = [&](dl::BodyEvaluator& evaluator) {
    std::size_t instances = 0;
    evaluator.each(answer.store().statement(0), {}, {}, [&](const Binding&) {
      ++instances;
      return true;
    });
    return instances;
  };
  if (count(after) != 1'000'000) std::_Exit(1);
  try {
    count(before);
  } catch (const dl::Interrupted&) {
    std::_Exit(7);
  }
  std::_Exit(2);
}

TEST(BodyEvaluator, EndsWhenAnInterruptionComes) {
  EXPECT_EXIT(look_interrupted(), testing::ExitedWithCode(7), "");
}

// Values that share a bucket, and many atoms of one value.
TEST(AnswerIndex, FindsTheAtomsWithAValue) {
  dl::GroundTerms terms;
  dl::AnswerIndex index(terms);
  const dl::PredicateNumber predicate = index.number({terms.name("p"), 2, false});
  std::map<dl::GroundTerm, std::vector<dl::AtomNumber>> expected;
  for (std::uint32_t i = 0; i < 3000; ++i) {
    const dl::GroundTerm value = dl::GroundTerms::integer(i % 3 == 0 ? 7 : i * 1024);
    expected[value].push_back(index.add(predicate, {{dl::GroundTerms::integer(i), value}}));
  }
  for (const auto& [value, atoms] : expected) {
    const auto found = index.atoms_with(predicate, 1, value);
    EXPECT_EQ(std::vector(found.begin(), found.end()), atoms);
  }
  EXPECT_TRUE(index.atoms_with(predicate, 1, dl::GroundTerms::integer(5)).empty());
}

}    // namespace
