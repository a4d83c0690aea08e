#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "dl/clingo_process.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/model_reader.h"
#include "model/program.h"
#include "model/run.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/search.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail_files(const fs::path& path, int error,
                             std::string_view what = "cannot write ") {
  std::string text(what);
  ((text += path.string()) += ": ") += std::strerror(error);
  throw SearchFailure{{"output-failure", {}, std::move(text)}};
}

// A folder that only we may look into, gone with this object.
class PrivateFolder {
 public:
  PrivateFolder() {
    const char* const chosen = std::getenv("TMPDIR");    // NOLINT(concurrency-mt-unsafe)
    const fs::path parent = chosen != nullptr && *chosen != '\0' ? chosen : "/tmp";
    std::string name = (parent / "zrl-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) fail_files(parent, errno, "cannot make a folder in ");
    path_ = std::move(name);
  }
  ~PrivateFolder() {
    std::error_code ignored;    // what is left behind is the system's to clean
    fs::remove_all(path_, ignored);
  }
  PrivateFolder(const PrivateFolder&) = delete;
  PrivateFolder& operator=(const PrivateFolder&) = delete;

  // Returns the file's path.
  std::string write(std::string_view name, std::string_view text) const {
    const fs::path path = path_ / name;
    errno = 0;
    std::ofstream file(path, std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) fail_files(path, errno);
    return path.string();
  }

 private:
  fs::path path_;
};

// What every solver of the language is called with, and behind it what the user asked for.
std::vector<std::string> arguments(const zarel::Run& run, const SearchOptions& options,
                                   std::string file) {
  std::vector<std::string> words{std::move(file)};
  for (const zarel::NameId name : run.atom_globals.names()) {
    words.push_back("-filter=" + std::string(run.names.spelling(name)));
  }
  if (options.answer_sets != 0) words.push_back("-n=" + std::to_string(options.answer_sets));
  if (options.maxint) words.push_back("-N=" + std::to_string(*options.maxint));
  if (options.leaves_out_facts) words.emplace_back("-nofacts");
  if (options.consequences == Consequences::kBrave) words.emplace_back("-brave");
  words.emplace_back("-silent");
  return words;
}

// The variables whose values answer the query, as far as they stand outside of aggregates.
std::vector<std::string> named_variables(zarel::Run& run) {
  const zarel::Run::Scope scope(run);
  const zarel::Body& query = run.queries.back();
  std::vector<std::string> names;
  for (std::size_t i = 0; i < query.size(); ++i) {
    if (query[i].atom.is_aggregate()) continue;
    for (const zarel::TERMT& term : query[i].atom.terms()) {
      if (!term.is_variable()) continue;
      std::string name(zarel::getVariableName(term.index()));
      if (name != "_" && std::ranges::find(names, name) == names.end()) {
        names.push_back(std::move(name));
      }
    }
  }
  return names;
}

class SolverSearch {
 public:
  SolverSearch(zarel::Program& program, const SearchOptions& options, KeptStages& kept,
               AnswerPrinter& printer)
      : program_(program), options_(options), kept_(kept), printer_(printer) {}

  SearchResult run() {
    try {
      start();
      if (solver_.is_running()) read_answers();
      judge();
      return result_;
    } catch (const dl::Failure& failure) {
      throw SearchFailure{
          {zarel::kind_of(failure.diagnostic.code).name, {}, failure.diagnostic.text}};
    }
  }

 private:
  void start();
  void read_answers();
  void judge();

  zarel::Program& program_;
  const SearchOptions& options_;
  KeptStages& kept_;
  AnswerPrinter& printer_;
  PrivateFolder folder_;
  dl::ClingoProcess solver_;
  SearchResult result_;
  bool has_query_ = false;
  bool has_whole_lines_ = false;
};

void SolverSearch::start() {
  has_query_ = !program_.run().queries.empty();
  if (has_query_) printer_.expect_query(named_variables(program_.run()));
  const std::string text = program_.take_text();
  kept_.add(Stage::kRewritten, text);
  const std::string file = folder_.write("program.dl", text);
  if (dl::interruption() != dl::Interruption::kNone) return;
  solver_.start(options_.solver, arguments(program_.run(), options_, file), dl::ProcessGroup::kOwn);
  solver_.finish_input();    // it has its file
  program_.forget_clauses();
}

void SolverSearch::read_answers() {
  dl::LineReader lines(dl::output_of(solver_));
  std::string_view line;
  for (bool has_more = true; has_more;) {
    while (lines.next(line)) {
      kept_.add(Stage::kAnswers, line);
      kept_.add(Stage::kAnswers, "\n");
      if (!printer_.print(line) || !printer_.print("\n")) return;
    }
    if (!printer_.flush() || printer_.has_enough()) return;
    if (!solver_.wait_for_output(printer_.descriptor())) return printer_.note_closed();
    has_more = lines.wait();
  }
  has_whole_lines_ = !lines.has_rest();
  if (has_whole_lines_ || dl::interruption() == dl::Interruption::kNone) printer_.end();
}

void SolverSearch::judge() {
  if (printer_.failure() || !printer_.reading_error().empty()) return;
  const bool is_cut = dl::interruption() != dl::Interruption::kNone;
  if (solver_.is_running() && !printer_.has_enough()) {
    const dl::ProcessEnd end = solver_.end();
    if (!is_cut && (end.signalled || end.code != 0 || !has_whole_lines_)) {
      SearchFailure failure{solver_failure(options_.solver, end)};
      if (failure.message.code == "solver-missing") {
        failure.message.help = "name a program that can be run, or leave out --solver for clingo";
      }
      throw failure;
    }
    result_.said = end.errors;
  }
  const Found& found = printer_.found();
  result_.asked.has_query = found.rows != 0 || found.truth || has_query_;
  result_.asked.is_ground = found.truth.has_value();
  result_.judgement.holds = found.truth;
  result_.asked.is_brave = options_.consequences == Consequences::kBrave;
  result_.asked.has_weak_constraints = !found.costs.empty();
  const bool has_enough = printer_.has_enough() ||
                          (options_.answer_sets != 0 && found.answer_sets == options_.answer_sets);
  result_.judgement.end = is_cut       ? SearchEnd::kCut
                          : has_enough ? SearchEnd::kEnough
                                       : SearchEnd::kAll;
  result_.judgement.is_unproven = is_cut && !found.costs.empty();
}

}    // namespace

SearchResult search_with_solver(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer) {
  enter(Phase::kSearching);
  dl::hold_interruptions();    // the folder is to be removed, come what may
  return SolverSearch(program, options, kept, printer).run();
}

}    // namespace workbench
