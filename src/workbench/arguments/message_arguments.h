#pragma once
// message_arguments.h - the options that say how messages are told.

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "workbench/messages/reporter.h"

namespace workbench {

// As they are written.
struct MessageArguments {
  std::vector<std::string> switches;    // of -W
  std::string colour = "auto";
  std::string form = "text";
};

void add_message_options(CLI::App& app, MessageOptions& messages, MessageArguments& arguments);
// What they mean together. Throws WrongUsage.
void read_message_arguments(const MessageArguments& arguments, MessageOptions& messages);

void refuse_unknown_code(const std::string& code);    // of a message: throws WrongUsage

}    // namespace workbench
