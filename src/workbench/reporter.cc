#include "workbench/reporter.h"

#include "workbench/catalogue.h"

namespace workbench {

void Reporter::report(const Message& message) {
  const Page* const page = page_of(message.code);
  const bool is_warning = page != nullptr && page->severity == Severity::kWarning;
  ++(is_warning ? warnings_ : errors_);
  if (message.place.is_known()) {
    out_ << texts_.name(message.place.first.file) << ':' << message.place.first.line << ':'
         << message.place.first.character << ": ";
  }
  out_ << (is_warning ? "warning: " : "error: ") << message.text << " [" << message.code << "]\n";
}

void Reporter::note(std::string_view text) {
  if (!options_.is_quiet) out_ << text << '\n';
}

void Reporter::finish() {
  out_.flush();
}

}    // namespace workbench
