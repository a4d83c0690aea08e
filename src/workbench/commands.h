#pragma once
// commands.h - what each command of `zrl` does.

#include "workbench/command_line.h"

namespace workbench {

ExitStatus run(const CommandLine& line);         // solves and prints
ExitStatus check(const CommandLine& line);       // says what can be said without solving
ExitStatus expand(const CommandLine& line);      // prints the rewritten program with its origins
ExitStatus show(const CommandLine& line);        // draws what the program consists of
ExitStatus why(const CommandLine& line);         // explains why an answer set holds an atom
ExitStatus whynot(const CommandLine& line);      // and why not
ExitStatus conflict(const CommandLine& line);    // and why there is no answer set
ExitStatus cost(const CommandLine& line);        // and what one costs
ExitStatus split(const CommandLine& line);       // cuts a search into parts, in a folder
ExitStatus part(const CommandLine& line);        // searches one of them, or cuts it again
ExitStatus missing(const CommandLine& line);     // tells which have no result
ExitStatus join(const CommandLine& line);        // prints the answers of all
ExitStatus explain(const CommandLine& line);     // prints pages of the catalogue

}    // namespace workbench
