#pragma once
// answer_printer.h - answers on their way from a solver to the user.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/run.h"
#include "workbench/answers/answer_options.h"
#include "workbench/answers/answer_outputs.h"
#include "workbench/answers/answer_stages.h"
#include "workbench/answers/answer_text_reader.h"
#include "workbench/messages/reporter.h"

namespace workbench {

// Reads answers and hands them to the form that the user chose.
class AnswerPrinter {
 public:
  // All must outlive the printer; answers without a file go to the descriptor. Throws SearchFailure
  // where a form cannot be made.
  AnswerPrinter(const zarel::Run& run, const AnswerOptions& options, Reporter& reporter,
                int standard_output);

  // Tells before the first answer what the query's rows are values of; nothing for one without
  // variables.
  void expect_query(std::vector<std::string> variables);

  // Takes more of the solver's answers. Returns false when these cannot be read, or not be written:
  // then there is no use in a further search.
  bool print(std::string_view answers);
  // Takes an answer set, or nothing, that is better than those before and need not be a best one.
  void print_improving(std::string_view answer_set) { reader_.read_improving(answer_set); }
  // Nothing follows for the moment.
  bool settle();
  // More may follow, but not at once: what is whole goes out.
  bool flush();
  // Nothing follows; false where the last answer is not whole, too.
  bool end();
  // How the run ended, for forms that tell.
  void finish(const RunEnding& ending) { stages_.first().finish(ending); }

  void note_closed() { outputs_.note_closed(); }    // nobody reads what is printed
  const std::string& reading_error() const { return reader_.error(); }    // nothing for none
  std::optional<AnswerOutputs::Failure> failure() const { return outputs_.failure(); }
  std::optional<AnswerOutputs::Failure> put_files() { return outputs_.put_files(); }
  int descriptor() const { return outputs_.descriptor(); }
  const Found& found() const { return found_; }
  bool has_enough() const {
    return limit_ != 0 && found_.different == limit_;
  }    // of what is shown

 private:
  bool is_fine() const { return !failure() && reading_error().empty(); }

  FormSettings settings_;
  AnswerOutputs outputs_;
  const std::uint64_t limit_;    // of different answer sets; 0: none
  Found found_;
  AnswerStages stages_;
  AnswerTextReader reader_;
};

}    // namespace workbench
