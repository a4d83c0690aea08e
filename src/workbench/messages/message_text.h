#pragma once
// message_text.h - a message as people read it: its line of the source, and the range underlined.

#include <string>

#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

enum class Colours : bool { kNone, kTerminal };

// The message whole, ending in a line end. Nothing of the user's text reaches a terminal that is
// not a character to be seen there; a source line that cannot be had any more is left out.
std::string drawn(const Message& message, Severity severity, SourceTexts& texts, Colours colours);

}    // namespace workbench
