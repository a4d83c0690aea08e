#include <algorithm>
#include <utility>

#include "dl/answer_reader.h"
#include "dl/clingo_process.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/read_files.h"
#include "dl/search_plan.h"
#include "dl/translate.h"
#include "model/run.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/failed_clingo.h"
#include "workbench/search/improving_answers.h"
#include "workbench/search/search.h"
#include "workbench/search/search_answers.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

class ClingoSearch {
 public:
  ClingoSearch(zarel::Program& program, const SearchOptions& options, KeptStages& kept,
               AnswerPrinter& printer)
      : program_(program),
        options_(translation_options(program.run(), options)),
        shows_improving_(options.shows_improving),
        kept_(kept),
        printer_(printer),
        messages_(program, translated_.sources),
        tells_statistics_(options.tells_statistics),
        tells_profile_(options.tells_profile) {}

  SearchResult run() {
    try {
      translate();
      read_answers();
      if (tells_profile_ && result_.judgement.end != SearchEnd::kCut) {
        result_.profile = profile_of(program_, std::move(profiled_), options_);
      }
      return result_;
    } catch (const dl::Failure& failure) {
      throw SearchFailure{message(failure.diagnostic)};
    }
  }

 private:
  void translate();
  dl::SearchCommand command() const;
  void read_answers();
  void read_line(std::string_view line, dl::AnswerReader& answers);
  void stop();
  void judge(SearchAnswers& answers, bool has_whole_lines);
  Message message(const zarel::Diagnostic& finding) { return messages_.message(finding); }

  zarel::Program& program_;
  const dl::Options options_;
  const bool shows_improving_;
  KeptStages& kept_;
  AnswerPrinter& printer_;
  dl::Translated translated_;
  SolverMessages messages_;
  dl::Traits traits_;
  std::string given_;    // to clingo, where sums are watched
  dl::ClingoProcess clingo_;
  std::optional<ImprovingAnswers> improving_;
  SearchResult result_;
  const bool tells_statistics_;
  const bool tells_profile_;
  std::string profiled_;    // the text, where its profile is asked for
  const bool is_talkative_ = tells_statistics_ || has_progress_line();
  bool is_solving_ = false;
  bool has_result_ = false;
};

// clingo says what it does only to who asks it to.
dl::SearchCommand ClingoSearch::command() const {
  dl::SearchPlan plan = dl::plan_search(options_, traits_);
  std::vector<std::string>& words = plan.arguments;
  if (tells_statistics_) words.insert(words.begin(), "--stats");
  if (is_talkative_) std::ranges::replace(words, "--verbose=0", "--verbose=1");
  // See Note [improving answer sets].
  if (shows_improving_ && !traits_.has_query) {
    std::ranges::replace(words, "--quiet=1,0,2", "--quiet=0,0,2");
  }
  return dl::command_of(plan);
}

// clingo reads while this translates.
void ClingoSearch::translate() {
  std::string text = program_.take_text();
  kept_.add(Stage::kRewritten, text);
  if (tells_profile_) profiled_ = text;
  dl::Program surveyed =
      dl::survey_with_files(std::string(kRewrittenName), std::move(text), program_.plain_facts());
  traits_ = dl::traits_of(surveyed, options_);
  if (!surveyed.has_failed()) {
    const dl::SearchCommand started = command();
    clingo_.start(started.program, started.arguments);
  }
  program_.forget_clauses();
  const auto give = [this](std::string_view piece) {
    clingo_.write(piece);
    kept_.add(Stage::kClingo, piece);
    if (traits_.has_sums) given_ += piece;
  };
  translated_ = dl::translate(std::move(surveyed), options_, give);
  if (translated_.mistake) throw search_failure(mistakes_of(translated_, messages_));
  give(translated_.text);
  translated_.text = std::string();
  clingo_.finish_input();
}

// In front of the answers clingo says what it does, behind its result what that took.
void ClingoSearch::read_line(std::string_view line, dl::AnswerReader& answers) {
  if (line.starts_with(dl::kSearchNote)) {
    result_.notes.emplace_back(line.substr(dl::kSearchNote.size()));
    return;
  }
  if (has_result_) {
    const std::size_t end = line.find_last_not_of(' ') + 1;
    if (end != 0) result_.figures.emplace_back(line.substr(0, end));
    return;
  }
  const dl::LineKind kind = dl::kind_of_line(line);
  if (is_talkative_ && !is_solving_) {
    is_solving_ = line == "Solving...";
    if (is_solving_) enter(Phase::kSearching);
    if (line.starts_with("clingo version")) return;
  }
  if (kind == dl::LineKind::kCosts && is_talkative_ && !traits_.has_query) {
    std::string cost(line.substr(line.find(':') + 1));
    note_cost(cost.substr(cost.find_first_not_of(' ')));
  }
  has_result_ = kind == dl::LineKind::kOptimumFound || kind == dl::LineKind::kSatisfiable ||
                kind == dl::LineKind::kUnsatisfiable || kind == dl::LineKind::kUnknown;
  if (!improving_) return answers.read_line(line);
  printer_.print_improving(improving_->read_line(line));
}

void ClingoSearch::read_answers() {
  SearchAnswers answers(translated_, options_.reasoning, printer_, result_);
  if (shows_improving_ && result_.asked.has_weak_constraints && !result_.asked.has_query) {
    improving_.emplace(translated_, answers.reader());
  }
  dl::LineReader lines(dl::output_of(clingo_));
  std::string_view line;
  for (bool has_more = true; has_more;) {
    while (lines.next(line)) {
      kept_.add(Stage::kAnswers, line);
      kept_.add(Stage::kAnswers, "\n");
      read_line(line, answers.reader());
      if (!answers.has_much()) continue;
      lines.shrink();
      if (!answers.print()) return stop();
    }
    // One answer set may be all there is, and large: it is read while clingo still prints it.
    if (!has_result_ && answers.reader().takes_pieces() && lines.next_piece(line)) {
      kept_.add(Stage::kAnswers, line);
      answers.reader().read_piece(line);
    }
    if (!answers.print()) return stop();
    if (!clingo_.wait_for_output(printer_.descriptor())) return printer_.note_closed();
    has_more = lines.wait();
  }
  judge(answers, !lines.has_rest());
}

// What was found is enough, or of no use.
void ClingoSearch::stop() {
  result_.judgement.end = SearchEnd::kEnough;
}

// Only what the exit status, the final line and the whole output agree on is a finished search.
void ClingoSearch::judge(SearchAnswers& answers, bool has_whole_lines) {
  const dl::ProcessEnd end = clingo_.end();
  const bool is_cut = dl::interruption() != dl::Interruption::kNone;
  const bool has_finished =
      has_whole_lines && answers.reader().has_result() && dl::has_finished(end, options_, traits_);
  if (!has_finished && !is_cut)
    fail_with_clingo(end, {options_.clingo, translated_, given_}, messages_);
  if (improving_) improving_->finish();
  result_.judgement.end = !has_finished                ? SearchEnd::kCut
                          : end.code == dl::kSomeFound ? SearchEnd::kEnough
                                                       : SearchEnd::kAll;
  answers.finish();
}

}    // namespace

dl::Options translation_options(const zarel::Run& run, const SearchOptions& chosen) {
  dl::Options options;
  for (const zarel::NameId name : run.atom_globals.names()) {
    options.filters.emplace_back(run.names.spelling(name));
  }
  options.clingo = chosen.clingo;
  options.answer_sets = chosen.answer_sets;
  options.threads = chosen.threads;
  options.configuration = chosen.configuration;
  options.cuts = chosen.cuts;
  options.parts = chosen.parts;
  options.bound = chosen.maxint;
  options.seed = chosen.seed;
  options.leave_out_facts = chosen.leaves_out_facts;
  options.tell_all = true;
  if (chosen.consequences == Consequences::kBrave) options.reasoning = dl::Reasoning::kBrave;
  return options;
}

std::vector<Message> translation_mistakes(zarel::Program& program, const SearchOptions& options) {
  const dl::Options chosen = translation_options(program.run(), options);
  dl::Program surveyed = dl::survey_with_files(std::string(kRewrittenName), program.take_text(),
                                               program.plain_facts());
  const dl::Translated translated =
      dl::translate(std::move(surveyed), chosen, [](std::string_view) {});
  SolverMessages messages(program, translated.sources);
  return mistakes_of(translated, messages);
}

SearchResult search_with_clingo(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer) {
  enter(Phase::kGrounding);
  return ClingoSearch(program, options, kept, printer).run();
}

}    // namespace workbench
