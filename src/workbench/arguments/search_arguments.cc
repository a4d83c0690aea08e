#include "workbench/arguments/search_arguments.h"

#include <string_view>

#include "dl/search_plan.h"
#include "workbench/arguments/option_checks.h"

namespace workbench {
namespace {

constexpr const char* kAnswers = "Answers";
constexpr const char* kSearch = "Search";

constexpr std::uint64_t kMostThreads = 64;    // clingo's own limit
constexpr std::uint64_t kGreatestSeed = 4294967295;

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

void add_seed_option(CLI::App& app, SearchOptions& search) {
  app.add_option("--seed", search.seed, "Search in another order")
      ->check(whole_number(0, kGreatestSeed))
      ->type_name("N")
      ->group(kSearch);
}

// What answers are asked for.
void add_aim_options(CLI::App& app, SearchOptions& search, SearchArguments& arguments) {
  add_bound_option(app, search);
  add_number_option(app, search);
  app.add_flag("--no-facts", search.leaves_out_facts, "Leave out what the program states as facts")
      ->group(kAnswers);
  auto* const cautious = app.add_flag("--cautious", arguments.is_cautious,
                                      "A query holds if it does in every answer set (the default)")
                             ->group(kAnswers);
  app.add_flag("--brave", arguments.is_brave, "A query holds if it does in some answer set")
      ->excludes(cautious)
      ->group(kAnswers);
}

// A search can be divided in one way only, and by clingo alone.
void read_parts(const SearchArguments& arguments, SearchOptions& search) {
  if (arguments.parts == "auto") {
    search.cuts = dl::Cuts::kAuto;
  } else if (!arguments.parts.empty()) {
    search.cuts = dl::Cuts::kLocal;
    search.parts = std::stoull(arguments.parts);
  }
  const bool is_race = search.configuration == dl::kRaceWord;
  if (search.cuts == dl::Cuts::kNone && !is_race) return;
  const std::string option = is_race ? "--configuration race" : "--parts";
  if (is_race && search.cuts != dl::Cuts::kNone)
    throw WrongUsage{"--configuration race and --parts do not go together"};
  if (!search.solver.empty()) throw WrongUsage{option + " needs clingo: leave out --solver"};
  if (search.shows_improving) throw WrongUsage{option + " and --improving do not go together"};
}

}    // namespace

void add_bound_option(CLI::App& app, SearchOptions& search) {
  app.add_option("--maxint", search.maxint, "Integers go up to N, whatever #maxint says")
      ->check(whole_number(0, kGreatestInteger))
      ->type_name("N")
      ->group(kSearch);
}

void add_number_option(CLI::App& app, SearchOptions& search) {
  app.add_option("-n,--answer-sets", search.answer_sets,
                 "At most K answer sets; 0, the default: all")
      ->check(whole_number(0, kGreatestCount))
      ->type_name("K")
      ->group(kAnswers);
}

void add_clingo_option(CLI::App& app, SearchOptions& search) {
  app.add_option("--clingo", search.clingo, "The clingo that searches")
      ->type_name("PATH")
      ->group(kSearch);
}

void add_time_option(CLI::App& app, SearchOptions& search) {
  app.add_option("-t,--time-limit", search.seconds, "End after S seconds, with what was found")
      ->check(seconds())
      ->type_name("S")
      ->group(kSearch);
}

void add_clingo_options(CLI::App& app, SearchOptions& search) {
  add_time_option(app, search);
  app.add_option("--threads", search.threads, "Search with K threads")
      ->check(whole_number(1, kMostThreads))
      ->type_name("K")
      ->group(kSearch);
  add_seed_option(app, search);
  add_clingo_option(app, search);
}

void add_search_options(CLI::App& app, SearchOptions& search, SearchArguments& arguments) {
  add_aim_options(app, search, arguments);
  app.add_flag("--improving", search.shows_improving,
               "With weak constraints, show each better answer set as it is found")
      ->group(kAnswers);
  add_clingo_options(app, search);
  app.add_option("--configuration", search.configuration,
                 "How clingo searches: auto, frumpy, jumpy, tweety, handy, crafty, trendy or many; "
                 "race tries several at once, and the first to finish wins")
      ->check(configuration())
      ->type_name("NAME")
      ->group(kSearch);
  app.add_option("--parts", arguments.parts,
                 "Cut the search into K parts or some more, which run on all cores; auto: if it "
                 "takes long")
      ->check(part_count())
      ->type_name("K")
      ->group(kSearch);
  app.add_option("--solver", search.solver,
                 "Another solver of the language of dl, in place of clingo")
      ->type_name("PATH")
      ->group(kSearch);
  app.add_flag("--stats", search.tells_statistics,
               "Tell afterwards what each phase took, and clingo's own figures")
      ->group(kSearch);
  app.add_flag("--profile", search.tells_profile,
               "Tell afterwards which rules have most ground instances")
      ->group(kSearch);
  app.add_option("--keep", search.keep_folder, "Keep what the stages hand on as files in DIR")
      ->type_name("DIR")
      ->group(kSearch);
}

void add_split_options(CLI::App& app, SearchOptions& search, SearchArguments& arguments) {
  app.add_option("--parts", search.parts, "Cut the search into K parts or some more")
      ->check(whole_number(1, dl::kMostParts))
      ->type_name("K")
      ->group(kSearch);
  add_aim_options(app, search, arguments);
  app.add_option("--configuration", search.configuration,
                 "How clingo searches: auto, frumpy, jumpy, tweety, handy, crafty, trendy or many")
      ->check(one_of({std::begin(dl::kConfigurations), std::end(dl::kConfigurations)}))
      ->type_name("NAME")
      ->group(kSearch);
  add_time_option(app, search);
  add_seed_option(app, search);
  add_clingo_option(app, search);
}

void read_search_arguments(const SearchArguments& arguments, SearchOptions& search) {
  if (arguments.is_brave) search.consequences = Consequences::kBrave;
  if (arguments.is_brave || arguments.is_cautious) {
    search.consequences_option = arguments.is_brave ? "--brave" : "--cautious";
  }
  if (search.shows_improving && !search.solver.empty())
    throw WrongUsage{"--improving needs clingo: leave out --solver"};
  read_parts(arguments, search);
}

}    // namespace workbench
