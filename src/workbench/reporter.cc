#include "workbench/reporter.h"

#include "workbench/catalogue.h"
#include "workbench/message_text.h"

namespace workbench {

void Reporter::report(const Message& message) {
  const Page* const page = page_of(message.code);
  const bool is_warning = page != nullptr && page->severity == Severity::kWarning;
  ++(is_warning ? warnings_ : errors_);
  const Severity severity = is_warning ? Severity::kWarning : Severity::kError;
  const Colours colours = options_.in_colour ? Colours::kTerminal : Colours::kNone;
  (out_ << drawn(message, severity, texts_, colours)).flush();
}

void Reporter::note(std::string_view text) {
  if (!options_.is_quiet) out_ << text << '\n';
}

void Reporter::finish() {
  out_.flush();
}

}    // namespace workbench
