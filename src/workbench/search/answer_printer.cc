#include "workbench/search/answer_printer.h"

#include <utility>

#include "workbench/answers/terminal_width.h"

namespace workbench {
namespace {

// Prefixes that the program does not use are not shown.
const zarel::NamespaceTable* shown_namespaces(const zarel::Run& run) {
  return run.prefix_was_used ? &run.namespaces : nullptr;
}

FormSettings form_settings(const zarel::Run& run, const AnswerOptions& options,
                           Reporter& reporter) {
  FormSettings settings;
  settings.namespaces = shown_namespaces(run);
  settings.has_one_set = options.has_one_set;
  settings.wrapping = options.wrapping;
  settings.limit = options.row_limit;
  settings.differs_from_facts = options.differs_from_facts;
  settings.counts_only = options.shown_sets == 0;
  settings.picture = options.picture;
  settings.reported = options.reported;
  settings.note = [&reporter](std::string_view text) { reporter.note(text); };
  return settings;
}

}    // namespace

AnswerPrinter::AnswerPrinter(const zarel::Run& run, const AnswerOptions& options,
                             Reporter& reporter, int standard_output)
    : settings_(form_settings(run, options, reporter)),
      outputs_(options.destinations, settings_, standard_output),
      limit_(options.different_sets),
      stages_(outputs_, options, found_),
      reader_(stages_.first(), settings_.namespaces) {
  settings_.terminal_width = terminal_width(outputs_.descriptor());
  if (settings_.terminal_width != 0) settings_.terminal = outputs_.standard_stream();
}

void AnswerPrinter::expect_query(std::vector<std::string> variables) {
  reader_.expect_truth_value(variables.empty());
  settings_.query_variables = std::move(variables);
}

bool AnswerPrinter::print(std::string_view answers) {
  reader_.read(answers);
  return is_fine();
}

bool AnswerPrinter::settle() {
  reader_.settle();
  return flush();
}

bool AnswerPrinter::flush() {
  stages_.first().flush();
  return is_fine();
}

bool AnswerPrinter::end() {
  reader_.finish();
  return flush();
}

}    // namespace workbench
