#pragma once
// answer_arguments.h - the options that say which answers are shown, how, and where.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "workbench/answers/answer_options.h"

namespace workbench {

// As they are written.
struct AnswerArguments {
  std::vector<std::string> filters;
  std::vector<std::string> forms;      // --format
  std::vector<std::string> outputs;    // --output
  std::string difference;              // --diff: to what
  std::vector<std::string> reports;    // --report
  std::string standard_form = "text";
};

void add_filter_option(CLI::App& app, AnswerArguments& arguments);
void add_answer_options(CLI::App& app, AnswerOptions& answers, AnswerArguments& arguments);
void add_graph_option(CLI::App& app, AnswerOptions& answers);
void add_report_option(CLI::App& app, AnswerArguments& arguments);

// What they mean together; `app` knows their order. Throws WrongUsage.
void read_answer_arguments(const CLI::App& app, const AnswerArguments& arguments,
                           AnswerOptions& answers);

bool has_json_on_standard_output(const AnswerOptions& answers);

}    // namespace workbench
