#include "dl/explain/relaxation.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "dl/explain/relaxed_program.h"
#include "dl/explain/rule_loops.h"

namespace dl {
namespace {

// What the best answer sets of a relaxed program give up, each something else; or nothing, where
// the search was cut.
struct Corrections {
  SearchOutcome outcome = SearchOutcome::kCut;
  std::vector<std::vector<GivenUp>> all;

  bool is_proven() const {
    return outcome == SearchOutcome::kFound || outcome == SearchOutcome::kNone;
  }
};

using Lines = std::vector<std::uint32_t>;

// Note [minimal conflicts]
// Let S be what does not go together, and V what a best answer set gives up of it: as nothing less
// would do, S without V, but with one v of V again, does not go together either, and v is in every
// conflict of it. So v is put to the conflict, and the others of V are forgotten. That is repeated,
// and what is in the conflict must not be given up any more, until no answer set is left: a conflict
// no member of which can be left out, after one search for each member and one more. Several best
// answer sets of one search, told apart by what they give up, save most of these: where all but one
// element of what one gives up is forgotten, that one is a member, too.
class Conflict {
 public:
  // Takes what best answer sets give up while the members so far are hard and what is forgotten is
  // free.
  void take(const Corrections& corrections) {
    bool is_first = true;
    for (const std::vector<GivenUp>& all : corrections.all) {
      std::vector<GivenUp> left;
      std::ranges::copy_if(all, std::back_inserter(left),
                           [this](const GivenUp& each) { return !is_free_.contains(each); });
      if (!std::exchange(is_first, false) && left.size() != 1) continue;
      if (is_member_.insert(left.front()).second) members_.push_back(left.front());
      for (std::size_t i = 1; i < left.size(); ++i) {
        if (is_free_.insert(left[i]).second) free_.push_back(left[i]);
      }
    }
  }

  const std::vector<GivenUp>& members() const { return members_; }
  const std::vector<GivenUp>& free() const { return free_; }

 private:
  std::vector<GivenUp> members_;
  std::vector<GivenUp> free_;
  std::set<GivenUp> is_member_;
  std::set<GivenUp> is_free_;
};

Lines lines_of(const std::vector<GivenUp>& given_up) {
  Lines lines;
  for (const GivenUp& each : given_up) lines.push_back(each.line);
  std::ranges::sort(lines);
  return lines;
}

Lines without(const Lines& lines, const Lines& others) {
  Lines left;
  std::ranges::set_difference(lines, others, std::back_inserter(left));
  return left;
}

class ConflictSearch {
 public:
  // All must outlive this.
  ConflictSearch(const StatementStore& store, GroundTerms& terms, AnswerIndex& index,
                 const Options& options, ConflictReceiver& receiver, const std::string& demand)
      : store_(store),
        terms_(terms),
        program_(store, terms, index),
        options_(own_options(options)),
        receiver_(receiver),
        demand_(demand) {
    options_.filters = program_.shown();
    options_.by_cores = true;
  }

  void run();

 private:
  enum class Wanted : bool { kOne, kMany };

  std::vector<Hold> all_lines(Hold hold) const { return std::vector(program_.lines(), hold); }
  FoundAnswers solve(const std::vector<Hold>& holds, const std::string& further, Wanted wanted);
  Corrections corrections(const std::vector<Hold>& holds, const std::string& further,
                          Wanted wanted);
  void find_conflicts(Corrections corrections);
  bool tell_conflict(const Lines& among, Corrections corrections);
  void tell_instances_to_give_up();
  void tell_instances(std::size_t conflict);
  void tell_rules();
  GivenUp whole(std::uint32_t line) const { return {line, terms_.constant("t")}; }
  std::vector<ConstraintInstance> instances_of(std::vector<GivenUp> given_up) const;

  const StatementStore& store_;
  GroundTerms& terms_;
  RelaxedProgram program_;
  Options options_;
  ConflictReceiver& receiver_;
  const std::string& demand_;
  Lines to_give_up_;
  std::vector<Lines> conflicts_;
};

// Best answer sets of one relaxed program: many tell more, but each takes a little time.
FoundAnswers ConflictSearch::solve(const std::vector<Hold>& holds, const std::string& further,
                                   Wanted wanted) {
  constexpr std::uint64_t kMany = 64;
  options_.one_best = wanted == Wanted::kOne;
  options_.differ_in_shown = wanted == Wanted::kMany;
  options_.answer_sets = kMany;
  return search_all(program_.program(holds, demand_ + '\n' + further + program_.costs()), options_);
}

Corrections ConflictSearch::corrections(const std::vector<Hold>& holds, const std::string& further,
                                        Wanted wanted) {
  const FoundAnswers found = solve(holds, further, wanted);
  Corrections result{found.outcome, {}};
  for (const std::string& text : found.texts) result.all.push_back(program_.given_up(text));
  return result;
}

void ConflictSearch::run() {
  Corrections first = corrections(all_lines(Hold::kLine), {}, Wanted::kMany);
  if (first.outcome == SearchOutcome::kCut) return receiver_.kind(ConflictKind::kUnknown);
  if (first.outcome == SearchOutcome::kNone) {
    receiver_.kind(ConflictKind::kRules);
    return tell_rules();
  }
  to_give_up_ = lines_of(first.all.front());
  if (to_give_up_.empty()) return receiver_.kind(ConflictKind::kNone);
  receiver_.kind(ConflictKind::kConstraints);
  receiver_.give_up(program_.set_of(to_give_up_), first.is_proven());
  if (!first.is_proven()) return;
  find_conflicts(std::move(first));
  tell_instances_to_give_up();
  for (std::size_t conflict = 0; conflict < conflicts_.size(); ++conflict) tell_instances(conflict);
}

// What is left is consistent once every constraint to give up is in a conflict that was taken out.
void ConflictSearch::find_conflicts(Corrections corrections_of_left) {
  Lines left(program_.lines());
  for (std::uint32_t line = 0; line < left.size(); ++line) left[line] = line;
  Lines to_give_up = to_give_up_;
  while (tell_conflict(left, std::move(corrections_of_left))) {
    left = without(left, conflicts_.back());
    to_give_up = without(to_give_up, conflicts_.back());
    if (to_give_up.empty()) return;
    std::vector<Hold> holds = all_lines(Hold::kNot);
    for (const std::uint32_t line : left) holds[line] = Hold::kLine;
    corrections_of_left = corrections(holds, {}, Wanted::kMany);
    const bool is_known = corrections_of_left.outcome == SearchOutcome::kFound;
    if (!is_known || corrections_of_left.all.front().empty()) return;
  }
}

// Finds a conflict among the lines, of which the corrections are known. Returns false when the
// search was cut.
bool ConflictSearch::tell_conflict(const Lines& among, Corrections corrections_of_it) {
  Conflict conflict;
  for (;;) {
    conflict.take(corrections_of_it);
    const Lines members = lines_of(conflict.members());
    const Lines left = without(among, lines_of(conflict.free()));
    std::vector<Hold> holds = all_lines(Hold::kNot);
    for (const std::uint32_t line : left) holds[line] = Hold::kLine;
    for (const std::uint32_t line : members) holds[line] = Hold::kHard;
    if (members.size() != left.size()) corrections_of_it = corrections(holds, {}, Wanted::kMany);
    if (!corrections_of_it.is_proven()) {
      if (left.size() != program_.lines()) receiver_.conflict(program_.set_of(left), false);
      return false;
    }
    if (members.size() != left.size() && corrections_of_it.outcome != SearchOutcome::kNone)
      continue;
    receiver_.conflict(program_.set_of(members), true);
    conflicts_.push_back(members);
    return true;
  }
}

std::vector<ConstraintInstance> ConflictSearch::instances_of(std::vector<GivenUp> given_up) const {
  program_.sort(given_up);
  std::vector<ConstraintInstance> instances;
  instances.reserve(given_up.size());
  for (const GivenUp& each : given_up) instances.push_back(program_.instance_of(each));
  return instances;
}

void ConflictSearch::tell_instances_to_give_up() {
  std::vector<Hold> holds = all_lines(Hold::kHard);
  std::vector<GivenUp> whole_lines;
  for (const std::uint32_t line : to_give_up_) {
    holds[line] = Hold::kInstances;
    whole_lines.push_back(whole(line));
  }
  const auto has_variables = [this](std::uint32_t line) { return program_.has_variables(line); };
  if (std::ranges::none_of(to_give_up_, has_variables)) {
    return receiver_.give_up_instances(instances_of(std::move(whole_lines)), true);
  }
  Corrections best = corrections(holds, {}, Wanted::kOne);
  if (best.all.empty()) return;
  receiver_.give_up_instances(instances_of(std::move(best.all.front())), best.is_proven());
}

// See Note [minimal conflicts]. A line without variables is its only instance.
void ConflictSearch::tell_instances(std::size_t number) {
  std::vector<Hold> holds = all_lines(Hold::kNot);
  std::vector<GivenUp> members;
  for (const std::uint32_t line : conflicts_[number]) {
    holds[line] = program_.has_variables(line) ? Hold::kInstances : Hold::kHard;
    if (holds[line] == Hold::kHard) members.push_back(whole(line));
  }
  const bool has_instances = members.size() != conflicts_[number].size();
  Conflict conflict;
  while (has_instances) {
    std::string further;
    for (const GivenUp& each : conflict.members()) program_.append_hard(further, each);
    for (const GivenUp& each : conflict.free()) program_.append_free(further, each);
    const Corrections next = corrections(holds, further, Wanted::kMany);
    if (!next.is_proven()) return;
    if (next.outcome == SearchOutcome::kNone) break;
    conflict.take(next);
  }
  members.insert(members.end(), conflict.members().begin(), conflict.members().end());
  receiver_.instances(number, instances_of(std::move(members)), true);
}

// A demand may ask for what some rule does not give, whatever loops there are.
void ConflictSearch::tell_rules() {
  std::vector<StatementNumber> rules;
  if (demand_.empty()) rules = rules_in_loops(store_);
  for (StatementNumber number = 0; number < store_.statements().size(); ++number) {
    const bool is_rule = store_.statement(number).kind == StatementKind::kRule;
    if (!demand_.empty() && is_rule) rules.push_back(number);
  }
  program_.may_drop(rules);
  const FoundAnswers found = solve(all_lines(Hold::kNot), {}, Wanted::kOne);
  if (found.texts.empty()) return;
  receiver_.rules(program_.dropped(found.texts.front()), found.outcome == SearchOutcome::kFound);
}

}    // namespace

Relaxation::Relaxation(const StatementStore& store, GroundTerms& terms, AnswerIndex& index,
                       const Options& options)
    : store_(store), terms_(terms), index_(index), options_(options) {}

void Relaxation::explain(ConflictReceiver& receiver, const std::string& demand) {
  ConflictSearch(store_, terms_, index_, options_, receiver, demand).run();
}

}    // namespace dl
