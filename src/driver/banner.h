#pragma once
// banner.h - the texts that Zarel says about itself.

#include <iosfwd>

namespace zarel {

// The banner on standard output: two lines and a blank one; with OptionVerbosity the licence's
// first paragraphs too.
void printLogo();

enum class Usage { kShort, kLong };

// The usage on the stream. The short form's second line always goes to standard output.
void printUsage(std::ostream& out, Usage form);

// The whole licence notice and a line end, on standard output.
void print_license();

}    // namespace zarel
