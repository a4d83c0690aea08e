#pragma once
// parse.h - reads the input into the program, one file or text after the other.

#include <cstdio>
#include <iosfwd>
#include <string_view>

namespace zarel {

class ProgramBuilder;

// Parses the file from its beginning. What stands in verbatim sections goes to `verbatim`,
// everything else through the builder into the program. Errors are reported and counted in
// report_state(); the line there is advanced. A parse keeps its state to itself: several may be
// under way, each with a builder of its own.
void parse_file(std::FILE* file, ProgramBuilder& builder, std::ostream& verbatim);

// The same with a text in memory, as if it were the file's content.
void parse_text(std::string_view text, ProgramBuilder& builder, std::ostream& verbatim);

}    // namespace zarel
