// conflicts_test.cc - what stands in the way of an answer set: exact small cases, and what holds of
// the conflicts of any program.
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/relaxation.h"
#include "dl/interruption.h"
#include "support/run_program.h"

namespace dl_test {
namespace {

std::string shown_number(std::size_t number) {
  return ' ' + std::to_string(number);
}

// Takes what is told as text. Of what to give up it is the number: there are several ways.
class Told : public dl::ConflictReceiver {
 public:
  explicit Told(std::string_view program, const std::string& clingo = "clingo") {
    options_.clingo = clingo;
    const dl::Source source{"p", program};
    answer_ = std::make_unique<dl::ExplainedAnswer>(dl::survey_texts({&source, 1}), options_);
    answer_->look_at_program();
  }
  void explain(const std::string& demand = {}) {
    dl::Relaxation(answer_->store(), answer_->terms(), answer_->index(), options_)
        .explain(*this, demand);
  }

  void kind(dl::ConflictKind kind) override {
    static constexpr std::string_view kKinds[] = {"none", "constraints", "rules", "unknown"};
    text = kKinds[static_cast<std::size_t>(kind)];
  }
  void give_up(const dl::ConstraintSet& lines, bool is_proven) override {
    tell("give up lines", shown_number(lines.statements.size() + lines.clashes.size()), is_proven);
  }
  void conflict(const dl::ConstraintSet& lines, bool is_proven) override {
    tell("conflict", shown(lines), is_proven);
  }
  void give_up_instances(const std::vector<dl::ConstraintInstance>& all, bool is_proven) override {
    tell("give up", shown_number(all.size()), is_proven);
  }
  void instances(std::size_t conflict, const std::vector<dl::ConstraintInstance>& all,
                 bool is_proven) override {
    tell("conflict " + std::to_string(conflict), shown(all), is_proven);
  }
  void rules(const std::vector<dl::StatementNumber>& rules, bool is_proven) override {
    dl::ConstraintSet set;
    set.statements = rules;
    tell("rules", shown(set), is_proven);
  }

  std::string text;

 private:
  void tell(std::string_view what, const std::string& shown, bool is_proven) {
    ((text += "; ") += what) += shown;
    if (!is_proven) text += " (unproven)";
  }
  // The number of the line where it stands.
  std::string shown(dl::StatementNumber statement) const {
    return ' ' + std::to_string(answer_->store().statement(statement).range.first_line);
  }
  std::string shown(const dl::ConstraintSet& lines) const {
    std::string all;
    for (const dl::StatementNumber statement : lines.statements) all += shown(statement);
    for (const dl::PredicateNumber clash : lines.clashes) {
      const dl::Predicate& predicate = answer_->index().predicate(clash);
      ((all += ' ') += answer_->terms().spelling(predicate.name)) += '/';
      all += std::to_string(predicate.arity);
    }
    return all;
  }
  std::string shown(const std::vector<dl::ConstraintInstance>& instances) const {
    std::string all;
    for (const dl::ConstraintInstance& instance : instances) {
      if (instance.statement) {
        all += shown(*instance.statement);
        for (const dl::GroundTerm value : instance.binding) {
          all += ',';
          if (value != dl::kNoTerm) answer_->terms().append(all, value);
        }
      } else {
        all += ' ';
        answer_->index().append(all, instance.predicate, instance.arguments);
      }
    }
    return all;
  }

  dl::Options options_;
  std::unique_ptr<dl::ExplainedAnswer> answer_;
};

struct ConflictCase {
  std::string_view name, program, told, demand = "";
  friend void PrintTo(const ConflictCase& test, std::ostream* stream) { *stream << test.name; }
};
class Conflicts : public testing::TestWithParam<ConflictCase> {};

TEST_P(Conflicts, AreTold) {
  Told told(GetParam().program);
  told.explain(std::string(GetParam().demand));
  EXPECT_EQ(told.text, GetParam().told);
}

constexpr ConflictCase kCases[] = {
    {"there_is_one", ":- a. b.", "none"},
    {"no_constraint", "b.", "none"},
    {"a_fact_forbidden", "p(1). p(2). q(1).\n:- p(X), not q(X).\n:- r.",
     "constraints; give up lines 1; conflict 2; give up 1; conflict 0 2,2"},
    {"either_of_two", "a v b.\n:- a.\n:- b.",
     "constraints; give up lines 1; conflict 2 3; give up 1; conflict 0 2 3"},
    {"two_conflicts", "a v b. c v d.\n:- a.\n:- b.\n:- c.\n:- d.\n:- a, c.",
     "constraints; give up lines 2; conflict 2 3; conflict 4 5; give up 2; conflict 0 2 3; "
     "conflict 1 4 5"},
    {"seminar", R"(talk(ann,t1). talk(ann,t2). talk(ann,t3). talk(bob,t4).
at(T,1) v at(T,2) :- talk(_,T).
:- at(T,S), at(U,S), talk(P,T), talk(P,U), T < U.
:- at(t4,S), cold(S). :~ at(t4,1). [3:2]
cold(1). cold(2). at(T,S), talk(bob,T)?)",
     "constraints; give up lines 2; conflict 3; conflict 4; give up 2; conflict 0 3,t1,1,t2,ann "
     "3,t1,1,t3,ann 3,t1,2,t2,ann 3,t1,2,t3,ann 3,t2,1,t3,ann 3,t2,2,t3,ann; conflict 1 4,1 4,2"},
    {"tweety", R"(bird(tweety). penguin(tweety). bird(rio).
flies(X) :- bird(X).
-flies(X) :- penguin(X).)",
     "constraints; give up lines 1; conflict flies/1; give up 1; conflict 0 flies(tweety)"},
    {"signs_everywhere", R"(d(1). ~ p(1). - % - p(
p(2). p(X) :- d(X), not -p(3). q :- #count{X:-p(X)} >= 2, ~p(_), not -p(9). -q.
:- -p(3). :- not q.)",
     "constraints; give up lines 2; conflict p/1; conflict q/0; give up 2; conflict 0 p(1); "
     "conflict 1 q"},
    {"generic_clashes", R"(a_3(friend,default,X,Y) :- a_3(R,default,Y,X), a_2(symmetric,R).
a_2(symmetric,knows). a_2(symmetric,friend). a_3(knows,default,ann,bob). a_3(likes,default,i,j).
-a_3(friend,default,ann,bob). -a_3(likes,default,i,j) :- not a_2(symmetric,likes).)",
     "constraints; give up lines 1; conflict a_3/4; give up 2; conflict 0 "
     "a_3(friend,default,ann,bob)"},
    {"odd_names", "#1p(c). - #1p(c). Q(1). -Q(1). N(bad0,paid0,non0).\n:- N(bad0,X,_).",
     "constraints; give up lines 3; conflict 2; conflict #1p/1; conflict Q/1; give up 3; conflict "
     "0 2,paid0; conflict 1 #1p(c); conflict 2 Q(1)"},
    {"odd_loop", "b.\na :- b, not a.\nc :- not d. d :- not c.\n:- c.", "rules; rules 2"},
    {"fewest_of_the_loops", "p(1). p(2).\na :- not b.\nb :- not c.\nc :- not a, p(X).\nd :- not d.",
     "rules; rules 4 5"},
    {"a_loop_through_an_aggregate", "p(1).\np(2) :- #count{X:p(X)} < 2.\n", "rules; rules 2"},
    {"four_nodes_in_three_colours", R"(n(1). n(2). n(3). n(4). n(5). n(6).
e(1,2). e(1,3). e(1,4). e(2,3). e(2,4). e(3,4). e(4,5). e(5,6). e(1,6).
c(X,r) v c(X,g) v c(X,b) :- n(X).
:- e(X,Y), c(X,C), c(Y,C).
:- c(5,r).)",
     "constraints; give up lines 1; conflict 4; give up 1; conflict 0 4,1,2,b 4,1,2,g 4,1,2,r "
     "4,1,3,b 4,1,3,g 4,1,3,r 4,1,4,b 4,1,4,g 4,1,4,r 4,2,3,b 4,2,3,g 4,2,3,r 4,2,4,b 4,2,4,g "
     "4,2,4,r 4,3,4,b 4,3,4,g 4,3,4,r"},
    {"demand", "a v b.\n:- a, c(X), not d(X).\nc(1). c(2). d(2).",
     "constraints; give up lines 1; conflict 2; give up 1; conflict 0 2,1", ":- not a."},
    {"demand_that_a_rule_forbids", "d. b :- d.\na :- c.\nc :- not b.", "rules; rules 1",
     ":- not a."},
    {"demand_of_what_nothing_gives", "b.\n", "rules", ":- not a."},
};
INSTANTIATE_TEST_SUITE_P(Cases, Conflicts, testing::ValuesIn(kCases),
                         [](const auto& test) { return std::string(test.param.name); });

// In a process of its own: an interruption lasts. The solver finds what it is told to, if anything,
// and is cut when it is called once more.
void explain_until_cut(std::string_view first, std::string_view last_words) {
  std::string text;
  {
    const zarel::WorkFolder folder;
    folder.write_script(
        "solver", "cat > /dev/null\n[ -e was_called ] || { touch was_called; printf '" +
                      std::string(first) +
                      "'; exit 30; }\n"
                      "trap 'printf \"" +
                      std::string(last_words) + "\"; exit 1' TERM\nwhile :; do sleep 0.01; done\n");
    if (first.empty()) folder.write("was_called", "");
    std::filesystem::current_path(folder.path());
    dl::InterruptionPlan plan;
    plan.seconds = 0.5;
    dl::watch_interruptions(plan);
    dl::hold_interruptions();
    Told told("a v b.\n:- a.\n:- b.\n:- c(X), a.", folder.path() / "solver");
    told.explain();
    text = told.text;
  }
  std::cerr << text << '\n';
  std::exit(0);
}

TEST(CutConflicts, AreNeverCalledProven) {
  constexpr std::string_view kBest = "paid0(0,t)\\nOptimization: 1\\n";
  const auto proven = std::string(kBest) + "OPTIMUM FOUND\\n";
  const auto ends = [](const char* text) { return testing::ContainsRegex(text); };
  EXPECT_EXIT(explain_until_cut(proven, "UNKNOWN\\n"), testing::ExitedWithCode(0),
              ends("^constraints; give up lines 1; give up 1\n$"));
  EXPECT_EXIT(explain_until_cut(proven, std::string(kBest) + "SATISFIABLE\\n"),
              testing::ExitedWithCode(0), ends("^constraints; give up lines 1; give up 1\n$"));
  EXPECT_EXIT(explain_until_cut("", "UNKNOWN\\n"), testing::ExitedWithCode(0), ends("^unknown\n$"));
}

}    // namespace
}    // namespace dl_test
