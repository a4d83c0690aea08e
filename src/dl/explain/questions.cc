#include "dl/explain/questions.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "dl/explain/explained_answer.h"
#include "dl/explain/failure_search.h"
#include "dl/explain/paid_costs.h"
#include "dl/explain/plain_teller.h"
#include "dl/explain/proof_search.h"
#include "dl/explain/question_atom.h"
#include "dl/explain/relaxation.h"
#include "dl/explain/told_text.h"
#include "dl/interruption.h"

namespace dl {
namespace {

constexpr std::size_t kMostProofs = 10;        // of the instances of an atom with variables
constexpr std::size_t kMostAvoidances = 10;    // each is a search
constexpr std::size_t kMostInstead = 10;       // payments of another answer set

// Writes a conflict as it is found.
class ConflictText : public ConflictReceiver {
 public:
  ConflictText(PlainTeller& teller, ToldText& text, bool has_demand)
      : teller_(teller), text_(text), has_demand_(has_demand) {}

  void kind(ConflictKind kind) override {
    switch (kind) {
      case ConflictKind::kNone:
        return text_.outcome(ToldOutcome::kNone, has_demand_);
      case ConflictKind::kConstraints:
        return text_.outcome(ToldOutcome::kConstraints, has_demand_);
      case ConflictKind::kRules:
        return text_.outcome(ToldOutcome::kRules, has_demand_);
      case ConflictKind::kUnknown:
        return text_.outcome(ToldOutcome::kUnknown, has_demand_);
    }
  }
  void give_up(const ConstraintSet& lines, bool is_proven) override {
    text_.give_up(teller_.constraints(lines, is_proven), has_demand_);
  }
  void conflict(const ConstraintSet& lines, bool is_proven) override {
    text_.conflict(teller_.constraints(lines, is_proven));
  }
  void give_up_instances(const std::vector<ConstraintInstance>& instances,
                         bool is_proven) override {
    text_.give_up_instances({teller_.instances(instances), is_proven});
  }
  void instances(std::size_t, const std::vector<ConstraintInstance>& instances,
                 bool is_proven) override {
    text_.conflict_instances({teller_.instances(instances), is_proven});
  }
  void rules(const std::vector<StatementNumber>& rules, bool is_proven) override {
    text_.rules(teller_.rules(rules, is_proven));
  }

 private:
  PlainTeller& teller_;
  ToldText& text_;
  bool has_demand_;
};

bool is_there(const FoundAnswer& found) {
  return found.outcome == SearchOutcome::kFound || found.outcome == SearchOutcome::kUnproven;
}

// Why an atom is not there.
struct ToldAbsence {
  ToldMissing missing;
  bool is_open = false;    // the atom has variables, so no rule is looked at
  bool is_free = false;    // a body holds, so another choice might give it
};

// One question and what its answer needs.
class Questions {
 public:
  Questions(Program program, const Options& options, ToldText::Take take)
      : options_(options),
        text_(std::move(take), options.depth),
        answer_(std::move(program), options) {}

  void answer();
  // Nothing was cut.
  bool is_complete() const { return is_complete_; }

 private:
  void why();
  void why_not();
  void paid();

  bool find_chosen();
  SearchOutcome find_other(const std::string& demand);
  void introduce_other(std::string text, std::string_view end);
  std::uint64_t number() const;    // of the answer set
  std::string chosen(std::string_view before, std::string_view behind) const;    // with its number
  QuestionAtom atom();
  std::vector<AtomNumber> instances(const QuestionAtom& atom);
  ToldProof proof(const std::vector<AtomNumber>& atoms);
  void write_proofs(std::vector<AtomNumber> atoms);
  ToldAbsence absence(const QuestionAtom& atom);
  void write_absence(const ToldAbsence& absence);
  void look_for_choice(const QuestionAtom& atom);
  void explain_conflict(const std::string& demand);
  void write_avoidance(const PaidInstance& instance, const std::vector<PaidInstance>& paid);
  void tell_instead(const std::string& answer, const std::vector<PaidInstance>& paid,
                    ToldAvoidance& told);

  const Options& options_;
  ToldText text_;
  ExplainedAnswer answer_;
  Costs costs_;    // of the answer set that was chosen
  bool is_complete_ = true;
};

void Questions::answer() {
  switch (options_.question) {
    case QuestionKind::kWhy:
      return why();
    case QuestionKind::kWhyNot:
      return why_not();
    case QuestionKind::kConflict:
      answer_.look_at_program();
      return explain_conflict({});
    case QuestionKind::kPaid:
      return paid();
    case QuestionKind::kNone:
      return;
  }
}

std::uint64_t Questions::number() const {
  return std::max<std::uint64_t>(options_.answer_sets, 1);
}

std::string Questions::chosen(std::string_view before, std::string_view behind) const {
  std::string text(before);
  return (text += std::to_string(number())) += behind;
}

// Returns whether there is one to look at.
bool Questions::find_chosen() {
  const FoundAnswer& found = answer_.find({number(), {}});
  costs_ = found.costs;
  switch (found.outcome) {
    case SearchOutcome::kFound:
      break;
    case SearchOutcome::kUnproven:
      is_complete_ = false;
      text_.sentence("The answer set is the best that was found, not proven to be a best one.");
      break;
    case SearchOutcome::kNone:
      text_.sentence(number() == 1 ? "There is no answer set; -conflict tells why."
                                   : chosen("There are fewer than ", " answer sets."));
      break;
    case SearchOutcome::kCut:
      is_complete_ = false;
      text_.sentence(chosen("The time was over before answer set ", " was found."));
      break;
  }
  return is_there(found);
}

// Looks for an answer set that holds the demand. Where there is none, the one before stays.
SearchOutcome Questions::find_other(const std::string& demand) {
  const SearchOutcome outcome = answer_.find({1, {demand}}).outcome;
  if (outcome == SearchOutcome::kCut || outcome == SearchOutcome::kUnproven) is_complete_ = false;
  return outcome;
}

// "text, which pays [3:1] instead of [2:1]:" where it is no best one.
void Questions::introduce_other(std::string text, std::string_view end) {
  const std::string costs = text_of(told(answer_.found().costs));
  const std::string chosen = text_of(told(costs_));
  if (costs != chosen) ((text += ", which pays ") += costs) += " instead of " + chosen;
  if (answer_.found().outcome == SearchOutcome::kUnproven) text += " (the least found)";
  text_.sentence(text += end);
}

QuestionAtom Questions::atom() {
  return {options_.asked, answer_.store().bound(), answer_.terms(), answer_.index()};
}

std::vector<AtomNumber> Questions::instances(const QuestionAtom& atom) {
  BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  return atom.instances(evaluator, answer_.index().size());
}

ToldProof Questions::proof(const std::vector<AtomNumber>& atoms) {
  ProofSearch search(answer_.terms(), answer_.index(), answer_.store());
  PlainTeller teller(answer_.store(), answer_.terms(), answer_.index());
  ProofSize size{options_.depth};
  if (options_.depth != 0) size.elements = ToldText::kFewElements;
  return teller.proof(search.prove(atoms, size), options_.depth);
}

void Questions::write_proofs(std::vector<AtomNumber> atoms) {
  const std::size_t all = atoms.size();
  atoms.resize(std::min(all, kMostProofs));
  text_.proof(proof(atoms));
  if (all == atoms.size()) return;
  std::string others = "and ";
  others += std::to_string(all - atoms.size());
  text_.sentence(others += " more");
}

ToldAbsence Questions::absence(const QuestionAtom& atom) {
  PlainTeller teller(answer_.store(), answer_.terms(), answer_.index());
  FailureSearch search(answer_.terms(), answer_.index(), answer_.store());
  ToldAbsence told;
  // Of an atom that nothing gives, whatever its arguments are, similar names are told.
  std::vector<GroundTerm> arguments = atom.arguments();
  std::ranges::replace(arguments, kNoTerm, GroundTerms::integer(0));
  told.is_open = !atom.is_ground() && answer_.store().is_given(atom.predicate());
  if (!told.is_open) {
    const MissingAtom missing = search.explain(atom.predicate(), arguments);
    told.missing = teller.missing(atom.predicate(), arguments, missing);
    told.is_free = std::ranges::any_of(
        missing.rules, [](const FailedRule& rule) { return !rule.other_heads.empty(); });
  }
  told.missing.atom = atom.text();
  return told;
}

void Questions::write_absence(const ToldAbsence& absence) {
  if (!absence.is_open) return text_.missing(absence.missing);
  text_.sentence(absence.missing.atom +
                 ": no instance is there; -whynot tells why a single one is not");
}

void Questions::why() {
  QuestionAtom::check(options_.asked);
  if (!find_chosen()) return;
  std::vector<AtomNumber> atoms = instances(atom());
  if (!atoms.empty()) return write_proofs(std::move(atoms));
  const ToldAbsence told = absence(atom());
  const std::string demand = atom().demand();
  const SearchOutcome outcome = find_other(demand);
  if (is_there(answer_.found())) {
    introduce_other(chosen("Answer set ", " does not hold it; one that does"), ":");
    return write_proofs(instances(atom()));
  }
  write_absence(told);
  if (outcome == SearchOutcome::kCut) return text_.outcome(ToldOutcome::kUnknown, true);
  if (told.is_free) return explain_conflict(demand);
  text_.outcome(ToldOutcome::kConstraints, true);
}

void Questions::why_not() {
  QuestionAtom::check(options_.asked, Variables::kRefused);
  if (!find_chosen()) return;
  const QuestionAtom asked = atom();
  const std::vector<AtomNumber> atoms = instances(asked);
  if (atoms.empty()) {
    const ToldAbsence told = absence(asked);
    write_absence(told);
    if (told.is_free) look_for_choice(asked);
    return;
  }
  const ToldProof proof = this->proof(atoms);
  const SearchOutcome outcome = find_other("not " + asked.text());
  if (is_there(answer_.found())) {
    introduce_other(chosen("Answer set ", " holds it; one that does not"), ":");
    return write_absence(absence(atom()));
  }
  const bool is_cut = outcome == SearchOutcome::kCut;
  text_.sentence(is_cut ? chosen("Answer set ", " holds it:") : "Every answer set holds it:");
  text_.proof(proof);
  if (is_cut) text_.sentence("The time was over before it was known whether all of them do.");
}

// A rule offers the atom: whether another answer set takes it.
void Questions::look_for_choice(const QuestionAtom& atom) {
  const SearchOutcome outcome = find_other(atom.demand());
  if (is_there(answer_.found())) return introduce_other("Another answer set holds it", ".");
  if (outcome == SearchOutcome::kCut) return text_.outcome(ToldOutcome::kUnknown, true);
  explain_conflict(atom.demand());
}

// With a demand, why no answer set holds it.
void Questions::explain_conflict(const std::string& demand) {
  PlainTeller teller(answer_.store(), answer_.terms(), answer_.index());
  ConflictText receiver(teller, text_, !demand.empty());
  Relaxation relaxation(answer_.store(), answer_.terms(), answer_.index(), options_);
  relaxation.explain(receiver, demand.empty() ? demand : ":- not " + demand + ".");
  if (interruption() != Interruption::kNone) is_complete_ = false;
}

void Questions::paid() {
  if (!find_chosen()) return;
  const std::span<const StoredStatement> all = answer_.store().statements();
  if (std::ranges::find(all, StatementKind::kWeakConstraint, &StoredStatement::kind) == all.end()) {
    return text_.sentence("There are no weak constraints.");
  }
  text_.costs(told(costs_), is_complete_);
  PlainTeller teller(answer_.store(), answer_.terms(), answer_.index());
  BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  const std::vector<PaidInstance> paid = paid_instances(evaluator, answer_.store());
  std::size_t asked = 0;
  for (const PaidTogether& each : teller.payments(paid)) {
    text_.payment(each.told);
    if (asked++ >= kMostAvoidances) continue;
    if (interruption() == Interruption::kNone) {
      write_avoidance(each.paid, paid);
    } else {
      is_complete_ = false;
    }
  }
}

// Changes the answer set that is looked at.
void Questions::write_avoidance(const PaidInstance& instance,
                                const std::vector<PaidInstance>& paid) {
  using Outcome = ToldAvoidance::Outcome;
  const Avoidance avoidance = avoid(answer_.store(), answer_.terms(), instance, options_);
  ToldAvoidance told;
  told.costs = dl::told(avoidance.costs);
  switch (avoidance.outcome) {
    case SearchOutcome::kFound:
      told.outcome =
          text_of(told.costs) == text_of(dl::told(costs_)) ? Outcome::kSameCost : Outcome::kDearer;
      break;
    case SearchOutcome::kUnproven:
      told.outcome = Outcome::kUnproven;
      is_complete_ = false;
      break;
    case SearchOutcome::kNone:
      told.outcome = Outcome::kNever;
      break;
    case SearchOutcome::kCut:
      told.outcome = Outcome::kCut;
      is_complete_ = false;
      break;
  }
  if (!avoidance.answer.empty()) tell_instead(avoidance.answer, paid, told);
  text_.avoidance(told);
}

// What the answer set pays that is not among what was paid.
void Questions::tell_instead(const std::string& answer, const std::vector<PaidInstance>& paid,
                             ToldAvoidance& told) {
  using Key = std::pair<StatementNumber, Binding>;
  std::set<Key> before;
  for (const PaidInstance& each : paid) before.insert({each.statement, each.binding});
  answer_.index().clear();
  add_answer_set(answer, answer_.terms(), answer_.index());
  BodyEvaluator evaluator(answer_.terms(), answer_.index(), answer_.store());
  std::vector<PaidInstance> instead = paid_instances(evaluator, answer_.store());
  std::erase_if(instead, [&before](const PaidInstance& each) {
    return before.contains({each.statement, each.binding});
  });
  PlainTeller teller(answer_.store(), answer_.terms(), answer_.index());
  for (PaidTogether& each : teller.payments(instead)) {
    if (told.instead.size() < kMostInstead) {
      told.instead.push_back(std::move(each.told));
    } else {
      ++told.others;
    }
  }
}

}    // namespace

bool answer_question(Program program, const Options& options,
                     std::function<void(std::string_view)> take) {
  Questions questions(std::move(program), options, std::move(take));
  try {
    questions.answer();
  } catch (const Interrupted&) {
    return false;
  }
  return questions.is_complete();
}

}    // namespace dl
