#include "workbench/command_line.h"

#include <CLI/CLI.hpp>
#include <iostream>
#include <unistd.h>

namespace workbench {
namespace {

void add_reading_options(CLI::App& command, CommandLine& line) {
  command.add_option("FILE", line.files, "files of the program; - is standard input");
  command.add_option("-I,--include-dir", line.folders, "search this folder for files, too")
      ->type_name("DIR");
  command.add_flag("--literal-templates{false}", line.links_templates,
                   "templates see only what they are given by name");
}

void add_search_options(CLI::App& command, SearchOptions& search) {
  command.add_option("-n,--answer-sets", search.answer_sets, "at most K answer sets (0: all)");
}

}    // namespace

ParsedCommandLine read_command_line(std::span<char* const> arguments) {
  ParsedCommandLine result;
  CommandLine line;
  CLI::App app("Models knowledge with rules, and solves.", "zrl");
  CLI::App* const run = app.add_subcommand("run", "solve and print");
  add_reading_options(*run, line);
  add_search_options(*run, line.search);
  try {
    app.parse(static_cast<int>(arguments.size()), arguments.data());
  } catch (const CLI::ParseError& error) {
    result.status = app.exit(error) == 0 ? ExitStatus::kFound : ExitStatus::kUsage;
    return result;
  }
  result.line = std::move(line);
  return result;
}

}    // namespace workbench
