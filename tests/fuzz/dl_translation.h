#pragma once
// dl_translation.h - what "dl -translate" does, without files.

#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

// Translates the text as one file with these options of dl's command line (a line that dl refuses
// counts as empty) and returns the mistake that dl found, or an empty text. What is included is
// empty.
std::string mistake_of_dl(const std::vector<std::string>& words, std::string_view text);

}    // namespace fuzz
