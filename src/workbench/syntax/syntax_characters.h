#pragma once
// syntax_characters.h - characters that belong nowhere, and what they were to be.

#include <optional>
#include <string_view>

#include "workbench/messages/message.h"
#include "workbench/messages/source_texts.h"

namespace workbench {

// What is said of an unknown character, and how far it goes: what is unknown up to there is told
// with it. Without a message it is none that matters: a byte order mark, a line's "\r".
struct CharacterAnswer {
  std::optional<Message> message;
  zarel::Position last;
  std::string_view character = {};    // in the text of its file
};

// The byte at the beginning of the place is the first of the character; it is `byte`. There is no
// message of the character that was told of in the same line.
CharacterAnswer unknown_character(const zarel::Place& place, std::string_view byte,
                                  SourceTexts& texts, std::string_view told_in_line);

}    // namespace workbench
