#include "workbench/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "dl/options.h"
#include "dl/search_plan.h"
#include "workbench/answers/forms.h"
#include "workbench/messages/catalogue.h"
#include "workbench/messages/nearest.h"

namespace workbench {
namespace {

constexpr std::uint64_t kMostThreads = 64;    // clingo's own limit
constexpr std::uint64_t kGreatestInteger = 2147483647;
constexpr std::uint64_t kGreatestSeed = 4294967295;

std::string version_text() {
  std::string text("zrl " ZAREL_VERSION ", tested with clingo ");
  return (text += dl::kTestedClingo) += '\n';
}

// Names and values alone: what they may be is said in the texts.
class ShortFormatter : public CLI::Formatter {
 public:
  std::string make_option_name(const CLI::Option* option, bool is_positional) const override {
    const std::string name = CLI::Formatter::make_option_name(option, is_positional);
    return name.substr(0, name.find('{'));    // where a value that need not be given is named
  }
  std::string make_option_opts(const CLI::Option* option) const override {
    return option->get_type_size() == 0 ? "" : ' ' + option->get_type_name();
  }
};

// What is wrong with the command line.
struct WrongUsage {
  std::string text;
};

// Options whose values still have to be looked at together.
struct RawOptions {
  std::vector<std::string> switches;    // of -W
  std::vector<std::string> filters;
  std::string colour = "auto";
  std::string message_form = "text";
  std::vector<std::string> forms;      // --format
  std::vector<std::string> outputs;    // --output
  std::string difference;              // --diff: to what
  std::vector<std::string> reports;    // --report
  std::string standard_form = "text";
  std::string parts;    // a number, or "auto"
  bool is_brave = false;
  bool is_cautious = false;
};

constexpr std::uint64_t kGreatestCount = 1'000'000'000'000'000'000;

CLI::Validator whole_number(std::uint64_t least, std::uint64_t most) {
  const auto check = [least, most](const std::string& text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool is_whole = error == std::errc() && end == text.data() + text.size();
    if (is_whole && value >= least && value <= most) return std::string();
    std::string wanted = "a whole number";
    if (least != 0) (wanted += " from ") += std::to_string(least);
    if (most != kGreatestCount) (wanted += least != 0 ? " to " : " up to ") += std::to_string(most);
    return wanted + " is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

CLI::Validator seconds() {
  const auto check = [](const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const bool is_number = !text.empty() && *end == '\0' && std::isfinite(value);
    return is_number && value > 0 ? std::string() : "seconds are needed, not " + text;
  };
  return CLI::Validator(check, "");
}

std::string listed(const std::vector<std::string>& words) {
  std::string list;
  for (const std::string& word : words) (list += list.empty() ? "" : ", ") += word;
  return list;
}

CLI::Validator one_of(std::vector<std::string> words) {
  const auto check = [words = std::move(words)](const std::string& text) {
    if (std::ranges::find(words, text) != words.end()) return std::string();
    return "one of " + listed(words) + " is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

CLI::Validator configuration() {
  const auto check = [](const std::string& text) {
    return dl::is_configuration(text)
               ? std::string()
               : "one of " + dl::configuration_list() + " is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

CLI::Validator part_count() {
  const CLI::Validator number = whole_number(1, dl::kMostParts);
  const auto check = [number](std::string text) {
    const bool is_fine = text == "auto" || number(text).empty();
    return is_fine ? std::string() : "auto or a number up to 1000000 is needed, not " + text;
  };
  return CLI::Validator(check, "");
}

void add_reading_options(CLI::App& app, CommandLine& line) {
  app.add_option("FILE", line.files, "Files of the program; - is standard input");
  app.add_option("-I,--include-dir", line.folders, "Look for files in DIR, too")
      ->type_name("DIR")
      ->allow_extra_args(false);
  app.add_flag_callback(
      "--literal-templates", [&line] { line.links_templates = false; },
      "Templates see no relation but those of their own text");
}

void add_message_options(CLI::App& app, CommandLine& line, RawOptions& raw) {
  constexpr const char* kGroup = "Messages";
  app.add_option("-W", raw.switches,
                 "CODE shows a warning, no-CODE hides it, error=CODE makes it an error")
      ->type_name("SWITCH")
      ->allow_extra_args(false)
      ->group(kGroup);
  app.add_flag("--strict", line.messages.is_strict, "Warnings count as errors")->group(kGroup);
  app.add_flag("-q,--quiet", line.messages.is_quiet, "Say nothing but errors and warnings")
      ->group(kGroup);
  app.add_option("--messages", raw.message_form,
                 "Form of messages: text, or json, an object a line")
      ->check(one_of({"text", "json"}))
      ->type_name("FORM")
      ->group(kGroup);
  app.add_option("--colour,--color", raw.colour, "When messages are coloured: auto, always, never")
      ->check(one_of({"auto", "always", "never"}))
      ->type_name("WHEN")
      ->group(kGroup);
}

void add_bound_option(CLI::App& app, SearchOptions& search) {
  app.add_option("--maxint", search.maxint, "Integers go up to N, whatever #maxint says")
      ->check(whole_number(0, kGreatestInteger))
      ->type_name("N")
      ->group("Search");
}

void add_filter_option(CLI::App& app, RawOptions& raw) {
  app.add_option("--filter", raw.filters,
                 "Show only p or p/2 (relations), -p, [age] or ann[age] (attributes), :person "
                 "(members), C::D (subclasses), @parish (a space); with ! in front, leave out")
      ->type_name("PATTERN,...")
      ->allow_extra_args(false)
      ->group("Answers");
}

void add_answer_options(CLI::App& app, CommandLine& line, RawOptions& raw) {
  constexpr const char* kGroup = "Answers";
  add_filter_option(app, raw);
  app.add_flag("--project", line.answers.projects,
               "Answer sets that differ only in what is hidden are one")
      ->group(kGroup);
  app.add_flag("--sort", line.answers.sorts,
               "Order what an answer set holds, by relation and value")
      ->group(kGroup);
  app.add_flag("--improving", line.search.shows_improving,
               "With weak constraints, show each better answer set as it is found")
      ->group(kGroup);
  auto* const best =
      app.add_flag_callback(
             "--best", [&line] { line.answers.shown_sets = 1; },
             "Show one answer set only, the best with weak constraints; count the others")
          ->group(kGroup);
  app.add_flag_callback(
         "--count", [&line] { line.answers.shown_sets = 0; },
         "Show no answers, only how many there are")
      ->excludes(best)
      ->group(kGroup);
  app.add_option("--format", raw.forms, "Form of the answers: " + listed(form_names()))
      ->check(one_of(form_names()))
      ->type_name("FORM")
      ->allow_extra_args(false)
      ->group(kGroup);
  app.add_option("--limit", line.answers.row_limit, "At most K rows of each table")
      ->check(whole_number(1, kGreatestCount))
      ->type_name("K")
      ->group(kGroup);
  app.add_flag("--diff{before}", raw.difference,
               "The form diff: what each answer set has more and less than the one before; "
               "--diff=facts: than the program's facts")
      ->check(one_of({"before", "facts"}))
      ->group(kGroup);
  app.add_option("-o,--output", raw.outputs,
                 "Write the answers to FILE, in the form of the --format in front of it or else "
                 "that of its ending; may be repeated")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->group("Answers");
  const auto add_wrapping = [&app, &answers = line.answers](const char* name, const char* what,
                                                            Wrapping when) {
    return app
        .add_flag_callback(
            name, [&answers, when] { answers.wrapping = when; }, what)
        ->group("Answers");
  };
  auto* const wrap = add_wrapping(
      "--wrap", "Wrap text to the width of the terminal, or 80 columns, and group it by relation",
      Wrapping::kAlways);
  add_wrapping("--no-wrap", "An answer set a line, on a terminal, too", Wrapping::kNever)
      ->excludes(wrap);
}

void add_picture_options(CLI::App& app, AnswerOptions& answers, RawOptions& raw) {
  constexpr const char* kGroup = "Pictures";
  app.add_option("--graph", answers.picture.relations,
                 "Draw these relations and attributes only; : is membership, :: subclass")
      ->type_name("NAME,...")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->group(kGroup);
  app.add_option("--report", raw.reports, "Also write a page with all of the run to FILE")
      ->type_name("FILE.html")
      ->allow_extra_args(false)
      ->group(kGroup);
}

void add_clingo_options(CLI::App& app, SearchOptions& search) {
  constexpr const char* kGroup = "Search";
  app.add_option("-t,--time-limit", search.seconds, "End after S seconds, with what was found")
      ->check(seconds())
      ->type_name("S")
      ->group(kGroup);
  app.add_option("--threads", search.threads, "Search with K threads")
      ->check(whole_number(1, kMostThreads))
      ->type_name("K")
      ->group(kGroup);
  app.add_option("--seed", search.seed, "Search in another order")
      ->check(whole_number(0, kGreatestSeed))
      ->type_name("N")
      ->group(kGroup);
  app.add_option("--clingo", search.clingo, "The clingo that searches")
      ->type_name("PATH")
      ->group(kGroup);
}

void add_search_options(CLI::App& app, SearchOptions& search, RawOptions& raw) {
  constexpr const char* kGroup = "Search";
  add_bound_option(app, search);
  app.add_option("-n,--answer-sets", search.answer_sets,
                 "At most K answer sets; 0, the default: all")
      ->check(whole_number(0, kGreatestCount))
      ->type_name("K")
      ->group("Answers");
  app.add_flag("--no-facts", search.leaves_out_facts, "Leave out what the program states as facts")
      ->group("Answers");
  auto* const cautious = app.add_flag("--cautious", raw.is_cautious,
                                      "A query holds if it does in every answer set (the default)")
                             ->group("Answers");
  app.add_flag("--brave", raw.is_brave, "A query holds if it does in some answer set")
      ->excludes(cautious)
      ->group("Answers");
  add_clingo_options(app, search);
  app.add_option("--configuration", search.configuration,
                 "How clingo searches: auto, frumpy, jumpy, tweety, handy, crafty, trendy or many; "
                 "race tries several at once, and the first to finish wins")
      ->check(configuration())
      ->type_name("NAME")
      ->group(kGroup);
  app.add_option("--parts", raw.parts,
                 "Cut the search into K parts or some more, which run on all cores; auto: if it "
                 "takes long")
      ->check(part_count())
      ->type_name("K")
      ->group(kGroup);
  app.add_option("--solver", search.solver,
                 "Another solver of the language of dl, in place of clingo")
      ->type_name("PATH")
      ->group(kGroup);
  app.add_flag("--stats", search.tells_statistics,
               "Tell afterwards what each phase took, and clingo's own figures")
      ->group(kGroup);
  app.add_flag("--profile", search.tells_profile,
               "Tell afterwards which rules have most ground instances")
      ->group(kGroup);
  app.add_option("--keep", search.keep_folder, "Keep what the stages hand on as files in DIR")
      ->type_name("DIR")
      ->group(kGroup);
}

// The names by which an option of the command can be called.
std::vector<std::string> option_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::string with_hint(std::string text, std::string_view meant) {
  if (!meant.empty()) ((text += "; did you mean ") += meant) += '?';
  return text;
}

std::string_view nearest_of(std::string_view word, const std::vector<std::string>& names) {
  const std::vector<std::string_view> views(names.begin(), names.end());
  return nearest(word, views);
}

// Values of known options are gone from what remains.
void refuse_unknown_options(const CLI::App& app) {
  for (const std::string& rest : app.remaining()) {
    if (rest == "--") continue;
    const std::string name = rest.substr(0, rest.find('='));
    std::string text = "unknown option ";
    throw WrongUsage{with_hint(text += name, nearest_of(name, option_names(app)))};
  }
}

void refuse_unknown_code(const std::string& code) {
  if (page_of(code) != nullptr) return;
  std::vector<std::string_view> codes;
  for (const Page& page : pages()) codes.push_back(page.code);
  std::string text = "there is no message with the code ";
  throw WrongUsage{with_hint(text += code, nearest(code, codes))};
}

void read_switch(const std::string& value, MessageOptions& messages) {
  constexpr std::string_view kOff = "no-";
  constexpr std::string_view kError = "error=";
  if (value == "error") {
    messages.is_strict = true;
    return;
  }
  auto* set = &messages.on;
  std::string code = value;
  if (value.starts_with(kError)) {
    set = &messages.as_errors;
    code = value.substr(kError.size());
  } else if (value.starts_with(kOff) && page_of(value) == nullptr) {
    set = &messages.off;
    code = value.substr(kOff.size());
  }
  refuse_unknown_code(code);
  set->insert(code);
}

bool is_set(const char* variable) {
  const char* const value = std::getenv(variable);    // NOLINT(concurrency-mt-unsafe): no threads
  return value != nullptr && *value != '\0';
}

// As https://no-color.org and https://bixense.com/clicolors have it.
bool wants_colour(const std::string& when) {
  if (when != "auto") return when == "always";
  if (is_set("NO_COLOR")) return false;
  return is_set("CLICOLOR_FORCE") || ::isatty(STDERR_FILENO) != 0;
}

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
std::vector<Destination> destinations_of(const CLI::App& app, const RawOptions& raw) {
  std::vector<std::string> forms = raw.forms;
  if (!raw.difference.empty()) forms.emplace_back("diff");
  if (forms.size() == 1 && raw.outputs.size() == 1) return checked({{forms[0], raw.outputs[0]}});
  std::vector<Destination> destinations;
  auto form = raw.forms.begin();
  auto file = raw.outputs.begin();
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
  if (destinations.empty()) destinations.push_back({raw.standard_form, ""});
  return checked(std::move(destinations));
}
bool has_json_on_standard_output(const AnswerOptions& answers) {
  return std::ranges::any_of(answers.destinations, [](const Destination& destination) {
    return destination.form == "json" && destination.file.empty();
  });
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

// A search can be divided in one way only, and by clingo alone.
void finish_parts(SearchOptions& search, const RawOptions& raw) {
  if (raw.parts == "auto") {
    search.cuts = dl::Cuts::kAuto;
  } else if (!raw.parts.empty()) {
    search.cuts = dl::Cuts::kLocal;
    search.parts = std::stoull(raw.parts);
  }
  const bool is_race = search.configuration == dl::kRaceWord;
  if (search.cuts == dl::Cuts::kNone && !is_race) return;
  const std::string option = is_race ? "--configuration race" : "--parts";
  if (is_race && search.cuts != dl::Cuts::kNone)
    throw WrongUsage{"--configuration race and --parts do not go together"};
  if (!search.solver.empty()) throw WrongUsage{option + " needs clingo: leave out --solver"};
  if (search.shows_improving) throw WrongUsage{option + " and --improving do not go together"};
}

void finish(CommandLine& line, const CLI::App& app, const RawOptions& raw) {
  line.answers.destinations = destinations_of(app, raw);
  if (!raw.forms.empty()) line.why.form = raw.forms.back();
  line.answers.has_one_set = line.search.answer_sets == 1;
  for (const std::string& value : raw.switches) read_switch(value, line.messages);
  line.messages.as_json = raw.message_form == "json";
  line.answers.has_messages = line.messages.as_json && has_json_on_standard_output(line.answers);
  line.messages.in_colour = wants_colour(raw.colour);
  if (raw.is_brave) line.search.consequences = Consequences::kBrave;
  if (raw.is_brave || raw.is_cautious) {
    line.search.consequences_option = raw.is_brave ? "--brave" : "--cautious";
  }
  if (line.search.shows_improving && !line.search.solver.empty())
    throw WrongUsage{"--improving needs clingo: leave out --solver"};
  finish_parts(line.search, raw);
  if (raw.difference == "facts") {
    line.answers.differs_from_facts = line.search.leaves_out_facts = true;
  }
  line.answers.filters = patterns_of(raw.filters);
  if (line.answers.projects) {    // what is found is not what is wanted
    line.answers.different_sets = std::exchange(line.search.answer_sets, 0);
  }
  for (const std::string& file : raw.reports) {
    line.answers.destinations.push_back({"report", file});
  }
  std::erase(line.answers.picture.relations, "");
  line.answers.picture.sets = std::max<std::uint64_t>(line.search.answer_sets, 1);
}

void look_at_files(CommandLine& line) {
  if (std::ranges::count(line.files, "-") > 1) {
    throw WrongUsage{"standard input can be read only once"};
  }
  if (!line.files.empty()) return;
  if (::isatty(STDIN_FILENO) != 0) throw WrongUsage{"no file is named (zrl --help tells how)"};
  line.files.emplace_back("-");
}

void define_run(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kRun;
  add_reading_options(app, line);
  add_answer_options(app, line, raw);
  add_picture_options(app, line.answers, raw);
  add_search_options(app, line.search, raw);
  add_message_options(app, line, raw);
}

void define_check(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kCheck;
  add_reading_options(app, line);
  add_bound_option(app, line.search);
  add_filter_option(app, raw);
  add_message_options(app, line, raw);
}

void define_expand(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kExpand;
  add_reading_options(app, line);
  app.add_flag_callback(
      "--no-origins", [&line] { line.shows_origins = false; },
      "Only the program, without comments");
  add_message_options(app, line, raw);
}

void define_show(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kShow;
  app.add_option("WHAT", line.shown, "classes, calls (of templates) or predicates")
      ->required()
      ->check(one_of({"classes", "calls", "predicates"}));
  add_reading_options(app, line);
  app.add_option("--format", raw.forms, "Form of the picture: dot, svg")
      ->check(one_of({"dot", "svg"}))
      ->type_name("FORM")
      ->expected(1)
      ->group("Answers");
  app.add_option("-o,--output", raw.outputs, "Write the picture to FILE")
      ->type_name("FILE")
      ->expected(1)
      ->group("Answers");
  raw.standard_form = "dot";
  add_message_options(app, line, raw);
}

void add_why_options(CLI::App& app, CommandLine& line, RawOptions& raw) {
  constexpr const char* kGroup = "Explanations";
  add_reading_options(app, line);
  app.add_option("-n,--answer-set", line.why.number, "Look at the K-th answer set")
      ->check(whole_number(1, kGreatestCount))
      ->type_name("K")
      ->group(kGroup);
  app.add_option("--with", line.why.with, "Look at one that holds the atom; may be repeated")
      ->type_name("ATOM")
      ->allow_extra_args(false)
      ->group(kGroup);
  add_bound_option(app, line.search);
  add_clingo_options(app, line.search);
  add_message_options(app, line, raw);
}

void add_why_form(CLI::App& app, RawOptions& raw, const std::vector<std::string>& forms) {
  app.add_option("--format", raw.forms, "Form of the explanation: " + listed(forms))
      ->check(one_of(forms))
      ->type_name("FORM")
      ->allow_extra_args(false)
      ->group("Explanations");
}

void define_why(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kWhy;
  app.add_option("ATOM", line.why.atom,
                 "What is explained: p(a), mary[age -> 30], p(X) for the first ten; ?(a) for a row "
                 "of the query, ? for all")
      ->required();
  add_why_options(app, line, raw);
  app.add_option("--filter", raw.filters, "Prove only what the patterns of zrl run show")
      ->type_name("PATTERN,...")
      ->allow_extra_args(false)
      ->group("Explanations");
  app.add_option("--depth", line.why.depth,
                 "Prove K atoms one below the other; 0: all, which is usual for json, else 8")
      ->check(whole_number(0, kGreatestInteger))
      ->type_name("K")
      ->group("Explanations");
  add_why_form(app, raw, {"text", "json", "dot"});
}

void define_whynot(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kWhyNot;
  app.add_option("ATOM", line.why.atom, "What does not hold: p(a), mary[age -> 30]")->required();
  add_why_options(app, line, raw);
  add_why_form(app, raw, {"text", "json"});
}

void define_conflict(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kConflict;
  add_reading_options(app, line);
  app.add_option("--with", line.why.with, "Why there is none that holds the atom; may be repeated")
      ->type_name("ATOM")
      ->allow_extra_args(false)
      ->group("Explanations");
  add_why_form(app, raw, {"text", "json"});
  add_bound_option(app, line.search);
  add_clingo_options(app, line.search);
  add_message_options(app, line, raw);
}

void define_cost(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kCost;
  add_why_options(app, line, raw);
  add_why_form(app, raw, {"text", "json"});
}

void define_explain(CLI::App& app, CommandLine& line, RawOptions& /*raw*/) {
  line.command = Command::kExplain;
  app.add_option("CODE", line.codes, "Codes of messages; without one, all are listed");
  app.add_flag("--markdown", line.writes_whole_catalogue)->group("");    // hidden
}

struct CommandRow {
  std::string_view name, what;
  void (*define)(CLI::App& app, CommandLine& line, RawOptions& raw);
};

constexpr std::array kCommands{
    CommandRow{"run", "Solves a program and prints its answers.", define_run},
    CommandRow{"check", "Says what is wrong with a program, without solving it.", define_check},
    CommandRow{"expand",
               "Prints the program as the solver reads it, and what each line comes from.",
               define_expand},
    CommandRow{"show", "Draws what a program consists of, without solving it.", define_show},
    CommandRow{"why", "Explains why an answer set holds an atom, by facts and rules.", define_why},
    CommandRow{"whynot", "Explains why an answer set does not hold an atom.", define_whynot},
    CommandRow{"conflict", "Explains why a program has no answer set.", define_conflict},
    CommandRow{"cost", "Explains what a best answer set pays, and what avoiding it would cost.",
               define_cost},
    CommandRow{"explain", "Prints the page of a message: what it means and how it is mended.",
               define_explain},
};

const CommandRow* command_of(std::string_view name) {
  const auto* const found = std::ranges::find(kCommands, name, &CommandRow::name);
  return found == kCommands.end() ? nullptr : found;
}

constexpr std::string_view kHelp =
    R"(zrl models knowledge: rules, frames, templates in, answer sets out.

  zrl [run] [OPTIONS] FILE...    solve and print
  zrl check FILE...              say what is wrong, without solving
  zrl expand FILE...             print the program as the solver reads it
  zrl show WHAT FILE...          draw its classes, calls (of templates) or predicates
  zrl why ATOM FILE...           explain why an answer set holds the atom
  zrl whynot ATOM FILE...        explain why it does not
  zrl conflict FILE...           explain why there is no answer set
  zrl cost FILE...               explain what the best one pays
  zrl explain CODE               tell what a message means, with an example
  zrl help COMMAND               tell a command's options
  zrl --version

A file that is not there as named is looked for in the folders of -I and in the library of
templates: "zrl maximum.zrl staff.zrl" works anywhere. Without a file, or with -, the program comes
from standard input. The rows of .csv, .tsv, .json, .jsonl, .db and .sqlite files become facts.

Exit status: 0 an answer set was found (or the query is true, or has rows), 10 there is none (or
it is false, or has no rows), 20 ended by a limit or an interrupt, with what was found printed;
1 errors in the program, 2 wrong usage or a file that cannot be read, 3 the solver, or Graphviz for
a picture, is missing or failed, 4 the answers could not be written.
)";

ParsedCommandLine ended(std::string_view text) {
  std::cout << text << std::flush;
  return {std::nullopt, std::cout ? ExitStatus::kFound : ExitStatus::kOutputFailed};
}

// An atom that begins with "-" is no option: a blank in front tells the library.
void keep_atoms(std::vector<std::string>& words) {
  for (std::string& word : words) {
    const bool is_negated = word.size() > 1 && word[0] == '-' && word[1] >= 'a' && word[1] <= 'z';
    if (is_negated && word.find_first_of("([") != std::string::npos) word.insert(0, " ");
  }
}

ParsedCommandLine parse(const CommandRow& row, std::vector<std::string> words) {
  CLI::App app(std::string(row.what), "zrl " + std::string(row.name));
  app.formatter(std::make_shared<ShortFormatter>());
  app.allow_extras();
  CommandLine line;
  RawOptions raw;
  row.define(app, line, raw);
  if (row.name.starts_with("why")) keep_atoms(words);
  std::ranges::reverse(words);    // as the library wants them
  try {
    app.parse(std::move(words));
  } catch (const CLI::CallForHelp&) {
    return ended(app.help());
  } catch (const CLI::ParseError& error) {
    refuse_unknown_options(app);
    throw WrongUsage{error.what()};    // what is wrong with which option
  }
  refuse_unknown_options(app);
  finish(line, app, raw);
  for (const std::string& code : line.codes) refuse_unknown_code(code);
  if (line.command != Command::kExplain) look_at_files(line);
  return {std::move(line), ExitStatus::kFound};
}

// A word that is no file, and nearly a command.
void refuse_unknown_command(const std::string& word) {
  std::error_code ignored;
  if (word.find_first_of("./-") != std::string::npos || std::filesystem::exists(word, ignored))
    return;
  constexpr std::array<std::string_view, kCommands.size() + 1> kNames{
      "run", "check", "expand", "show", "why", "whynot", "conflict", "cost", "explain", "help"};
  const std::string_view meant = nearest(word, kNames);
  if (meant.empty()) return;
  std::string text = "there is no command or file ";
  throw WrongUsage{with_hint(text += word, meant)};
}

ParsedCommandLine read_words(std::vector<std::string> words) {
  const std::string first = words.empty() ? "" : words.front();
  if (first == "--version") return ended(version_text());
  const bool wants_help = first == "help";
  if (first == "--help" || first == "-h" || (wants_help && words.size() == 1)) return ended(kHelp);
  if (wants_help) words = {words[1], "--help"};
  const CommandRow* const row = words.empty() ? nullptr : command_of(words.front());
  if (row != nullptr) {
    words.erase(words.begin());
    return parse(*row, std::move(words));
  }
  if (!words.empty()) refuse_unknown_command(words.front());
  if (wants_help) throw WrongUsage{"there is no command " + words.front()};
  return parse(kCommands.front(), std::move(words));
}

}    // namespace

ParsedCommandLine read_command_line(std::span<char* const> arguments) {
  const std::span<char* const> words = arguments.subspan(arguments.empty() ? 0 : 1);
  try {
    return read_words({words.begin(), words.end()});
  } catch (const WrongUsage& wrong) {
    std::cerr << "zrl: " << wrong.text << '\n';
    return {std::nullopt, ExitStatus::kUsage};
  }
}

}    // namespace workbench
