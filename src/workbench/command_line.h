#pragma once
// command_line.h - the command line of `zrl`, taken apart.

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "workbench/answers/answer_options.h"
#include "workbench/jobs/job_options.h"
#include "workbench/messages/exit_status.h"
#include "workbench/messages/reporter.h"
#include "workbench/search/solving.h"
#include "workbench/why/why_options.h"

namespace workbench {

enum class Command {
  kRun,
  kCheck,
  kExpand,
  kShow,
  kExplain,
  kWhy,
  kWhyNot,
  kConflict,
  kCost,
  kSplit,
  kPart,
  kMissing,
  kJoin
};

struct CommandLine {
  Command command = Command::kRun;
  std::vector<std::string> files;      // "-": standard input
  std::vector<std::string> folders;    // -I
  std::vector<std::string> codes;      // of `explain`; none: all are listed
  std::string shown;                   // by `show`: "classes", "calls" or "predicates"
  bool links_templates = true;
  bool shows_origins = true;              // of `expand`
  bool writes_whole_catalogue = false;    // of `explain`
  MessageOptions messages;
  SearchOptions search;
  AnswerOptions answers;
  WhyOptions why;
  JobOptions jobs;
};

// What became of the arguments: a command line; or, when help or the version was printed, or what
// is wrong with them was said, the status to end with.
struct ParsedCommandLine {
  std::optional<CommandLine> line;
  ExitStatus status = ExitStatus::kFound;
};

// Reads the arguments, the program's name first.
ParsedCommandLine read_command_line(std::span<char* const> arguments);

}    // namespace workbench
