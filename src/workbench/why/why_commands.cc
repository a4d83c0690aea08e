#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <unistd.h>
#include <unordered_set>
#include <utility>

#include "dl/clingo_run.h"
#include "dl/explain/explained_answer.h"
#include "dl/explain/told_text.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/read_files.h"
#include "workbench/answers/answer_filter.h"
#include "workbench/answers/answer_text_reader.h"
#include "workbench/checked_program.h"
#include "workbench/commands.h"
#include "workbench/messages/characters.h"
#include "workbench/messages/words.h"
#include "workbench/search/solver_message.h"
#include "workbench/why/atom_question.h"
#include "workbench/why/one_item.h"
#include "workbench/why/query_row.h"
#include "workbench/why/teller.h"
#include "workbench/why/told_conflicts.h"
#include "workbench/why/why_form.h"

namespace workbench {
namespace {

constexpr std::uint64_t kMostInstances = 10;
constexpr std::size_t kMostAvoided = 10;
constexpr std::uint32_t kUsualDepth = 8;

// Ends a command with something to say.
struct Ended {
  ExitStatus status;
};

dl::Options search_options(const SearchOptions& chosen) {
  dl::Options options;
  options.clingo = chosen.clingo;
  options.threads = chosen.threads;
  options.bound = chosen.maxint;
  options.seed = chosen.seed;
  return options;
}

bool is_cut() {
  return dl::interruption() != dl::Interruption::kNone;
}

std::string how_cut() {
  return dl::interruption() == dl::Interruption::kTime ? "ended by the time limit" : "interrupted";
}

// On a terminal nothing is written that it would act on.
TakePiece standard_output() {
  const bool is_terminal = ::isatty(STDOUT_FILENO) != 0;
  return [is_terminal](std::string_view piece) {
    if (!is_terminal) {
      std::cout << piece << std::flush;
      return;
    }
    std::string shown;
    while (!piece.empty()) {
      const std::size_t end = std::min(piece.find('\n'), piece.size());
      append_shown(shown, piece.substr(0, end));
      if (end != piece.size()) shown += '\n';
      piece.remove_prefix(std::min(end + 1, piece.size()));
    }
    std::cout << shown << std::flush;
  };
}

std::unique_ptr<WhyForm> form_of(const CommandLine& line, std::string_view question) {
  if (line.why.form == "json") return make_why_json(standard_output(), question);
  if (line.why.form == "dot") return make_why_dot(standard_output());
  return make_why_text(standard_output(), line.why.depth.value_or(kUsualDepth));
}

dl::ToldCosts told(const dl::Costs& costs) {
  dl::ToldCosts levels;
  for (const auto& [level, cost] : costs) levels.push_back({level, cost});
  return levels;
}

std::string in_words(const dl::Costs& costs) {
  std::string text = "cost ";
  for (const auto& [level, cost] : costs) {
    if (text.back() != ' ') text += ", ";
    text += std::to_string(cost);
    if (costs.size() > 1 || level != 1) (text += " at level ") += std::to_string(level);
  }
  return text;
}

// What the four commands have in common: a program, and one of its answer sets.
class Explainer {
 public:
  Explainer(const CommandLine& line, std::string_view question)
      : line_(line), checked_(line), form_(form_of(line, question)) {}

  ExitStatus run(ExitStatus (Explainer::*explain)());

  ExitStatus why();
  ExitStatus whynot();
  ExitStatus conflict();
  ExitStatus cost();

 private:
  void prepare();
  AtomQuestion question(std::string_view text, std::string_view name);
  std::vector<std::string> demands();
  // Looks for the answer set that was chosen; throws Ended where there is none.
  void find_chosen();
  bool find(const dl::AnswerChoice& choice);
  void look();    // at the answer that was found, or at the program
  std::string chosen() const;
  bool is_chosen() const { return line_.why.number != 0 || !line_.why.with.empty(); }
  std::uint32_t depth() const;
  Teller::IsTold filter();
  void note(std::string_view text) { checked_.reporter().note(text); }
  [[noreturn]] void end_cut(std::string_view unknown);

  ExitStatus explain_atoms(const AtomQuestion& question);
  ExitStatus explain_row(const AtomQuestion& question);
  ExitStatus explain_missing_instances(const AtomQuestion& question,
                                       std::unique_ptr<AskedAtoms> asked);
  ExitStatus explain_missing_row(const AtomQuestion& question);
  void tell_others(const AskedAtoms& asked, const dl::Costs& costs);
  void tell_payments();

  const CommandLine& line_;
  CheckedProgram checked_;
  std::unique_ptr<WhyForm> form_;
  std::optional<dl::Options> options_;
  dl::Sources names_;    // of the solver's texts
  std::unique_ptr<dl::ExplainedAnswer> answer_;
  std::optional<UserStatements> statements_;
  std::optional<ProgramWords> words_;
  std::optional<Teller> teller_;
};

ExitStatus Explainer::run(ExitStatus (Explainer::*explain)()) {
  ExitStatus status = ExitStatus::kFound;
  try {
    prepare();
    status = (this->*explain)();
    if (status == ExitStatus::kFound && is_cut()) status = ExitStatus::kIncomplete;
    form_->end(status);
  } catch (const Ended& ended) {
    status = ended.status;
    if (status == ExitStatus::kNoneFound || status == ExitStatus::kIncomplete) form_->end(status);
  } catch (const dl::Interrupted&) {
    status = ExitStatus::kIncomplete;
    note(how_cut() + ": the answer is not complete");
    form_->end(status);
  } catch (const dl::Failure& failure) {
    SolverMessages told(checked_.program(), names_);
    const Message message = told.message(failure.diagnostic);
    checked_.reporter().report(message);
    status = status_of(message);
  }
  checked_.reporter().finish();
  return std::cout.flush() ? status : ExitStatus::kOutputFailed;
}

void Explainer::prepare() {
  if (const auto status = checked_.prepare()) throw Ended{*status};
  checked_.reporter().release();
  zarel::Program& program = checked_.program();
  options_ = search_options(line_.search);
  dl::Program surveyed = dl::survey_with_files(std::string(kRewrittenName), program.take_text(),
                                               program.plain_facts());
  for (std::uint32_t file = 0; file < surveyed.sources.size(); ++file) {
    names_.add(surveyed.sources.name(file), {});
  }
  program.forget_clauses();
  if (surveyed.has_failed() && !surveyed.mistake) {
    const dl::Translated translated =
        dl::translate(std::move(surveyed), *options_, [](std::string_view) {});
    throw dl::Failure{*translated.mistake};
  }
  answer_ = std::make_unique<dl::ExplainedAnswer>(std::move(surveyed), *options_);
}

void Explainer::look() {
  teller_.reset();
  words_.reset();
  if (!statements_) statements_.emplace(checked_.program(), checked_.texts());
  statements_->look_at(names_);
  words_.emplace(checked_.program(), *answer_, *statements_);
  teller_.emplace(*words_, *answer_);
}

AtomQuestion Explainer::question(std::string_view text, std::string_view name) {
  std::optional<AtomQuestion> question =
      read_question(text, name, checked_.program(), line_, std::cerr);
  if (!question) throw Ended{ExitStatus::kUsage};
  return *std::move(question);
}

// Read without the program: what the atoms are, not whether they hold.
std::vector<std::string> Explainer::demands() {
  std::vector<std::string> demands;
  for (const std::string& text : line_.why.with) {
    const AtomQuestion asked = question(text, "--with");
    dl::ExplainedAnswer nothing(dl::Program{}, *options_);
    nothing.look_at_program();
    const AskedAtoms atoms(asked, nothing);
    if (asked.is_row || !atoms.is_ground()) {
      checked_.reporter().report({"no-atom",
                                  {},
                                  "--with needs an atom without variables",
                                  {},
                                  {},
                                  "write constants for them: --with 'p(a)'"});
      throw Ended{ExitStatus::kUsage};
    }
    for (std::string& each : atoms.demands()) demands.push_back(std::move(each));
  }
  return demands;
}

// "answer set 2", "the answer set that holds p(a) and q".
std::string Explainer::chosen() const {
  const bool has_demands = !line_.why.with.empty();
  const std::uint64_t number = std::max<std::uint64_t>(line_.why.number, 1);
  std::string text = has_demands && number == 1 ? "the answer set" : "answer set ";
  if (!text.ends_with('t')) text += std::to_string(number);
  for (const std::string& with : line_.why.with) {
    (text += &with == line_.why.with.data() ? " that holds " : " and ") += on_one_line(with);
  }
  return text;
}

void Explainer::end_cut(std::string_view unknown) {
  note((how_cut() += ": ") += unknown);
  throw Ended{ExitStatus::kIncomplete};
}

bool Explainer::find(const dl::AnswerChoice& choice) {
  const dl::FoundAnswer& found = answer_->find(choice);
  if (found.outcome == dl::SearchOutcome::kCut) end_cut("no answer set was found so far");
  if (found.outcome == dl::SearchOutcome::kNone) return false;
  if (found.outcome == dl::SearchOutcome::kUnproven)
    note("this is the best answer set that was found; it is not proven that none is better");
  look();
  return true;
}

void Explainer::find_chosen() {
  const dl::AnswerChoice choice{std::max<std::uint64_t>(line_.why.number, 1), demands()};
  if (find(choice)) return;
  if (is_chosen()) {
    std::string text = chosen();
    if (text.starts_with("the ")) text.erase(0, 4);
    note("there is no " + text);
  } else {
    note("no answer set");
  }
  if (line_.why.number <= 1 && line_.why.with.empty()) note(kConflictHint);
  throw Ended{ExitStatus::kNoneFound};
}

std::uint32_t Explainer::depth() const {
  if (line_.why.depth) return *line_.why.depth;
  return line_.why.form == "json" ? 0 : kUsualDepth;
}

ExitStatus Explainer::why() {
  const AtomQuestion asked = question(line_.why.atom, "ATOM");
  if (asked.is_negated) {
    checked_.reporter().report({"no-atom",
                                {},
                                "zrl why explains what an answer set holds",
                                {},
                                {},
                                "ask zrl whynot why an atom does not hold"});
    return ExitStatus::kUsage;
  }
  find_chosen();
  return asked.is_row ? explain_row(asked) : explain_atoms(asked);
}

ExitStatus Explainer::explain_atoms(const AtomQuestion& question) {
  auto asked = std::make_unique<AskedAtoms>(question, *answer_);
  AskedAtoms::Held held = asked->held(kMostInstances);
  if (held.instances == 0) {
    if (is_chosen() || !asked->is_ground()) {
      note(chosen() + " does not hold " + question.written +
           (asked->is_ground() ? "" : ", whatever its variables are"));
      if (asked->is_ground()) note("zrl whynot tells why");
      return ExitStatus::kNoneFound;
    }
    if (!find({1, asked->demands()})) {
      note("no answer set holds " + question.written);
      note("zrl whynot tells why");
      return ExitStatus::kNoneFound;
    }
    note("answer set 1 does not hold " + question.written + "; this one does");
    asked = std::make_unique<AskedAtoms>(question, *answer_);
    held = asked->held(kMostInstances);
  }
  dl::ProofSearch search(answer_->terms(), answer_->index(), answer_->store());
  dl::ProofSize size;
  if (line_.why.form == "text" && depth() != 0) size.elements = dl::ToldText::kFewElements;
  form_->proof(teller_->proof(search.prove(held.atoms, size), depth(), filter()));
  if (!asked->is_ground() && held.instances > kMostInstances) {
    const std::uint64_t others = held.instances - kMostInstances;
    note("and " + std::to_string(others) + (others == 1 ? " other" : " others") + " of " +
         question.written);
  }
  return ExitStatus::kFound;
}

// The query holds for a row in an answer set as a body does.
ExitStatus Explainer::explain_row(const AtomQuestion& question) {
  const auto row = query_row(question, *answer_, checked_.reporter());
  if (!row) return ExitStatus::kUsage;
  dl::BodyEvaluator evaluator(answer_->terms(), answer_->index(), answer_->store());
  dl::ProofSearch search(answer_->terms(), answer_->index(), answer_->store());
  std::uint64_t rows = 0;
  const dl::StoredStatement& query = answer_->store().statement(row->query);
  evaluator.each(query, row->start, {}, [&](const dl::Binding& binding) {
    if (++rows > kMostInstances) return true;
    dl::Proof proof = search.prove_body(row->query, binding);
    if (proof.roots.empty()) proof.roots.push_back(0);
    dl::ToldProof told = teller_->proof(proof, depth(), filter());
    if (!told.roots.empty()) {
      dl::ToldNode& root = told.nodes[told.roots.front()];
      root.atom = "?";
      for (const auto& [name, text] : root.with) {
        ((root.atom += root.atom == "?" ? "(" : ", ") += text);
      }
      if (!root.with.empty()) root.atom += ')';
    }
    form_->proof(told);
    return true;
  });
  if (rows == 0) {
    note(chosen() + " has no such row");
    note("zrl whynot tells why");
    return ExitStatus::kNoneFound;
  }
  if (rows > kMostInstances) note("and " + counted(rows - kMostInstances, "other row"));
  return ExitStatus::kFound;
}

// What --filter hides is named and not proved. The program's user names none of what templates
// define on the way.
Teller::IsTold Explainer::filter() {
  if (line_.answers.filters.empty()) return {};
  auto shown = std::make_shared<std::unordered_set<std::string>>();
  const OneItem::Take take = [&shown](const AnswerSet& set, const Item& item) {
    shown->emplace(set.encoding(item));
  };
  OneItem items(take);
  AnswerFilter filter(items, line_.answers.filters);
  const zarel::Run& run = checked_.program().run();
  const zarel::NamespaceTable* const namespaces = run.prefix_was_used ? &run.namespaces : nullptr;
  AnswerTextReader(filter, namespaces).read(answer_->text());
  return [this, shown](dl::AtomNumber atom) {
    if (words_->role(answer_->index().predicate_of(atom)) != PredicateRole::kOwn) return true;
    bool is_shown = false;
    std::string text = "{";
    answer_->index().append(text, atom);
    const OneItem::Take look = [&](const AnswerSet& set, const Item& item) {
      is_shown = shown->contains(std::string(set.encoding(item)));
    };
    OneItem one(look);
    AnswerTextReader(one, nullptr).read(text += '}');
    return is_shown;
  };
}

ExitStatus Explainer::whynot() {
  const AtomQuestion question = this->question(line_.why.atom, "ATOM");
  if (question.is_negated) {
    checked_.reporter().report({"no-atom",
                                {},
                                "zrl whynot explains what an answer set does not hold",
                                {},
                                {},
                                "ask zrl why why an atom holds"});
    return ExitStatus::kUsage;
  }
  find_chosen();
  if (question.is_row) return explain_missing_row(question);
  auto asked = std::make_unique<AskedAtoms>(question, *answer_);
  if (!asked->is_ground()) return explain_missing_instances(question, std::move(asked));
  const auto is_missing = [this](const AskedAtoms::Atom& atom) {
    return answer_->index().find(atom.predicate, atom.arguments) == dl::kNoAtom;
  };
  if (std::ranges::none_of(asked->atoms(), is_missing)) {
    bool has_found = false;
    if (!is_chosen()) {
      for (const std::string& demand : asked->demands()) {
        has_found = find({1, {"not " + demand}});
        if (has_found) break;
      }
    }
    if (!has_found) {
      note((is_chosen() ? chosen() + " holds " : "every answer set holds ") + question.written);
      note("zrl why tells why");
      return ExitStatus::kNoneFound;
    }
    note("answer set 1 holds " + question.written + "; this one does not");
    asked = std::make_unique<AskedAtoms>(question, *answer_);
  }
  bool can_hold = true;
  for (const AskedAtoms::Atom& atom : asked->atoms()) {
    if (!is_missing(atom)) continue;
    const dl::ToldMissing missing = teller_->missing(atom.predicate, atom.arguments);
    can_hold = can_hold && !missing.rules.empty();
    form_->missing(missing);
  }
  // Without a rule for it no answer set has it.
  if (can_hold) tell_others(*asked, answer_->found().costs);
  return ExitStatus::kFound;
}

// Of an atom with variables no instance holds, in this answer set or another one.
ExitStatus Explainer::explain_missing_instances(const AtomQuestion& question,
                                                std::unique_ptr<AskedAtoms> asked) {
  if (!asked->is_one_atom()) {
    checked_.reporter().report({"no-atom",
                                {},
                                "zrl whynot explains one atom, with each variable as an argument "
                                "of its own",
                                {},
                                {},
                                "write constants for the variables: zrl whynot 'p(a)'"});
    return ExitStatus::kUsage;
  }
  if (const AskedAtoms::Held held = asked->held(kMostInstances); held.instances != 0) {
    if (is_chosen() || !find({1, {"not " + question.body}})) {
      note((is_chosen() ? chosen() + " holds " : "every answer set holds an instance of ") +
           question.written + (is_chosen() ? " for some values" : ""));
      note("zrl why tells which; ask zrl whynot about one that does not hold");
      return ExitStatus::kNoneFound;
    }
    note("answer set 1 holds an instance of " + question.written + "; this one holds none");
    asked = std::make_unique<AskedAtoms>(question, *answer_);
  }
  const AskedAtoms::Atom& atom = asked->atoms().front();
  const dl::ToldMissing missing = teller_->missing(question, atom.predicate, atom.arguments);
  form_->missing(missing);
  if (!missing.rules.empty()) tell_others(*asked, answer_->found().costs);
  return ExitStatus::kFound;
}

ExitStatus Explainer::explain_missing_row(const AtomQuestion& question) {
  const auto row = query_row(question, *answer_, checked_.reporter());
  if (!row) return ExitStatus::kUsage;
  dl::BodyEvaluator evaluator(answer_->terms(), answer_->index(), answer_->store());
  const bool has_none = evaluator.each(answer_->store().statement(row->query), row->start, {},
                                       [](const dl::Binding&) { return false; });
  if (!has_none) {
    note(chosen() + (row->is_any ? " has rows of the query" : " has this row"));
    note(row->is_any ? "zrl why tells why; ask about one that it does not have: zrl whynot '?(a)'"
                     : "zrl why tells why");
    return ExitStatus::kNoneFound;
  }
  form_->missing(teller_->missing(question, *row));
  return ExitStatus::kFound;
}

// Whether it could hold in another answer set, and if not, what stands in its way.
void Explainer::tell_others(const AskedAtoms& asked, const dl::Costs& costs) {
  std::string demand;
  for (const std::string& each : asked.demands()) ((demand += ":- not ") += each) += ".\n";
  const dl::FoundAnswer other = dl::search_one(answer_->with(demand), *options_);
  switch (other.outcome) {
    case dl::SearchOutcome::kFound:
    case dl::SearchOutcome::kUnproven:
      form_->outcome(dl::ToldOutcome::kNone, true);
      if (other.costs != costs && !costs.empty()) {
        std::string text = other.outcome == dl::SearchOutcome::kFound
                               ? "The best that does has the "
                               : "The best that was found has the ";
        ((text += in_words(other.costs)) += ", this one has the ") += in_words(costs);
        form_->sentence(text += '.');
      }
      return;
    case dl::SearchOutcome::kCut:
      return form_->outcome(dl::ToldOutcome::kUnknown, true);
    case dl::SearchOutcome::kNone:
      break;
  }
  // Rules alone keep it out where nothing else can.
  const bool has_constraints =
      std::ranges::any_of(answer_->store().statements(), [this](const dl::StoredStatement& each) {
        return each.kind == dl::StatementKind::kConstraint ||
               std::ranges::any_of(each.heads, [this](const dl::AtomPattern& head) {
                 return answer_->index().predicate(head.predicate).strongly_negated;
               });
      });
  if (!has_constraints) return form_->kept_out_by_rules();
  dl::Relaxation relaxation(answer_->store(), answer_->terms(), answer_->index(), *options_);
  ToldConflicts told(*teller_, *form_, true);
  relaxation.explain(told, demand);
}

ExitStatus Explainer::conflict() {
  answer_->look_at_program();
  look();
  dl::Relaxation relaxation(answer_->store(), answer_->terms(), answer_->index(), *options_);
  ToldConflicts told(*teller_, *form_, false);
  std::string demand;
  for (const std::string& each : demands()) {
    demand += each.starts_with("not ") ? ":- " + each.substr(4) : ":- not " + each;
    demand += ".\n";
  }
  relaxation.explain(told, demand);
  switch (told.kind()) {
    case dl::ConflictKind::kNone:
      return ExitStatus::kNoneFound;
    case dl::ConflictKind::kUnknown:
      return ExitStatus::kIncomplete;
    case dl::ConflictKind::kConstraints:
    case dl::ConflictKind::kRules:
      break;
  }
  return ExitStatus::kFound;
}

ExitStatus Explainer::cost() {
  find_chosen();
  const bool has_weak =
      std::ranges::any_of(answer_->store().statements(), [](const dl::StoredStatement& each) {
        return each.kind == dl::StatementKind::kWeakConstraint;
      });
  if (!has_weak) {
    note("the program has no weak constraints: no answer set costs anything");
    return ExitStatus::kFound;
  }
  form_->costs(told(answer_->found().costs), answer_->found().outcome == dl::SearchOutcome::kFound);
  tell_payments();
  return ExitStatus::kFound;
}

// Each payment, and at once what the best answer set without it pays in its place.
void Explainer::tell_payments() {
  const std::string found = answer_->text();
  dl::BodyEvaluator evaluator(answer_->terms(), answer_->index(), answer_->store());
  const std::vector<dl::PaidInstance> paid = dl::paid_instances(evaluator, answer_->store());
  std::vector<std::size_t> firsts;
  const std::vector<dl::ToldPayment> payments = teller_->payments(paid, &firsts);
  const auto is_among = [](const std::vector<dl::ToldPayment>& list, const dl::ToldPayment& one) {
    return std::ranges::any_of(list, [&one](const dl::ToldPayment& other) {
      return other.level == one.level && other.instance.with == one.instance.with &&
             other.instance.statement->text == one.instance.statement->text &&
             other.instance.statement->place.line == one.instance.statement->place.line;
    });
  };
  for (std::size_t i = 0; i < payments.size(); ++i) {
    form_->payment(payments[i]);
    if (i >= kMostAvoided || is_cut()) continue;
    const dl::Avoidance avoided =
        dl::avoid(answer_->store(), answer_->terms(), paid[firsts[i]], *options_);
    dl::ToldAvoidance told_avoidance;
    using Outcome = dl::ToldAvoidance::Outcome;
    if (avoided.outcome == dl::SearchOutcome::kNone) {
      told_avoidance.outcome = Outcome::kNever;
    } else if (avoided.outcome != dl::SearchOutcome::kCut) {
      told_avoidance.outcome = avoided.outcome == dl::SearchOutcome::kUnproven ? Outcome::kUnproven
                               : avoided.costs == answer_->found().costs       ? Outcome::kSameCost
                                                                               : Outcome::kDearer;
      told_avoidance.costs = told(avoided.costs);
      answer_->index().clear();
      dl::add_answer_set(avoided.answer, answer_->terms(), answer_->index());
      // The search may have been cut.
      dl::BodyEvaluator later(answer_->terms(), answer_->index(), answer_->store());
      for (dl::ToldPayment& each : teller_->payments(dl::paid_instances(later, answer_->store()))) {
        if (!is_among(payments, each)) told_avoidance.instead.push_back(std::move(each));
      }
      // What is told behind it is about the answer set that was found.
      answer_->index().clear();
      dl::add_answer_set(found, answer_->terms(), answer_->index());
    }
    form_->avoidance(told_avoidance);
  }
}

ExitStatus explained(const CommandLine& line, std::string_view question,
                     ExitStatus (Explainer::*explain)()) {
  watch_the_run(line.search.seconds, line.messages);
  return Explainer(line, question).run(explain);
}

}    // namespace

ExitStatus why(const CommandLine& line) {
  return explained(line, "why", &Explainer::why);
}

ExitStatus whynot(const CommandLine& line) {
  return explained(line, "whynot", &Explainer::whynot);
}

ExitStatus conflict(const CommandLine& line) {
  return explained(line, "conflict", &Explainer::conflict);
}

ExitStatus cost(const CommandLine& line) {
  return explained(line, "cost", &Explainer::cost);
}

}    // namespace workbench
