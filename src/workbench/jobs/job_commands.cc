#include <iostream>
#include <unistd.h>

#include "dl/failure.h"
#include "dl/parts/crew.h"
#include "dl/parts/jobs.h"
#include "dl/read_files.h"
#include "dl/search_plan.h"
#include "workbench/checked_program.h"
#include "workbench/commands.h"
#include "workbench/jobs/printed_program.h"
#include "workbench/jobs/reported_jobs.h"
#include "workbench/messages/words.h"
#include "workbench/progress/cleared_output.h"
#include "workbench/search/failed_clingo.h"
#include "workbench/search/printed_search.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

// The program for clingo, and what reading the answers needs besides.
struct TranslatedJobs {
  dl::SearchPlan plan;
  std::string translation;
  dl::Translated program;
};

TranslatedJobs translated_jobs(zarel::Program& program, const SearchOptions& search) {
  const dl::Options options = translation_options(program.run(), search);
  TranslatedJobs jobs;
  dl::Program surveyed = dl::survey_with_files(std::string(kRewrittenName), program.take_text(),
                                               program.plain_facts());
  if (!surveyed.has_failed()) {
    jobs.plan = dl::plan_search(options, dl::traits_of(surveyed, options));
  }
  program.forget_clauses();
  jobs.program = dl::translate(std::move(surveyed), options,
                               [&jobs](std::string_view piece) { jobs.translation += piece; });
  jobs.translation += jobs.program.text;
  return jobs;
}

// Makes the folder. Returns the number of parts.
std::size_t split_program(CheckedProgram& checked, const CommandLine& line) {
  enter(Phase::kCutting);
  const TranslatedJobs jobs = translated_jobs(checked.program(), line.search);
  SolverMessages messages(checked.program(), jobs.program.sources);
  if (jobs.program.mistake) throw search_failure(mistakes_of(jobs.program, messages));
  dl::AnswerTables tables;
  tables.program.sources = jobs.program.sources;
  tables.program.parts = jobs.program.parts;
  if (line.search.consequences == Consequences::kBrave) tables.reasoning = dl::Reasoning::kBrave;
  tables.host = lines_of(checked, jobs.program, line.search.leaves_out_facts);
  try {
    return dl::make_jobs(line.jobs.folder, jobs.plan, jobs.translation, tables);
  } catch (const dl::FailedWorker& failed) {
    fail_with_clingo(failed.end, {line.search.clingo, jobs.program, jobs.translation}, messages);
  }
}

ExitStatus printed(const std::string& text) {
  std::cout << text << std::flush;
  return std::cout ? ExitStatus::kFound : ExitStatus::kOutputFailed;
}

std::string part_in_words(std::size_t part) {
  std::string text("part ");
  return text += std::to_string(part);
}

// What speaks of no text.
struct PlainReporter {
  explicit PlainReporter(const MessageOptions& options)
      : texts(files), reporter(options, texts, std::cerr) {}
  zarel::FileTable files;
  SourceTexts texts;
  Reporter reporter;
};

ExitStatus divide(const CommandLine& line, dl::JobFolder& jobs, Reporter& reporter) {
  const std::vector<std::size_t> pieces =
      dl::divide_part(jobs, line.jobs.part, line.jobs.pieces, line.search.clingo);
  reporter.note(part_in_words(line.jobs.part) + " is " + counted(pieces.size(), "part") + " now");
  return printed(dl::ranges(pieces, ",", ",") + '\n');
}

}    // namespace

ExitStatus with_reports(Reporter& reporter, const std::string& clingo,
                        const std::function<ExitStatus()>& work) {
  const dl::Translated no_program;
  zarel::Run run;
  SolverMessages messages(
      run, [](std::uint32_t) { return zarel::LineOrigin(); }, no_program.sources);
  try {
    try {
      return work();
    } catch (const dl::FailedWorker& failed) {
      fail_with_clingo(failed.end, {clingo, no_program, {}}, messages);
    } catch (const dl::Failure& failure) {
      throw SearchFailure{messages.message(failure.diagnostic)};
    }
  } catch (const SearchFailure& failure) {
    return report_failure(failure, reporter);
  }
}

ExitStatus split(const CommandLine& line) {
  const bool shows_line = !line.messages.is_quiet && ::isatty(STDERR_FILENO) != 0;
  begin_progress(shows_line ? ProgressLine::kShown : ProgressLine::kNone);
  watch_the_run(line.search.seconds, line.messages);
  ClearedOutput cleared(std::cerr);
  std::ostream messages(&cleared);
  CheckedProgram checked(line, messages);
  Reporter& reporter = checked.reporter();
  const ExitStatus status = with_reports(reporter, line.search.clingo, [&] {
    dl::JobFolder::expect_unused(line.jobs.folder);
    const std::optional<ExitStatus> refused = checked.prepare();
    reporter.release();
    if (refused) return *refused;
    const std::size_t count = split_program(checked, line);
    end_progress();
    reporter.note(count == 0 ? std::string("there is no answer set, and nothing to search")
                             : counted(count, "part") + " in " + line.jobs.folder);
    return printed(std::to_string(count) + '\n');
  });
  reporter.finish();
  end_progress();
  return status;
}

ExitStatus part(const CommandLine& line) {
  watch_the_run(line.search.seconds, line.messages);
  PlainReporter plain(line.messages);
  return with_reports(plain.reporter, line.search.clingo, [&] {
    dl::JobFolder jobs(line.jobs.folder);
    dl::expect_part(jobs, line.jobs.part);
    if (line.jobs.pieces != 0) return divide(line, jobs, plain.reporter);
    const dl::PartRun end =
        dl::run_part(jobs, line.jobs.part, line.search.clingo, line.jobs.hands_bound_on);
    const std::string name = part_in_words(line.jobs.part);
    if (end == dl::PartRun::kDone) {
      plain.reporter.note(name + " is done");
      return ExitStatus::kFound;
    }
    plain.reporter.note(interruption_in_words() + ": " + name + " is not done");
    return ExitStatus::kIncomplete;
  });
}

ExitStatus missing(const CommandLine& line) {
  PlainReporter plain(line.messages);
  return with_reports(plain.reporter, line.search.clingo, [&] {
    const dl::JobFolder jobs(line.jobs.folder);
    const std::vector<std::size_t> missing = dl::missing_parts(jobs);
    const std::string all = counted(jobs.order().size(), "part");
    plain.reporter.note(missing.empty()
                            ? std::string("no part is missing")
                            : std::to_string(missing.size()) + " of " + all +
                                  (missing.size() == 1 ? " is missing" : " are missing"));
    if (missing.empty()) return ExitStatus::kFound;
    return printed(dl::ranges(missing, ",", ",") + '\n');
  });
}

}    // namespace workbench
