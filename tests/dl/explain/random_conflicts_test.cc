// random_conflicts_test.cc - what holds of the conflicts of any program, by searches in programs
// that are written without the code under test.
#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/random_seeds.h"
#include "dl/explain/relaxation.h"

namespace dl_test {
namespace {

using LineSet = std::set<std::size_t>;    // constraints by number, and behind them clashes

struct Instance {
  std::size_t line;
  std::vector<std::string> values;
};

// "(a,b)"
std::string in_parentheses(const std::vector<std::string>& values) {
  std::string text;
  for (const std::string& value : values) (text += text.empty() ? '(' : ',') += value;
  return text + ')';
}

void replace_all(std::string& text, std::string_view what, std::string_view by) {
  for (std::size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += by.size()) {
    text.replace(at, what.size(), by);
  }
}

// What of a line is written: nothing, all, or all but what is gone.
enum class Mode { kOut, kHard, kButWhole, kButInstances };

// A program as a list of statements. The variables of a constraint are X and then Y; a variable V
// is local to an aggregate.
class RandomConflicts {
 public:
  explicit RandomConflicts(unsigned seed) : random_(seed), is_generic_(chance(3)) {
    rules_.emplace_back(chance(2) ? "n(1). n(2). name(p). name(q)." : "n(1). n(2). n(3). name(p).");
    rules_.emplace_back("p(X) v q(X) :- n(X).");
    if (chance(2)) rules_.emplace_back("~ p(X) | s(X,Y) ; -q(Y) :- n(X), n(Y), X != Y.");
    const int rules = 1 + pick(5);
    for (int i = 0; i < rules; ++i) rules_.push_back(head() + " :- " + body("X"));
    if (chance(4)) rules_.push_back("u(X) :- not u(X), " + body("X"));
    if (seed % 8 == 0) rules_.emplace_back("u(X) :- not u(X), n(X).");    // for sure
    if (is_generic_) rules_.emplace_back("a_3(R,d,X) :- n(X), name(R), t(X), not -a_3(R,d,_).");
    const int constraints = 1 + pick(6);
    for (int i = 0; i < constraints; ++i) constraints_.push_back(":- " + body(""));
    clashes_ = is_generic_ ? std::vector<std::string>{"a_3"} : std::vector<std::string>{"p", "q"};
  }

  std::size_t rules() const { return rules_.size(); }
  std::size_t constraints() const { return constraints_.size(); }
  std::size_t lines() const { return constraints_.size() + clashes_.size(); }
  std::size_t line_of_clash(std::string_view name) const {
    return constraints_.size() +
           static_cast<std::size_t>(std::ranges::find(clashes_, name) - clashes_.begin());
  }
  std::vector<Mode> all(Mode mode) const { return std::vector(lines(), mode); }

  // A statement on each line: first the rules, but those that are dropped, then the constraints.
  std::string text(const std::vector<Mode>& modes, std::string_view further = {},
                   const LineSet& dropped = {}) const {
    std::string text;
    for (std::size_t rule = 0; rule < rules_.size(); ++rule) {
      text += dropped.contains(rule) ? "\n" : rules_[rule] + '\n';
    }
    for (std::size_t line = 0; line < constraints_.size(); ++line) {
      if (modes[line] == Mode::kOut) continue;
      std::string constraint = constraints_[line];
      constraint.pop_back();
      text += constraint + but_gone(line, modes[line], variables(constraint)) + ".\n";
    }
    make_generic(text);
    text += further;
    for (std::size_t line = constraints_.size(); line < lines(); ++line) {
      if (modes[line] == Mode::kHard) continue;
      const std::string& name = clashes_[line - constraints_.size()];
      if (modes[line] != Mode::kOut) {
        const std::string atom = name + in_parentheses(clash_arguments());
        ((text += ":- " + atom) += ", -" + atom) += but_gone(line, modes[line], clash_arguments());
        text += ".\n";
      }
      replace_all(text, "-" + name + "(", "non_" + name + "(");
      replace_all(text, "~ " + name + "(", "non_" + name + "(");
    }
    return text;
  }

  // The constraint that the instance is.
  std::string text(const Instance& instance) const {
    if (instance.line >= constraints_.size()) {
      const std::string atom =
          clashes_[instance.line - constraints_.size()] + in_parentheses(instance.values);
      return ":- " + atom + ", -" + atom + ".\n";
    }
    std::string text = constraints_[instance.line] + '\n';
    const std::vector<std::string> names = variables(text);
    for (std::size_t i = 0; i < names.size(); ++i) replace_all(text, names[i], instance.values[i]);
    make_generic(text);
    return text;
  }

  // Fewer than so many of what can be gone are gone.
  std::string fewer_gone(const std::vector<Mode>& modes, std::size_t number) const {
    std::string text = ":- #count{G : gone(G)} >= " + std::to_string(number) + ".\n";
    for (std::size_t line = 0; line < lines(); ++line) {
      if (modes[line] != Mode::kButWhole && modes[line] != Mode::kButInstances) continue;
      std::vector<std::string> names;
      if (modes[line] == Mode::kButInstances) {
        names = line < constraints_.size() ? variables(constraints_[line]) : clash_arguments();
      }
      const std::string gone = gone_term(line, names);
      text += "gone(" + gone + ") v kept(" + gone + ") :- n(X), n(Y), name(R).\n";
    }
    return text;
  }
  static std::string gone_term(std::size_t line, std::vector<std::string> values) {
    values.insert(values.begin(), std::to_string(line));
    return 'g' + in_parentheses(values);
  }

 private:
  int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
  bool chance(int one_of) { return pick(one_of) == 0; }

  static std::vector<std::string> variables(std::string_view constraint) {
    std::vector<std::string> names;
    for (const char* const name : {"X", "Y"}) {
      if (constraint.find(name) != std::string_view::npos) names.emplace_back(name);
    }
    return names;
  }
  std::vector<std::string> clash_arguments() const {
    if (is_generic_) return {"R", "d", "X"};
    return {"X"};
  }
  static std::string but_gone(std::size_t line, Mode mode, const std::vector<std::string>& names) {
    if (mode == Mode::kHard) return {};
    const bool is_whole = mode == Mode::kButWhole;
    return ", not gone(" + gone_term(line, is_whole ? std::vector<std::string>() : names) + ")";
  }
  void make_generic(std::string& text) const {
    if (!is_generic_) return;
    for (const std::string name : {"p", "q"}) {
      for (const std::string before : {" ", "-", "\n", "!"}) {
        replace_all(text, before + name + "(", before + "a_3(" + name + ",d,");
      }
    }
  }

  std::string head() {
    static constexpr const char* kHeads[] = {"p(X)",   "q(X)", "-p(X)",
                                             "~ q(X)", "t(X)", "t(X) v -q(X)"};
    return kHeads[pick(6)];
  }
  // Ends with its full stop.
  std::string body(std::string_view variables_used) {
    static constexpr const char* kLiterals[] = {"p(X)",
                                                "q(Y)",
                                                "q(X)",
                                                "not p(Y)",
                                                "not q(X)",
                                                "-p(X)",
                                                "not -q(X)",
                                                "t(X)",
                                                "not t(Y)",
                                                "s(X,Y)",
                                                "s(X,_)",
                                                "X < Y",
                                                "#count{V : p(V)} >= 2",
                                                "not #count{V : q(V), V != X} >= 1",
                                                "p(2)",
                                                "not ~ p(_)",
                                                "q(1)"};
    std::string text;
    const int literals = 1 + pick(3);
    for (int i = 0; i < literals; ++i) (text += i == 0 ? "" : ", ") += kLiterals[pick(17)];
    std::string front;
    for (const std::string name : {"X", "Y"}) {
      const bool is_used = text.find(name) != std::string::npos ||
                           variables_used.find(name) != std::string_view::npos;
      if (is_used) front += "n(" + name + "), ";
    }
    return front + text + '.';
  }

  std::mt19937 random_;
  const bool is_generic_;
  std::vector<std::string> rules_;
  std::vector<std::string> constraints_;
  std::vector<std::string> clashes_;
};

// Collects what is told.
class Collected : public dl::ConflictReceiver {
 public:
  explicit Collected(const RandomConflicts& program) : program_(program) {
    const std::string text = program.text(program.all(Mode::kHard));
    const dl::Source source{"p", text};
    answer_ = std::make_unique<dl::ExplainedAnswer>(dl::survey_texts({&source, 1}), options_);
    answer_->look_at_program();
    dl::Relaxation(answer_->store(), answer_->terms(), answer_->index(), options_).explain(*this);
  }

  void kind(dl::ConflictKind kind) override { found = kind; }
  void give_up(const dl::ConstraintSet& lines, bool is_proven) override {
    to_give_up = lines_of(lines, is_proven);
  }
  void conflict(const dl::ConstraintSet& lines, bool is_proven) override {
    conflicts.push_back(lines_of(lines, is_proven));
  }
  void give_up_instances(const std::vector<dl::ConstraintInstance>& all, bool is_proven) override {
    instances_to_give_up = instances_of(all, is_proven);
  }
  void instances(std::size_t conflict, const std::vector<dl::ConstraintInstance>& all,
                 bool is_proven) override {
    EXPECT_EQ(conflict, conflict_instances.size());
    conflict_instances.push_back(instances_of(all, is_proven));
  }
  void rules(const std::vector<dl::StatementNumber>& rules, bool is_proven) override {
    EXPECT_TRUE(is_proven);
    for (const dl::StatementNumber rule : rules) to_drop.insert(line_of(rule) - 1);
  }

  dl::ConflictKind found = dl::ConflictKind::kUnknown;
  LineSet to_give_up, to_drop;
  std::vector<LineSet> conflicts;
  std::vector<Instance> instances_to_give_up;
  std::vector<std::vector<Instance>> conflict_instances;

 private:
  std::size_t line_of(dl::StatementNumber statement) const {
    return answer_->store().statement(statement).range.first_line;
  }
  std::size_t number_of(dl::StatementNumber statement) const {
    return line_of(statement) - program_.rules() - 1;
  }
  std::size_t number_of_clash(dl::PredicateNumber predicate) const {
    return program_.line_of_clash(
        answer_->terms().spelling(answer_->index().predicate(predicate).name));
  }
  LineSet lines_of(const dl::ConstraintSet& lines, bool is_proven) const {
    EXPECT_TRUE(is_proven);
    LineSet set;
    for (const dl::StatementNumber statement : lines.statements) set.insert(number_of(statement));
    for (const dl::PredicateNumber clash : lines.clashes) set.insert(number_of_clash(clash));
    return set;
  }
  // The variables of a constraint are sorted by name.
  std::vector<Instance> instances_of(const std::vector<dl::ConstraintInstance>& all,
                                     bool is_proven) const {
    EXPECT_TRUE(is_proven);
    std::vector<Instance> instances;
    for (const dl::ConstraintInstance& each : all) {
      Instance instance;
      const auto add = [&](dl::GroundTerm value) {
        answer_->terms().append(instance.values.emplace_back(), value);
      };
      instance.line = each.statement ? number_of(*each.statement) : number_of_clash(each.predicate);
      for (const dl::GroundTerm argument : each.arguments) add(argument);
      for (const std::string_view name : {"X", "Y"}) {
        for (std::size_t i = 0; i < each.binding.size(); ++i) {
          const auto& variables = answer_->store().statement(*each.statement).variables;
          if (variables[i] == name && each.binding[i] != dl::kNoTerm) add(each.binding[i]);
        }
      }
      instances.push_back(std::move(instance));
    }
    return instances;
  }

  const RandomConflicts& program_;
  dl::Options options_;
  std::unique_ptr<dl::ExplainedAnswer> answer_;
};

bool has_answer_set(const std::string& text) {
  const dl::Source source{"p", text};
  const dl::FoundAnswer found = dl::search_one(dl::survey_texts({&source, 1}), {});
  EXPECT_TRUE(found.outcome == dl::SearchOutcome::kFound ||
              found.outcome == dl::SearchOutcome::kNone);
  return found.outcome == dl::SearchOutcome::kFound;
}

bool has_answer_set_with(const RandomConflicts& program, const LineSet& lines) {
  std::vector<Mode> modes = program.all(Mode::kOut);
  for (const std::size_t line : lines) modes[line] = Mode::kHard;
  return has_answer_set(program.text(modes));
}

// `holds` of the set is false, and true of it less any member.
template <typename Set, typename Holds>
bool is_minimal(const Set& set, Holds&& holds) {
  if (holds(set)) return false;
  for (auto member = set.begin(); member != set.end(); ++member) {
    Set less(set.begin(), member);
    if constexpr (requires { less.insert(*member); }) {
      less.insert(std::next(member), set.end());
    } else {
      less.insert(less.end(), std::next(member), set.end());
    }
    if (!holds(less)) return false;
  }
  return true;
}

void check_lines(const RandomConflicts& program, const Collected& told) {
  LineSet left;
  for (std::size_t line = 0; line < program.lines(); ++line) {
    if (!told.to_give_up.contains(line)) left.insert(line);
  }
  EXPECT_TRUE(has_answer_set_with(program, left));
  const std::vector<Mode> modes = program.all(Mode::kButWhole);
  EXPECT_FALSE(
      has_answer_set(program.text(modes, program.fewer_gone(modes, told.to_give_up.size()))));
  EXPECT_FALSE(told.conflicts.empty());
  left.insert(told.to_give_up.begin(), told.to_give_up.end());
  for (const LineSet& conflict : told.conflicts) {
    EXPECT_TRUE(is_minimal(
        conflict, [&](const LineSet& lines) { return has_answer_set_with(program, lines); }));
    for (const std::size_t line : conflict) EXPECT_EQ(left.erase(line), 1u);
  }
  EXPECT_TRUE(has_answer_set_with(program, left));
}

void check_instances(const RandomConflicts& program, const Collected& told) {
  std::vector<Mode> modes = program.all(Mode::kHard);
  for (const std::size_t line : told.to_give_up) modes[line] = Mode::kButInstances;
  std::string gone;
  for (const Instance& instance : told.instances_to_give_up) {
    gone += "gone(" + RandomConflicts::gone_term(instance.line, instance.values) + ").\n";
  }
  EXPECT_TRUE(has_answer_set(program.text(modes, gone)));
  EXPECT_FALSE(has_answer_set(
      program.text(modes, program.fewer_gone(modes, told.instances_to_give_up.size()))));
  EXPECT_EQ(told.conflict_instances.size(), told.conflicts.size());
  for (const std::vector<Instance>& conflict : told.conflict_instances) {
    EXPECT_TRUE(is_minimal(conflict, [&](const std::vector<Instance>& instances) {
      std::string constraints;
      for (const Instance& instance : instances) constraints += program.text(instance);
      return has_answer_set(program.text(program.all(Mode::kOut), constraints));
    }));
  }
}

TEST(RandomConflicts, AreMinimalAndTheFewest) {
  std::size_t constraints = 0;
  std::size_t loops = 0;
  std::size_t members = 0;
  each_seed(40, [&](unsigned seed) {
    const RandomConflicts program(seed);
    const std::string text = program.text(program.all(Mode::kHard));
    SCOPED_TRACE(text);
    const Collected told(program);
    EXPECT_EQ(has_answer_set(text), told.found == dl::ConflictKind::kNone);
    if (told.found == dl::ConflictKind::kConstraints) {
      ++constraints;
      check_lines(program, told);
      check_instances(program, told);
      for (const auto& conflict : told.conflict_instances) members += conflict.size();
    } else if (told.found == dl::ConflictKind::kRules) {
      ++loops;
      EXPECT_TRUE(is_minimal(told.to_drop, [&](const LineSet& rules) {
        return !has_answer_set(program.text(program.all(Mode::kOut), {}, rules));
      }));
    } else {
      EXPECT_EQ(told.found, dl::ConflictKind::kNone);
    }
  });
  EXPECT_GT(constraints, 15u);
  EXPECT_GE(loops, 2u);
  EXPECT_GT(members, 2 * constraints);
}

}    // namespace
}    // namespace dl_test
