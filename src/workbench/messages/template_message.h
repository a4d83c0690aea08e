#pragma once
// template_message.h - what the library finds in templates, in the words of `zrl`.

#include <optional>

#include "base/diagnostic.h"
#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// Of a finding about templates; nothing when the finding is of another kind. To be called while the
// program of the finding works: its definitions and invocations are looked at.
std::optional<Message> template_message(const zarel::Diagnostic& finding, SourceTexts& texts);

}    // namespace workbench
