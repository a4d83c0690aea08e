// zrl_main.cc - from the command line to the command.

#include <span>

#include "base/standard_streams.h"
#include "dl/parts/divided_search.h"
#include "workbench/command_line.h"
#include "workbench/commands.h"

namespace {

workbench::ExitStatus run(std::span<char* const> arguments) {
  const workbench::ParsedCommandLine parsed = workbench::read_command_line(arguments);
  if (!parsed.line) return parsed.status;
  switch (parsed.line->command) {
    case workbench::Command::kRun:
      return workbench::run(*parsed.line);
    case workbench::Command::kCheck:
      return workbench::check(*parsed.line);
    case workbench::Command::kExpand:
      return workbench::expand(*parsed.line);
    case workbench::Command::kShow:
      return workbench::show(*parsed.line);
    case workbench::Command::kExplain:
      return workbench::explain(*parsed.line);
    case workbench::Command::kWhy:
      return workbench::why(*parsed.line);
    case workbench::Command::kWhyNot:
      return workbench::whynot(*parsed.line);
    case workbench::Command::kConflict:
      return workbench::conflict(*parsed.line);
    case workbench::Command::kCost:
      return workbench::cost(*parsed.line);
    case workbench::Command::kSplit:
      return workbench::split(*parsed.line);
    case workbench::Command::kPart:
      return workbench::part(*parsed.line);
    case workbench::Command::kMissing:
      return workbench::missing(*parsed.line);
    case workbench::Command::kJoin:
      return workbench::join(*parsed.line);
  }
  return workbench::ExitStatus::kUsage;
}

}    // namespace

int main(int argument_count, char** argument_list) {
  dl::become_helper(argument_count, argument_list);
  zarel::occupy_closed_streams();
  return static_cast<int>(run({argument_list, static_cast<std::size_t>(argument_count)}));
}
