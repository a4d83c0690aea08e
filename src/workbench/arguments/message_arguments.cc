#include "workbench/arguments/message_arguments.h"

#include <cstdlib>
#include <string_view>
#include <unistd.h>

#include "workbench/arguments/option_checks.h"
#include "workbench/messages/catalogue.h"
#include "workbench/messages/nearest.h"

namespace workbench {
namespace {

void read_switch(const std::string& value, MessageOptions& messages) {
  constexpr std::string_view kOff = "no-";
  constexpr std::string_view kError = "error=";
  if (value == "error") {
    messages.is_strict = true;
    return;
  }
  auto* set = &messages.on;
  std::string code = value;
  if (value.starts_with(kError)) {
    set = &messages.as_errors;
    code = value.substr(kError.size());
  } else if (value.starts_with(kOff) && page_of(value) == nullptr) {
    set = &messages.off;
    code = value.substr(kOff.size());
  }
  refuse_unknown_code(code);
  set->insert(code);
}

bool is_set(const char* variable) {
  const char* const value = std::getenv(variable);    // NOLINT(concurrency-mt-unsafe): no threads
  return value != nullptr && *value != '\0';
}

// As https://no-color.org and https://bixense.com/clicolors have it.
bool wants_colour(const std::string& when) {
  if (when != "auto") return when == "always";
  if (is_set("NO_COLOR")) return false;
  return is_set("CLICOLOR_FORCE") || ::isatty(STDERR_FILENO) != 0;
}

}    // namespace

void add_message_options(CLI::App& app, MessageOptions& messages, MessageArguments& arguments) {
  constexpr const char* kGroup = "Messages";
  app.add_option("-W", arguments.switches,
                 "CODE shows a warning, no-CODE hides it, error=CODE makes it an error")
      ->type_name("SWITCH")
      ->allow_extra_args(false)
      ->group(kGroup);
  app.add_flag("--strict", messages.is_strict, "Warnings count as errors")->group(kGroup);
  app.add_flag("-q,--quiet", messages.is_quiet, "Say nothing but errors and warnings")
      ->group(kGroup);
  app.add_option("--messages", arguments.form, "Form of messages: text, or json, an object a line")
      ->check(one_of({"text", "json"}))
      ->type_name("FORM")
      ->group(kGroup);
  app.add_option("--colour,--color", arguments.colour,
                 "When messages are coloured: auto, always, never")
      ->check(one_of({"auto", "always", "never"}))
      ->type_name("WHEN")
      ->group(kGroup);
}

void read_message_arguments(const MessageArguments& arguments, MessageOptions& messages) {
  for (const std::string& value : arguments.switches) read_switch(value, messages);
  messages.as_json = arguments.form == "json";
  messages.in_colour = wants_colour(arguments.colour);
}

void refuse_unknown_code(const std::string& code) {
  if (page_of(code) != nullptr) return;
  std::vector<std::string_view> codes;
  for (const Page& page : pages()) codes.push_back(page.code);
  std::string text = "there is no message with the code ";
  throw WrongUsage{with_hint(text += code, nearest(code, codes))};
}

}    // namespace workbench
