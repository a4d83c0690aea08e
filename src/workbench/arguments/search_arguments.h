#pragma once
// search_arguments.h - the options that say what is searched, and how.

#include <CLI/CLI.hpp>
#include <string>

#include "workbench/search/solving.h"

namespace workbench {

// As they are written.
struct SearchArguments {
  std::string parts;    // a number, or "auto"
  bool is_brave = false;
  bool is_cautious = false;
};

void add_bound_option(CLI::App& app, SearchOptions& search);     // --maxint
void add_number_option(CLI::App& app, SearchOptions& search);    // -n
void add_clingo_option(CLI::App& app, SearchOptions& search);    // --clingo
void add_time_option(CLI::App& app, SearchOptions& search);      // --time-limit
// How clingo is to work, those two among them.
void add_clingo_options(CLI::App& app, SearchOptions& search);
// All of a run.
void add_search_options(CLI::App& app, SearchOptions& search, SearchArguments& arguments);
// Those of a search that is cut, and run elsewhere.
void add_split_options(CLI::App& app, SearchOptions& search, SearchArguments& arguments);

// What they mean together. Throws WrongUsage.
void read_search_arguments(const SearchArguments& arguments, SearchOptions& search);

}    // namespace workbench
