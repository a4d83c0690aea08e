// join.cc - the answers of a search in parts.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <unistd.h>

#include "dl/failure.h"
#include "dl/model_reader.h"
#include "dl/parts/jobs.h"
#include "workbench/answers/forms.h"
#include "workbench/commands.h"
#include "workbench/jobs/printed_program.h"
#include "workbench/jobs/reported_jobs.h"
#include "workbench/messages/words.h"
#include "workbench/pictures/reported_program.h"
#include "workbench/progress/run_progress.h"
#include "workbench/search/printed_search.h"
#include "workbench/search/search_answers.h"
#include "workbench/search/solver_message.h"

namespace workbench {
namespace {

std::string missing_in_words(const std::vector<std::size_t>& missing) {
  std::string text(missing.size() == 1 ? "part " : "parts ");
  text += dl::ranges(missing, ", ", " and ");
  return text += missing.size() == 1 ? " is missing" : " are missing";
}

class Join {
 public:
  Join(const CommandLine& line, const dl::JobFolder& jobs, const dl::AnswerTables& tables,
       PrintedProgram& program)
      : line_(line),
        jobs_(jobs),
        tables_(tables),
        messages_(
            program.run(),
            [&program](std::uint32_t number) { return program.origin_of_line(number); },
            tables.program.sources) {}

  SearchResult run(AnswerPrinter& printer);
  void tell_figures(Reporter& reporter) const;

 private:
  bool take(std::string_view line, SearchAnswers& answers);

  const CommandLine& line_;
  const dl::JobFolder& jobs_;
  const dl::AnswerTables& tables_;
  SolverMessages messages_;
  dl::JoinFigures figures_;
  std::uint64_t sets_ = 0;    // that were taken
  bool is_enough_ = false;
  bool is_stopped_ = false;    // by the printer, to which more is of no use
};

// No more answer sets than are wanted are taken, but the final line is.
bool Join::take(std::string_view line, SearchAnswers& answers) {
  const std::uint64_t limit = jobs_.aim().has_query ? 0 : line_.search.answer_sets;
  if (limit != 0 && dl::kind_of_line(line) == dl::LineKind::kAnswerSet && sets_++ >= limit) {
    is_enough_ = true;
    return true;
  }
  answers.reader().read_line(line);
  is_stopped_ = answers.has_much() && !answers.print();
  return !is_stopped_;
}

SearchResult Join::run(AnswerPrinter& printer) {
  SearchResult result;
  SearchAnswers answers(tables_.program, tables_.reasoning, printer, result);
  try {
    figures_ = dl::join_parts(jobs_, line_.jobs.is_partial,
                              [&](std::string_view line) { return take(line, answers); });
    const bool is_whole = figures_.missing.empty() || is_stopped_;
    if (!is_whole) result.reason = missing_in_words(figures_.missing);
    result.judgement.end = !is_whole ? SearchEnd::kCut
                           : is_enough_ || is_stopped_ || figures_.may_have_more
                               ? SearchEnd::kEnough
                               : SearchEnd::kAll;
    if (!is_stopped_) answers.finish();
  } catch (const dl::Failure& failure) {
    answers.print();    // what was found stands in front
    SearchFailure told{messages_.message(failure.diagnostic)};
    if (failure.diagnostic.code == zarel::Code::kJobFolder) {
      told.message.help = "zrl missing " + line_.jobs.folder +
                          " tells what is left to be run; --partial joins what is there";
    }
    throw told;
  }
  return result;
}

void Join::tell_figures(Reporter& reporter) const {
  reporter.note(counted(figures_.parts, "part") + ", " + counted(figures_.found, "answer set") +
                " in them");
  char text[96];
  std::snprintf(text, sizeof text, "%.1f s of cores, the longest part %zu: %.1f s",
                figures_.seconds, figures_.longest_part, figures_.longest);
  reporter.note(text);
}

// What depends on the search that was cut.
AnswerOptions answer_options(const CommandLine& line, const dl::SearchAim& aim,
                             const PrintedProgram& program, const ReportedProgram& reported) {
  AnswerOptions answers = line.answers;
  answers.reported = &reported;
  answers.has_one_set = answers.has_one_set || aim.limit == 1;
  if (line.search.answer_sets == 0) {
    answers.picture.sets = std::max<std::uint64_t>(aim.limit, 1);
  }
  answers.hidden_ranges = program.ranges();
  return answers;
}

}    // namespace

ExitStatus join(const CommandLine& line) {
  begin_progress(ProgressLine::kNone);
  const zarel::FileTable no_files;
  SourceTexts no_texts(no_files);
  std::ostream& out = line.answers.has_messages ? std::cout : std::cerr;
  Reporter without_texts(line.messages, no_texts, out);
  const ExitStatus status = with_reports(without_texts, line.search.clingo, [&] {
    const dl::JobFolder jobs(line.jobs.folder);
    const dl::AnswerTables tables = jobs.tables();
    PrintedProgram program(tables.host);
    if (line.answers.differs_from_facts && !program.leaves_out_facts()) {
      throw SearchFailure{{"form-misfit",
                           {},
                           "--diff=facts needs a search without the facts, and this has them",
                           {},
                           {},
                           "cut it with zrl split --no-facts"}};
    }
    SourceTexts texts(program.run().files);
    Reporter reporter(line.messages, texts, out);
    Join joined(line, jobs, tables, program);
    const auto tell_more = [&](const SearchResult&, bool has_no_answer_set) {
      if (has_no_answer_set) reporter.note(kConflictHint);
      if (line.search.tells_statistics) joined.tell_figures(reporter);
    };
    const ReportedProgram reported{no_files, no_texts};    // a page of the answers alone
    return print_search(
        program.run(), answer_options(line, jobs.aim(), program, reported), reporter,
        {STDOUT_FILENO, [&joined](AnswerPrinter& printer) { return joined.run(printer); },
         tell_more});
  });
  return std::cout ? status : ExitStatus::kOutputFailed;
}

}    // namespace workbench
