#include "workbench/arguments/answer_arguments.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "workbench/answers/forms.h"
#include "workbench/arguments/option_checks.h"

namespace workbench {
namespace {

constexpr const char* kGroup = "Answers";

std::vector<Destination> checked(std::vector<Destination> destinations) {
  if (std::ranges::count(destinations, std::string(), &Destination::file) > 1)
    throw WrongUsage{"two forms for standard output: give one of them a file, with --output"};
  for (const auto& [form, file] : destinations) {
    if (!is_folder(file) || form == "csv") continue;
    std::string text(file);
    throw WrongUsage{((text += " is a folder, and ") += form) + " is one file: name that"};
  }
  return destinations;
}

// A file's form stands in front of it; with one of each, also behind. What is left of the forms is
// that of standard output.
std::vector<Destination> destinations_of(const CLI::App& app, const AnswerArguments& arguments) {
  std::vector<std::string> forms = arguments.forms;
  if (!arguments.difference.empty()) forms.emplace_back("diff");
  if (forms.size() == 1 && arguments.outputs.size() == 1)
    return checked({{forms[0], arguments.outputs[0]}});
  std::vector<Destination> destinations;
  auto form = arguments.forms.begin();
  auto file = arguments.outputs.begin();
  bool has_form = false;
  for (const CLI::Option* const option : app.parse_order()) {
    if (option->check_lname("format")) {
      destinations.push_back({*form++, ""});
      has_form = true;
    } else if (option->check_lname("diff")) {
      destinations.push_back({"diff", ""});
      has_form = true;
    } else if (option->check_lname("output")) {
      if (!has_form) destinations.push_back({form_for_file(*file), ""});
      destinations.back().file = *file++;
      has_form = false;
    }
  }
  if (destinations.empty()) destinations.push_back({arguments.standard_form, ""});
  return checked(std::move(destinations));
}

std::vector<ItemPattern> patterns_of(const std::vector<std::string>& filters) {
  std::vector<ItemPattern> patterns;
  for (const std::string& filter : filters) {
    ReadPatterns read = read_item_patterns(filter);
    if (!read.mistake.empty()) throw WrongUsage{read.mistake};
    std::ranges::move(read.patterns, std::back_inserter(patterns));
  }
  return patterns;
}

}    // namespace

void add_filter_option(CLI::App& app, AnswerArguments& arguments) {
  app.add_option("--filter", arguments.filters,
                 "Show only p or p/2 (relations), -p, [age] or ann[age] (attributes), :person "
                 "(members), C::D (subclasses), @parish (a space); with ! in front, leave out")
      ->type_name("PATTERN,...")
      ->allow_extra_args(false)
      ->group(kGroup);
}

void add_answer_options(CLI::App& app, AnswerOptions& answers, AnswerArguments& arguments) {
  add_filter_option(app, arguments);
  app.add_flag("--project", answers.projects,
               "Answer sets that differ only in what is hidden are one")
      ->group(kGroup);
  app.add_flag("--sort", answers.sorts, "Order what an answer set holds, by relation and value")
      ->group(kGroup);
  auto* const best =
      app.add_flag_callback(
             "--best", [&answers] { answers.shown_sets = 1; },
             "Show one answer set only, the best with weak constraints; count the others")
          ->group(kGroup);
  app.add_flag_callback(
         "--count", [&answers] { answers.shown_sets = 0; },
         "Show no answers, only how many there are")
      ->excludes(best)
      ->group(kGroup);
  app.add_option("--format", arguments.forms, "Form of the answers: " + listed(form_names()))
      ->check(one_of(form_names()))
      ->type_name("FORM")
      ->allow_extra_args(false)
      ->group(kGroup);
  app.add_option("--limit", answers.row_limit, "At most K rows of each table")
      ->check(whole_number(1, kGreatestCount))
      ->type_name("K")
      ->group(kGroup);
  app.add_flag("--diff{before}", arguments.difference,
               "The form diff: what each answer set has more and less than the one before; "
               "--diff=facts: than the program's facts")
      ->check(one_of({"before", "facts"}))
      ->group(kGroup);
  app.add_option("-o,--output", arguments.outputs,
                 "Write the answers to FILE, in the form of the --format in front of it or else "
                 "that of its ending; may be repeated")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->group(kGroup);
  const auto add_wrapping = [&app, &answers](const char* name, const char* what, Wrapping when) {
    return app
        .add_flag_callback(
            name, [&answers, when] { answers.wrapping = when; }, what)
        ->group(kGroup);
  };
  auto* const wrap = add_wrapping(
      "--wrap", "Wrap text to the width of the terminal, or 80 columns, and group it by relation",
      Wrapping::kAlways);
  add_wrapping("--no-wrap", "An answer set a line, on a terminal, too", Wrapping::kNever)
      ->excludes(wrap);
}

void add_graph_option(CLI::App& app, AnswerOptions& answers) {
  app.add_option("--graph", answers.picture.relations,
                 "Draw these relations and attributes only; : is membership, :: subclass")
      ->type_name("NAME,...")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->group("Pictures");
}

void add_report_option(CLI::App& app, AnswerArguments& arguments) {
  app.add_option("--report", arguments.reports, "Also write a page with all of the run to FILE")
      ->type_name("FILE.html")
      ->allow_extra_args(false)
      ->group("Pictures");
}

void read_answer_arguments(const CLI::App& app, const AnswerArguments& arguments,
                           AnswerOptions& answers) {
  answers.destinations = destinations_of(app, arguments);
  answers.differs_from_facts = arguments.difference == "facts";
  answers.filters = patterns_of(arguments.filters);
  for (const std::string& file : arguments.reports)
    answers.destinations.push_back({"report", file});
  std::erase(answers.picture.relations, "");
}

bool has_json_on_standard_output(const AnswerOptions& answers) {
  return std::ranges::any_of(answers.destinations, [](const Destination& destination) {
    return destination.form == "json" && destination.file.empty();
  });
}

}    // namespace workbench
