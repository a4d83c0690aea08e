// costs_test.cc - what an answer set pays for, and what it would cost not to.
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/paid_costs.h"
#include "dl/explain/random_seeds.h"

namespace dl_test {
namespace {

std::string shown(const dl::Costs& costs) {
  std::string text;
  for (const auto& [level, cost] : costs) {
    (((text += ' ') += std::to_string(cost)) += '@') += std::to_string(level);
  }
  return text;
}

dl::FoundAnswer found(std::string_view program) {
  const dl::Source source{"p", program};
  return dl::search_one(dl::survey_texts({&source, 1}), {});
}

// The best answer set of a program and what it pays.
class Paid {
 public:
  explicit Paid(std::string_view program) {
    const dl::Source source{"p", program};
    answer_ = std::make_unique<dl::ExplainedAnswer>(dl::survey_texts({&source, 1}), options_);
    EXPECT_EQ(answer_->find({}).outcome, dl::SearchOutcome::kFound);
    dl::BodyEvaluator evaluator(answer_->terms(), answer_->index(), answer_->store());
    instances_ = dl::paid_instances(evaluator, answer_->store());
  }

  const std::vector<dl::PaidInstance>& instances() const { return instances_; }
  const dl::Costs& costs() const { return answer_->found().costs; }
  dl::Avoidance avoided(const dl::PaidInstance& instance) {
    return dl::avoid(answer_->store(), answer_->terms(), instance, options_);
  }

  // Of the weak constraints, from 0.
  std::size_t number_of(const dl::PaidInstance& instance) const {
    std::size_t number = 0;
    for (dl::StatementNumber i = 0; i < instance.statement; ++i) {
      number += answer_->store().statement(i).kind == dl::StatementKind::kWeakConstraint ? 1 : 0;
    }
    return number;
  }
  // By the variables' names.
  std::vector<std::pair<std::string, std::string>> values_of(
      const dl::PaidInstance& instance) const {
    std::vector<std::pair<std::string, std::string>> values;
    for (dl::VariableId i = 0; i < instance.binding.size(); ++i) {
      if (instance.binding[i] == dl::kNoTerm) continue;
      values.emplace_back(answer_->store().statement(instance.statement).variables[i], "");
      answer_->terms().append(values.back().second, instance.binding[i]);
    }
    return values;
  }
  // "3@1 in line 2 X=1".
  std::string shown(const dl::PaidInstance& instance) const {
    const dl::StoredStatement& statement = answer_->store().statement(instance.statement);
    std::string text = std::to_string(instance.weight);
    (text += '@') += std::to_string(instance.level);
    (text += " in line ") += std::to_string(statement.range.first_line);
    for (const auto& [name, value] : values_of(instance)) {
      (((text += ' ') += name) += '=') += value;
    }
    return text;
  }

 private:
  dl::Options options_;
  std::unique_ptr<dl::ExplainedAnswer> answer_;
  std::vector<dl::PaidInstance> instances_;
};

struct CostCase {
  std::string_view name, program, told;
  friend void PrintTo(const CostCase& test, std::ostream* stream) { *stream << test.name; }
};
class PaidCosts : public testing::TestWithParam<CostCase> {};

TEST_P(PaidCosts, AreToldWithWhatAvoidsThem) {
  Paid paid(GetParam().program);
  std::string told = "costs" + shown(paid.costs());
  for (const dl::PaidInstance& instance : paid.instances()) {
    (told += "; ") += paid.shown(instance);
    const dl::Avoidance avoidance = paid.avoided(instance);
    const bool is_none = avoidance.outcome == dl::SearchOutcome::kNone;
    told += is_none ? ", not avoided" : ", else" + shown(avoidance.costs);
  }
  EXPECT_EQ(told, GetParam().told);
}

constexpr CostCase kCases[] = {
    {"nothing", "a v b.\n:~ a.", "costs 0@1"},
    {"levels_and_weights", R"(a v b. c. d(5). e v f :- b.
:~ a. [:3]
:~ b, c. [02:1] :~ d(X). [X:1]
:~ e. [1:] :~ f. [0:4])",
     "costs 0@4 0@3 7@1; 5@1 in line 3 X=5, not avoided; 2@1 in line 3, else 0@4 1@3 5@1"},
    {"anonymous_values", R"(p(1,a). p(1,b). p(2,"_ % ."). q(1) v r.
:~ p(X,_), not q(X), not s(_), #count{Y:p(Y,_)} > 1. % no. stop [7:7]
  [X:2] :~ q(_),Vv0 = _ + 1, 1 >= Vv0. [3:1] #maxint=3.)",
     "costs 2@2 3@1; 2@2 in line 2 X=2 _=\"_ % .\", not avoided; 3@1 in line 3 _=1 Vv0=1 _=0, "
     "else 4@2 0@1"},
    {"values_of_aggregates", "p(1). p(3) v p(4).\n:~ S = #sum{X:p(X)}, T = S * 2, p(_). [T:S]",
     "costs 16@4; 8@4 in line 2 S=4 T=8 _=1, else 20@5; 8@4 in line 2 S=4 T=8 _=3, else 20@5"},
};
INSTANTIATE_TEST_SUITE_P(Cases, PaidCosts, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// Programs with weak constraints over X and Y and at most one "_".
class RandomCosts {
 public:
  explicit RandomCosts(unsigned seed) : random_(seed) {
    text_ = "n(1). n(2). n(3). m(1,a). m(2,a). m(2,b).\np(X) v q(X) v t(X) :- n(X).\n";
    if (pick(2) == 0) text_ += "t(X) :- p(X), q(Y), X < Y.\n";
    if (pick(3) == 0) text_ += ":- #count{V : t(V)} >= 2.\n";
    const int most = 4 + pick(5);
    for (int i = 0; i < most; ++i) {
      conditions_.push_back(condition());
      const std::string weight = pick(3) == 0 ? "X" : std::to_string(1 + pick(3));
      const std::string level = std::to_string(pick(3));
      text_ += ":~ " + conditions_.back() + ". [" + weight + ":" + level + "]\n";
    }
  }

  const std::string& text() const { return text_; }
  // With the instance, of the number-th weak constraint, forbidden; values by the variables' names.
  std::string forbidding(std::size_t number,
                         const std::vector<std::pair<std::string, std::string>>& values) const {
    std::string constraint = conditions_[number];
    for (const auto& [name, value] : values) {
      for (std::size_t at = 0; (at = constraint.find(name, at)) != std::string::npos;) {
        constraint.replace(at, name.size(), value);
      }
    }
    return text_ + ":- " + constraint + ".\n";
  }

 private:
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  std::string condition() {
    static constexpr const char* kLiterals[] = {
        "p(X)",   "q(X)",    "not t(X)", "p(Y)", "q(Y)", "m(X,Y)", "#count{V : p(V), V != X} >= 1",
        "Y != X", "not q(Y)"};
    std::string text = "n(X)";
    const int literals = 1 + pick(2);
    for (int i = 0; i < literals; ++i) (text += ", ") += kLiterals[pick(9)];
    if (text.find('Y') != std::string::npos) text += ", n(Y)";
    if (pick(4) == 0) text += ", m(X,_)";
    return text;
  }

  std::mt19937 random_;
  std::string text_;
  std::vector<std::string> conditions_;
};

TEST(RandomCosts, AddUpAndAreAvoidedAtTheLeastCost) {
  std::size_t avoided = 0;
  each_seed(25, [&](unsigned seed) {
    const RandomCosts program(seed);
    SCOPED_TRACE(program.text());
    if (found(program.text()).outcome == dl::SearchOutcome::kNone) return;
    Paid paid(program.text());
    dl::Costs sums = paid.costs();
    for (auto& [level, cost] : sums) cost = 0;
    std::size_t number = 0;
    for (const dl::PaidInstance& instance : paid.instances()) {
      sums[instance.level] += instance.weight;
      if (++number > 4) continue;
      const dl::Avoidance avoidance = paid.avoided(instance);
      const dl::FoundAnswer expected =
          found(program.forbidding(paid.number_of(instance), paid.values_of(instance)));
      EXPECT_EQ(avoidance.outcome, expected.outcome) << paid.shown(instance);
      EXPECT_EQ(shown(avoidance.costs), shown(expected.costs)) << paid.shown(instance);
      if (avoidance.outcome == dl::SearchOutcome::kFound) ++avoided;
    }
    EXPECT_EQ(shown(sums), shown(paid.costs()));
  });
  EXPECT_GE(avoided, 15u);
}

}    // namespace
}    // namespace dl_test
