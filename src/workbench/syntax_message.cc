#include "workbench/findings.h"

namespace workbench {

std::optional<Message> syntax_message(const zarel::Diagnostic& finding, SourceTexts& /*texts*/) {
  if (finding.code != zarel::Code::kSyntaxError) return std::nullopt;
  Message m{zarel::kind_of(finding.code).name, finding.place, finding.text};
  if (finding.refusal) {
  for (auto w : finding.refusal->expected) (m.text += ", ") += w;
  if (finding.refusal->lacks_full_stop) m.text += " LACKS";
  m.text += " @" + std::to_string(finding.refusal->statement.first.line)+":"+ std::to_string(finding.refusal->statement.first.column);
  }
  return m;
}

}    // namespace workbench
