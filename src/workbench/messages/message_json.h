#pragma once
// message_json.h - messages as programs read them: one object of JSON a line.

#include <string>
#include <string_view>

#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// Each is a line with its end, always valid UTF-8; docs/messages.md tells the keys.
std::string message_as_json(const Message& message, Severity severity, SourceTexts& texts);
std::string note_as_json(std::string_view text);    // what is said of the run as a whole

}    // namespace workbench
