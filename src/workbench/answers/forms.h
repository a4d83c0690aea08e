#pragma once
// forms.h - the forms in which answers are written. A new one is a file like text_form.cc, its line
// here, and its row in forms.cc.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "workbench/answers/answer_consumer.h"
#include "workbench/answers/answer_options.h"
#include "workbench/answers/output_folder.h"

namespace workbench {

// What of the program and of the terminal the forms look at. All outlives the form.
struct FormSettings {
  const zarel::NamespaceTable* namespaces = nullptr;    // whose prefixes are shown; null: none are
  std::vector<std::string> query_variables = {};        // in the order of a row's values
  bool has_one_set = false;                             // at most one answer set is asked for
  Wrapping wrapping = Wrapping::kOnTerminals;
  const std::ostream* terminal = nullptr;    // the stream that goes to one; null for none
  std::size_t terminal_width = 0;
  std::size_t limit = 0;              // of a table's rows; 0: none
  bool differs_from_facts = false;    // a difference is not one to the answer set before
  bool counts_only = false;           // answers do not come; finish() tells how many there are
  PictureOptions picture = {};
  const ReportedProgram* reported = nullptr;    // null: there is no report
  std::function<void(std::string_view)> note = [](std::string_view) {};    // says a line of the run
};

// Thrown by forms that cannot hold the answers.
struct AnswersRefused {
  std::string text, help;
};

// The forms that --format knows, in the order of its help.
std::vector<std::string> form_names();

// The form that the ending of a file's name asks for; "csv" for a folder, "text" where it
// says nothing.
std::string form_for_file(std::string_view file);

// The form of that name, one of form_names(). It writes to the stream, where it keeps nothing back
// behind flush(), but for pictures, which are written as a whole. Throws SearchFailure where another
// program is missing that it needs.
std::unique_ptr<AnswerConsumer> make_form(std::string_view name, std::ostream& out,
                                          const FormSettings& settings);

std::unique_ptr<AnswerConsumer> make_text_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_wrapped_text_form(std::ostream& out, std::size_t columns);
std::unique_ptr<AnswerConsumer> make_lines_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_json_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_facts_form(std::ostream& out, const FormSettings& settings);
// One table on the stream, or a file for each in the folder.
std::unique_ptr<AnswerConsumer> make_csv_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_csv_form(OutputFolder& folder, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_table_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_diff_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_dot_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_svg_form(std::ostream& out, const FormSettings& settings);
std::unique_ptr<AnswerConsumer> make_report_form(std::ostream& out, const FormSettings& settings);

}    // namespace workbench
