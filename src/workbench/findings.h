#pragma once
// findings.h - what the library finds, in the words of `zrl`.

#include <optional>

#include "base/diagnostic.h"
#include "workbench/message.h"
#include "workbench/source_texts.h"

namespace workbench {

// Of a finding of the scanner or the grammar; nothing when the finding is of another kind.
std::optional<Message> syntax_message(const zarel::Diagnostic& finding, SourceTexts& texts);

// Of any other finding of the front end: of the program as a whole, of templates, of reading files.
Message program_message(const zarel::Diagnostic& finding, SourceTexts& texts);

}    // namespace workbench
