#pragma once
// clingo_run.h - one search: clingo is started, fed, listened to and judged.

#include <string>
#include <string_view>
#include <vector>

#include "dl/answer_writer.h"
#include "dl/clingo_process.h"
#include "dl/line_map.h"
#include "dl/model_reader.h"
#include "dl/options.h"
#include "dl/program_parts.h"
#include "dl/rule_text.h"

namespace dl {

class ClingoRun {
 public:
  ClingoRun(const Options& options, const ProgramParts& parts, const LineMap& lines)
      : options_(options), parts_(parts), lines_(lines) {}

  // Starts clingo, and from now on gives it the translation while that is made: reading takes it
  // longer than translating takes us. A mistake that is found later ends it before it has said
  // anything, as it reads all before it solves. The run must outlive the translation.
  void read_along(Translation& translation);

  // Gives clingo what it does not have yet, prints the answers as they come, and returns dl's exit
  // status. The text is taken away once clingo has it. Throws Failure when the search failed. One
  // that was interrupted shows what was found.
  int solve(std::string& program);

 private:
  std::vector<std::string> arguments() const;
  void give(std::string_view text);
  void read_line(std::string_view line);
  void read_answer(std::string_view line);
  void print_held();
  bool has_brave_answer() const;
  void print_query();
  void flush();
  int judge(bool complete_lines);
  [[noreturn]] void fail(const ProcessEnd& end) const;
  std::string clingo_error(std::string_view errors) const;
  std::optional<std::size_t> sum_at_fault() const;
  void check_fault(std::optional<std::size_t> fault) const;

  const Options& options_;
  const ProgramParts& parts_;
  const LineMap& lines_;
  ClingoProcess process_;
  std::string given_;     // all that clingo was given, where sums are watched
  std::string output_;    // for standard output
  AnswerSet answer_;
  Costs costs_;
  std::string consequences_;    // the query's last line
  LineKind status_ = LineKind::kOther;
  bool has_held_ = false;    // an answer set that may not be optimal
  bool has_consequences_ = false;
};

}    // namespace dl
