#include "workbench/command_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <utility>

#include "dl/options.h"
#include "dl/search_plan.h"
#include "workbench/arguments/answer_arguments.h"
#include "workbench/arguments/message_arguments.h"
#include "workbench/arguments/option_checks.h"
#include "workbench/arguments/search_arguments.h"
#include "workbench/messages/nearest.h"

namespace workbench {
namespace {

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

// Options whose values still have to be looked at together.
struct RawOptions {
  SearchArguments search;
  AnswerArguments answers;
  MessageArguments messages;
};

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
  add_message_options(app, line.messages, raw.messages);
}

// The names by which an option of the command can be called.
std::vector<std::string> option_names(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::string_view nearest_of(std::string_view word, const std::vector<std::string>& names) {
  const std::vector<std::string_view> views(names.begin(), names.end());
  return nearest(word, views);
}

// Values of known options are gone from what remains.
void refuse_unknown_options(const CLI::App& app) {
  for (const std::string& rest : app.remaining()) {
    if (rest == "--") continue;
    if (!rest.starts_with('-')) throw WrongUsage{"one argument too many: " + rest};
    const std::string name = rest.substr(0, rest.find('='));
    std::string text = "unknown option ";
    throw WrongUsage{with_hint(text += name, nearest_of(name, option_names(app)))};
  }
}

void finish(CommandLine& line, const CLI::App& app, const RawOptions& raw) {
  read_answer_arguments(app, raw.answers, line.answers);
  if (!raw.answers.forms.empty()) line.why.form = raw.answers.forms.back();
  line.answers.has_one_set = line.search.answer_sets == 1;
  read_message_arguments(raw.messages, line.messages);
  line.answers.has_messages = line.messages.as_json && has_json_on_standard_output(line.answers);
  read_search_arguments(raw.search, line.search);
  if (line.answers.differs_from_facts) line.search.leaves_out_facts = true;
  if (line.answers.projects) {    // what is found is not what is wanted
    line.answers.different_sets = std::exchange(line.search.answer_sets, 0);
  }
  line.answers.picture.sets = std::max<std::uint64_t>(line.search.answer_sets, 1);
}

// A program whose folder was forgotten would be read from standard input, and found to be empty.
void look_at_folder(const JobOptions& jobs) {
  std::error_code none;
  const auto what = std::filesystem::status(jobs.folder, none).type();
  if (what == std::filesystem::file_type::not_found ||
      what == std::filesystem::file_type::directory)
    return;
  throw WrongUsage{jobs.folder + " is no folder: that of the parts stands in front"};
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
  add_answer_options(app, line.answers, raw.answers);
  add_graph_option(app, line.answers);
  add_report_option(app, raw.answers);
  add_search_options(app, line.search, raw.search);
  add_message_options(app, line, raw);
}

void define_check(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kCheck;
  add_reading_options(app, line);
  add_bound_option(app, line.search);
  add_filter_option(app, raw.answers);
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
  app.add_option("--format", raw.answers.forms, "Form of the picture: dot, svg")
      ->check(one_of({"dot", "svg"}))
      ->type_name("FORM")
      ->expected(1)
      ->group("Answers");
  app.add_option("-o,--output", raw.answers.outputs, "Write the picture to FILE")
      ->type_name("FILE")
      ->expected(1)
      ->group("Answers");
  raw.answers.standard_form = "dot";
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
  app.add_option("--format", raw.answers.forms, "Form of the explanation: " + listed(forms))
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
  app.add_option("--filter", raw.answers.filters, "Prove only what the patterns of zrl run show")
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

void add_folder_argument(CLI::App& app, JobOptions& jobs) {
  app.add_option("DIR", jobs.folder, "The folder of the search in parts")->required();
}

void define_split(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kSplit;
  add_folder_argument(app, line.jobs);
  add_reading_options(app, line);
  add_split_options(app, line.search, raw.search);
  add_message_options(app, line, raw);
}

void define_part(CLI::App& app, CommandLine& line, RawOptions& raw) {
  constexpr const char* kGroup = "Search";
  line.command = Command::kPart;
  add_folder_argument(app, line.jobs);
  app.add_option("I", line.jobs.part, "The number of the part, from 0")
      ->check(whole_number(0, kGreatestCount))
      ->required();
  app.add_option("--divide", line.jobs.pieces,
                 "Do not search the part, but cut it into K parts or some more, in its place")
      ->check(whole_number(2, dl::kMostParts))
      ->type_name("K")
      ->group(kGroup);
  app.add_flag_callback(
         "--no-bound", [&line] { line.jobs.hands_bound_on = false; },
         "Look at no costs that other parts have found, nor tell them")
      ->group(kGroup);
  add_time_option(app, line.search);
  add_clingo_option(app, line.search);
  add_message_options(app, line, raw);
}

void define_missing(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kMissing;
  add_folder_argument(app, line.jobs);
  add_message_options(app, line, raw);
}

void define_join(CLI::App& app, CommandLine& line, RawOptions& raw) {
  line.command = Command::kJoin;
  add_folder_argument(app, line.jobs);
  app.add_flag("--partial", line.jobs.is_partial, "Whatever parts are missing")->group("Answers");
  add_number_option(app, line.search);
  add_answer_options(app, line.answers, raw.answers);
  add_graph_option(app, line.answers);
  add_report_option(app, raw.answers);
  app.add_flag("--stats", line.search.tells_statistics, "Tell afterwards what the parts took")
      ->group("Search");
  add_message_options(app, line, raw);
}

void define_explain(CLI::App& app, CommandLine& line, RawOptions& /*raw*/) {
  line.command = Command::kExplain;
  app.add_option("CODE", line.codes, "Codes of messages; without one, all are listed");
  app.add_flag("--markdown", line.writes_whole_catalogue)->group("");    // hidden
}

struct CommandRow {
  std::string_view name, what;
  void (*define)(CLI::App& app, CommandLine& line, RawOptions& raw);
  bool reads_program = true;
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
    CommandRow{"split", "Cuts a search into parts, which any machines may run, in a folder.",
               define_split},
    CommandRow{"part", "Searches one part of a search that was cut.", define_part, false},
    CommandRow{"missing", "Tells which parts of a search that was cut have no result.",
               define_missing, false},
    CommandRow{"join", "Prints the answers of a search that was cut.", define_join, false},
    CommandRow{"explain", "Prints the page of a message: what it means and how it is mended.",
               define_explain, false},
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
  zrl split DIR FILE...          cut the search into parts, in a folder
  zrl part DIR I                 search one of them, anywhere
  zrl missing DIR                tell those without a result
  zrl join DIR                   print the answers of all
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
  if (!line.jobs.folder.empty()) look_at_folder(line.jobs);
  if (row.reads_program) look_at_files(line);
  return {std::move(line), ExitStatus::kFound};
}

// A word that is no file, and nearly a command.
void refuse_unknown_command(const std::string& word) {
  std::error_code ignored;
  if (word.find_first_of("./-") != std::string::npos || std::filesystem::exists(word, ignored))
    return;
  std::vector<std::string_view> names{"help"};
  for (const CommandRow& row : kCommands) names.push_back(row.name);
  const std::string_view meant = nearest(word, names);
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
