#include "workbench/findings.h"

namespace workbench {

std::optional<Message> syntax_message(const zarel::Diagnostic& finding, SourceTexts& /*texts*/) {
  if (finding.code != zarel::Code::kSyntaxError) return std::nullopt;
  return Message{zarel::kind_of(finding.code).name, finding.place, finding.text};
}

}    // namespace workbench
