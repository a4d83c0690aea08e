#pragma once
// answer_encoding.h - printed answer sets, put back into what a solver would have printed.

#include <optional>
#include <string>
#include <string_view>

namespace fuzz {

// The generic encoding of everything between braces; what stands outside is kept. Nothing when the
// text cannot be taken apart: an object was cut at its "@", or the answers held frame statements
// that zarel does not write (a part missing, an unknown arrow, a frame space without its mark at
// the end).
std::optional<std::string> encoded_answers(std::string_view printed);

// The solver's output with a blank behind every "(" that stands outside quotes.
std::string with_blanks(std::string_view answers);

// Whether a quoted text in a solver's output is no arrow but holds what the printed form of frames
// is made of: in the place of an arrow, it would be read as a part of what stands around it.
bool has_unknown_arrow(std::string_view answers);

}    // namespace fuzz
