#include "workbench/findings.h"

namespace workbench {

Message program_message(const zarel::Diagnostic& finding, SourceTexts& /*texts*/) {
  Message message{zarel::kind_of(finding.code).name, finding.place, finding.text};
  message.notes = finding.notes;
  return message;
}

}    // namespace workbench
