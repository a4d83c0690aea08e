#pragma once
// parse.h - reads one input file into the program.

#include <cstdio>
#include <iosfwd>

namespace zarel {

class ProgramBuilder;

// Parses the file from its beginning. What stands in verbatim sections goes to `verbatim`,
// everything else through the builder into the program. Errors are reported and counted in
// report_state(); the line there is advanced.
void parse_file(std::FILE* file, ProgramBuilder& builder, std::ostream& verbatim);

}    // namespace zarel
