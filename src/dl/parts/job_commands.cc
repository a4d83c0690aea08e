#include "dl/parts/job_commands.h"

#include <cstdio>
#include <utility>

#include "dl/answer_reader.h"
#include "dl/clingo_failure.h"
#include "dl/failure.h"
#include "dl/interruption.h"
#include "dl/parts/crew.h"
#include "dl/parts/jobs.h"
#include "dl/read_files.h"

namespace dl {
namespace {

void say(const SearchOutput& output, std::size_t count, std::string_view what) {
  std::string text = std::to_string(count);
  (text += ' ') += what;
  output.said(text);
}

// Translates the program and makes the folder.
void split(const Options& options, const SearchOutput& output, Translated& program) {
  JobFolder::expect_unused(options.jobs);
  std::string translation;
  AnswerTables tables;
  SearchPlan plan;
  {
    Program surveyed = survey_files(options.files);
    if (!surveyed.has_failed()) plan = plan_search(options, traits_of(surveyed, options));
    program = translate(std::move(surveyed), options,
                        [&](std::string_view piece) { translation += piece; });
  }
  if (program.mistake) throw Failure{*program.mistake};
  translation += program.text;
  tables.reasoning = options.reasoning;
  tables.program.sources = program.sources;
  tables.program.parts = program.parts;
  try {
    const std::size_t count = make_jobs(options.jobs, plan, translation, tables);
    output.answers(std::to_string(count) + '\n');
  } catch (const FailedWorker& failed) {
    fail_search(failed.end, {options.clingo, program, translation});
  }
}

bool join(const Options& options, const SearchOutput& output, Translated& program) {
  const JobFolder jobs(options.jobs);
  AnswerTables tables = jobs.tables();
  program = std::move(tables.program);
  AnswerReader answers(program, tables.reasoning);
  constexpr std::size_t kPiece = std::size_t{1} << 16;
  const auto take = [&](std::string_view line) {
    answers.read_line(line);
    if (answers.text().size() < kPiece) return true;
    output.answers(answers.text());
    answers.text().clear();
    return true;
  };
  const JoinFigures figures = join_parts(jobs, options.is_partial, take);
  const bool is_whole = figures.missing.empty();
  const bool is_unproven =
      answers.finish(is_whole ? Search::kComplete : Search::kCut, output.notes);
  output.answers(answers.text());
  if (options.shows_costs) {
    say(output, figures.parts, figures.parts == 1 ? "part" : "parts");
    say(output, figures.found, "answer sets in the parts");
    char text[96];
    std::snprintf(text, sizeof text, "%.1f s of cores, the longest part %zu: %.1f s",
                  figures.seconds, figures.longest_part, figures.longest);
    output.said(text);
  }
  if (is_whole) return true;
  std::string text(figures.missing.size() == 1 ? "part " : "parts ");
  text += ranges(figures.missing, ", ", " and ");
  text += figures.missing.size() == 1 ? " is missing; " : " are missing; ";
  text += is_unproven ? "the best answer set so far is not proven to be optimal"
                      : "there may be more answers";
  output.said(text);
  return false;
}

}    // namespace

bool do_job(const Options& options, const SearchOutput& output, Translated& program) {
  try {
    switch (options.job) {
      case JobCommand::kNone:
        return true;
      case JobCommand::kSplit:
        split(options, output, program);
        return true;
      case JobCommand::kPart: {
        const JobFolder jobs(options.jobs);
        expect_part(jobs, options.part);
        if (run_part(jobs, options.part, options.clingo, options.hands_bound_on) == PartRun::kDone)
          return true;
        output.said(std::string(interruption_text()) + "; the part is not done");
        return false;
      }
      case JobCommand::kDivide: {
        JobFolder jobs(options.jobs);
        expect_part(jobs, options.part);
        const std::vector<std::size_t> pieces =
            divide_part(jobs, options.part, options.parts, options.clingo);
        output.answers(ranges(pieces, ",", ",") + '\n');
        return true;
      }
      case JobCommand::kMissing: {
        const std::vector<std::size_t> missing = missing_parts(JobFolder(options.jobs));
        if (!missing.empty()) output.answers(ranges(missing, ",", ",") + '\n');
        return true;
      }
      case JobCommand::kJoin:
        return join(options, output, program);
    }
  } catch (const FailedWorker& failed) {
    fail_search(failed.end, {options.clingo, program, {}});
  }
  return true;
}

}    // namespace dl
