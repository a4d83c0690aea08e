#include "dl/options.h"

#include <algorithm>
#include <charconv>

#include "dl/failure.h"
#include "dl/search_plan.h"

namespace dl {
namespace {

using zarel::Code;

constexpr std::int64_t kMaxInteger = 2147483647;
constexpr std::int64_t kMaxThreads = 64;    // clingo's own limit

struct Flag {
  std::string_view name;
  void (*set)(Options&);
};

void ask(Options& options, QuestionKind question) {
  if (options.question != QuestionKind::kNone) {
    throw Failure{{Code::kOptionValue, {}, "one question at a time, see dl -help"}};
  }
  options.question = question;
}

constexpr Flag kFlags[] = {
    {"silent",
     [](Options&) {
     }},    // there is no banner to leave out; kept for those who call a solver with it
    {"nofacts", [](Options& options) { options.leave_out_facts = true; }},
    {"brave", [](Options& options) { options.reasoning = Reasoning::kBrave; }},
    {"FB", [](Options& options) { options.reasoning = Reasoning::kBrave; }},
    {"cautious", [](Options& options) { options.reasoning = Reasoning::kCautious; }},
    {"FC", [](Options& options) { options.reasoning = Reasoning::kCautious; }},
    {"translate", [](Options& options) { options.translate_only = true; }},
    {"stats", [](Options& options) { options.shows_costs = true; }},
    {"conflict", [](Options& options) { ask(options, QuestionKind::kConflict); }},
    {"paid", [](Options& options) { ask(options, QuestionKind::kPaid); }},
    {"missing", [](Options& options) { options.job = JobCommand::kMissing; }},
    {"join", [](Options& options) { options.job = JobCommand::kJoin; }},
    {"partial", [](Options& options) { options.is_partial = true; }},
    {"nobound", [](Options& options) { options.hands_bound_on = false; }},
    {"local", [](Options& options) { options.cuts = Cuts::kLocal; }},
    {"nofold", [](Options& options) { options.fold = false; }},
    {"help", [](Options& options) { options.help = true; }},
    {"h", [](Options& options) { options.help = true; }},
    {"version", [](Options& options) { options.version = true; }},
};

void add_names(std::vector<std::string>& names, std::string_view list) {
  while (!list.empty()) {
    const std::size_t comma = std::min(list.find(','), list.size());
    if (comma != 0) names.emplace_back(list.substr(0, comma));
    list.remove_prefix(std::min(comma + 1, list.size()));
  }
}

std::int64_t number(std::string_view argument, std::string_view value, std::int64_t least,
                    std::int64_t most) {
  std::int64_t result = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), result);
  if (error == std::errc() && end == value.data() + value.size() && result >= least &&
      result <= most) {
    return result;
  }
  throw Failure{{Code::kOptionValue,
                 {},
                 "option \"" + std::string(argument) + "\" needs a number from " +
                     std::to_string(least) + " to " + std::to_string(most)}};
}

// An option with a value; false if there is none of that name.
bool set_value(Options& options, std::string_view argument, std::string_view name,
               std::string_view value) {
  if (name == "filter") {
    add_names(options.filters, value);
  } else if (name == "pfilter") {
    add_names(options.positive_filters, value);
  } else if (name == "n") {
    options.answer_sets = static_cast<std::uint64_t>(number(argument, value, 0, kMaxInteger));
  } else if (name == "N") {
    options.bound = number(argument, value, 0, kMaxInteger);
  } else if (name == "threads") {
    options.threads = static_cast<std::uint64_t>(number(argument, value, 1, kMaxThreads));
  } else if (name == "part") {
    options.part = static_cast<std::uint64_t>(number(argument, value, 0, kMaxInteger));
    options.job = JobCommand::kPart;
  } else if (name == "jobs") {
    options.jobs = value;
  } else if (name == "configuration") {
    if (!is_configuration(value)) {
      throw Failure{
          {Code::kOptionValue,
           {},
           "option \"" + std::string(argument) + "\" needs one of " + configuration_list()}};
    }
    options.configuration = value;
  } else if (name == "split") {
    options.parts = static_cast<std::uint64_t>(
        number(argument, value, 1, static_cast<std::int64_t>(kMostParts)));
  } else if (name == "time") {
    options.seconds = static_cast<std::uint64_t>(number(argument, value, 1, kMaxInteger));
  } else if (name == "why" || name == "whynot") {
    ask(options, name == "why" ? QuestionKind::kWhy : QuestionKind::kWhyNot);
    options.asked = value;
  } else if (name == "depth") {
    options.depth = static_cast<std::uint32_t>(number(argument, value, 0, kMaxInteger));
  } else if (name == "clingo") {
    if (value.empty()) {
      throw Failure{
          {Code::kOptionValue, {}, "option \"" + std::string(argument) + "\" needs a path"}};
    }
    options.clingo = value;
  } else {
    return false;
  }
  return true;
}

void read_option(Options& options, std::string_view argument) {
  std::string_view word = argument;
  word.remove_prefix(word.starts_with("--") ? 2 : 1);
  for (const Flag& flag : kFlags) {
    if (word == flag.name) return flag.set(options);
  }
  const std::size_t equals = word.find('=');
  if (equals != std::string_view::npos &&
      set_value(options, argument, word.substr(0, equals), word.substr(equals + 1))) {
    return;
  }
  throw Failure{
      {Code::kUnknownOption, {}, "unknown option \"" + std::string(argument) + "\", see dl -help"}};
}

}    // namespace

bool Options::shows(std::string_view name, bool strongly_negated) const {
  if (filters.empty() && positive_filters.empty()) return true;
  if (std::ranges::find(filters, name) != filters.end()) return true;
  return !strongly_negated && std::ranges::find(positive_filters, name) != positive_filters.end();
}

namespace {

[[noreturn]] void refuse(const char* text) {
  throw Failure{{Code::kOptionValue, {}, text}};
}

bool works_without_files(JobCommand job) {
  return job != JobCommand::kNone && job != JobCommand::kSplit;
}

// Whether an option is given that a folder of parts has been made with.
bool shapes_search(const Options& options) {
  return !options.filters.empty() || !options.positive_filters.empty() ||
         options.answer_sets != 0 || options.bound || options.leave_out_facts || !options.fold ||
         options.reasoning == Reasoning::kBrave || !options.configuration.empty() ||
         options.threads > 1;
}

// What the options say together.
void look_at_job(Options& options) {
  const bool splits = options.parts != 0;
  if (splits && options.job == JobCommand::kPart) options.job = JobCommand::kDivide;
  if (splits && options.cuts == Cuts::kNone && options.job == JobCommand::kNone)
    options.job = JobCommand::kSplit;
  if (options.cuts == Cuts::kLocal) {
    if (!splits) refuse("option \"-local\" needs -split=K");
    if (options.job != JobCommand::kNone || !options.jobs.empty())
      refuse("option \"-local\" runs all parts itself, and takes no folder");
    if (options.configuration == kRaceWord)
      refuse("-local and -configuration=race do not go together");
  }
  if (splits && (options.job == JobCommand::kMissing || options.job == JobCommand::kJoin)) {
    refuse("-split is not for -missing and -join");
  }
  const bool has_job = options.job != JobCommand::kNone;
  if (has_job && options.jobs.empty()) {
    refuse(splits && options.job == JobCommand::kSplit
               ? "-split needs a folder, -jobs=DIR, or -local"
               : "-part, -missing and -join need a folder, -jobs=DIR");
  }
  if (!has_job && !options.jobs.empty())
    refuse("option \"-jobs\" needs -split=K, -part=I, -missing or -join");
  if (options.is_partial && options.job != JobCommand::kJoin)
    refuse("option \"-partial\" needs -join");
  if (works_without_files(options.job) && !options.files.empty())
    refuse("the folder of -jobs has the program: no file is read with -part, -missing and -join");
  if (works_without_files(options.job) && shapes_search(options)) {
    refuse(
        "what is searched and shown is said with -split, and not again with -part, -missing and "
        "-join");
  }
  if (has_job && options.translate_only) refuse("-translate and -jobs do not go together");
  if (has_job && options.question != QuestionKind::kNone)
    refuse("a question is about a whole search, not one in parts");
  if (has_job && options.configuration == kRaceWord)
    refuse("-configuration=race and -jobs do not go together");
}

}    // namespace

Options read_options(const std::vector<std::string_view>& arguments) {
  Options options;
  for (const std::string_view argument : arguments) {
    if (argument.starts_with('-') && argument.size() > 1) {
      read_option(options, argument);
    } else {
      options.files.emplace_back(argument);
    }
  }
  if (options.help || options.version) return options;
  look_at_job(options);
  if (options.files.empty() && !works_without_files(options.job)) {
    throw Failure{{Code::kNoInputFile, {}, "no input file, see dl -help"}};
  }
  return options;
}

std::string version_text() {
  std::string text("dl ");
  ((text += kDlVersion) += ", tested with clingo ") += kTestedClingo;
  return text += '\n';
}

std::string_view help_text() {
  return "usage: dl {option|file}...\n"
         "Finds the answer sets of disjunctive logic programs with clingo. Options may have one "
         "dash or two.\n"
         "  -filter=a,b    show only the predicates a and b and their strong negations\n"
         "  -pfilter=a,b   show only the predicates a and b\n"
         "  -n=K           at most K answer sets\n"
         "  -nofacts       leave out the atoms that are given as facts\n"
         "  -N=K           integers range up to K\n"
         "  -brave, -FB    a query's answers hold in some answer set\n"
         "  -cautious, -FC a query's answers hold in every answer set (the default)\n"
         "  -threads=K     search with K threads\n"
         "  -configuration=NAME  clingo's settings: auto, frumpy, jumpy, tweety, handy, crafty, "
         "trendy, many;\n"
         "                 race tries several, and the first to finish wins\n"
         "  -split=K -local  cut the search into K parts or some more, which run on all cores\n"
         "  -split=K -jobs=DIR  cut it, and put the parts into the folder DIR\n"
         "  -jobs=DIR -part=I   run part I; with -split=K cut it again instead\n"
         "  -jobs=DIR -missing  tell which parts have no result, as 3,5-7\n"
         "  -jobs=DIR -join     print what the parts have found; with -partial what is there\n"
         "  -nobound       leave costs that other parts have reached out of account\n"
         "  -time=K        end the search after K seconds and show what was found\n"
         "  -translate     print the program for clingo and stop\n"
         "  -stats         tell which rules have most instances\n"
         "  -why=ATOM      tell why the atom is in the answer set; \"p(X,_)\" for its instances\n"
         "  -whynot=ATOM   tell why the atom is not in it\n"
         "  -conflict      tell what stands in the way of an answer set\n"
         "  -paid          tell what the best answer set pays, and what it costs to avoid that\n"
         "                 Of these questions there is one; -n=K chooses the K-th answer set for "
         "it\n"
         "  -depth=K       the depth of the proofs that answer it; 0: no limit; else 8\n"
         "  -nofold        leave relation names among the arguments of atoms a_N\n"
         "  -clingo=PATH   the clingo to run\n"
         "  -silent        accepted; dl prints no banner\n"
         "  -help, -version\n";
}

}    // namespace dl
