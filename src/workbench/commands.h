#pragma once
// commands.h - what each command of `zrl` does.

#include "workbench/command_line.h"

namespace workbench {

ExitStatus run(const CommandLine& line);        // solves and prints
ExitStatus check(const CommandLine& line);      // says what can be said without solving
ExitStatus expand(const CommandLine& line);     // prints the rewritten program with its origins
ExitStatus show(const CommandLine& line);       // draws what the program consists of
ExitStatus explain(const CommandLine& line);    // prints pages of the catalogue

}    // namespace workbench
