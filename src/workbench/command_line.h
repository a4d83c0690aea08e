#pragma once
// command_line.h - the command line of `zrl`, taken apart.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "workbench/exit_status.h"
#include "workbench/reporter.h"
#include "workbench/solving.h"

namespace workbench {

enum class Command { kRun, kCheck, kExpand, kExplain };

struct CommandLine {
  Command command = Command::kRun;
  std::vector<std::string> files;      // "-": standard input
  std::vector<std::string> folders;    // -I
  std::vector<std::string> codes;      // of `explain`; none: all are listed
  bool links_templates = true;
  MessageOptions messages;
  SearchOptions search;
};

// Reads the arguments (the program's name first). Prints help, the version or what is wrong by
// itself; then there is no command line, but a status.
struct ParsedCommandLine {
  std::optional<CommandLine> line;
  ExitStatus status = ExitStatus::kFound;
};
ParsedCommandLine read_command_line(std::span<char* const> arguments);

}    // namespace workbench
