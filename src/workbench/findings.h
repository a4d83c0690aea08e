#pragma once
// findings.h - what the library finds, in the words of `zrl`.

#include <optional>
#include <string>

#include "base/diagnostic.h"
#include "workbench/message.h"
#include "workbench/source_texts.h"

namespace workbench {

// Of a finding of the scanner or the grammar; nothing when the finding is of another kind.
std::optional<Message> syntax_message(const zarel::Diagnostic& finding, SourceTexts& texts);

// Of any other finding of the front end: of the program as a whole, of templates, of reading files.
// To be called while the program of the finding works.
Message program_message(const zarel::Diagnostic& finding, SourceTexts& texts);

// Of a file that cannot be read, with the reason, and the file beside it that may have been meant.
// The place is the file as a whole (line 0), or not known.
Message unreadable_file(const zarel::Place& place, const std::string& path);

}    // namespace workbench
